// orvCore/engine/simulation/orvSimulation.cpp
#include "engine/simulation/orvSimulation.h"

#include "behavior/engine/orvBehaviorContext.h"
#include "engine/simulation/orvGroup.h"
#include "knowledgeBase/orvKBContext.h"
#include "math/random/orvRandomNumberGenerator.h"
#include "system/debug/orvAssert.h"
#include "system/log/orvCoreLog.h"
#include "system/serialization/orvBinaryStream.h"
#include "system/utils/orvFileDir.h"

#include <cstdlib>
#include <cxxabi.h>
#include <fstream>
#include <iterator>
#include <string>
#include <typeinfo>

namespace orv
{

namespace
{

bool holdsContext(const Array<IContext*>& contexts, const IContext* context)
{
    for (size_t i = 0; i < contexts.size(); ++i)
    {
        if (contexts[i] == context)
        {
            return true;
        }
    }
    return false;
}

// A context can be read back only if its very class was registered: one without a descriptor of its own would be
// written as its nearest registered base, or as the abstract context.
bool hasOwnDescriptor(const IContext& context)
{
    const RTTI* rtti = context.getRTTI();
    if (rtti == nullptr || !RTTI::canCreateInstance(rtti->getTypeID()))
    {
        return false;
    }
    IContext* sample = static_cast<IContext*>(RTTI::createInstance(rtti->getTypeID()));
    const bool own = sample != nullptr && typeid(*sample) == typeid(context);
    delete sample;
    return own;
}

// The host's name of a context's class, for log lines about classes the registry does not know.
std::string className(const IContext& context)
{
    const char* mangled = typeid(context).name();
    int status = 0;
    char* demangled = abi::__cxa_demangle(mangled, nullptr, nullptr, &status);
    std::string name = status == 0 && demangled != nullptr ? demangled : mangled;
    free(demangled);
    return name;
}

template <class T>
void deleteAllBut(const Array<T*>& previous, const Array<T*>& kept)
{
    for (size_t i = 0; i < previous.size(); ++i)
    {
        bool found = false;
        for (size_t j = 0; j < kept.size() && !found; ++j)
        {
            found = kept[j] == previous[i];
        }
        if (!found)
        {
            delete previous[i];
        }
    }
}

} // namespace

ORV_IMPLEMENT_ABSTRACT_RTTI(Simulation, "6f581c73-6759-46df-b1bd-45bbf40b8e50", "orv::Simulation")

void Simulation::addAttributes()
{
    addAttribute("duration", &Simulation::_duration);
    addAttribute("frame", &Simulation::_frame);
    addAttribute("previousDuration", &Simulation::_previousDuration);
    addAttribute("initialized", &Simulation::_initialized);
    addAttribute("entitiesManager", &Simulation::_entitiesManager);
    addAttribute("groupsManager", &Simulation::_groupsManager);
    addAttribute("groundManager", &Simulation::_groundManager);
    addAttribute("contexts", &Simulation::_contexts);
    addAttribute("entityTypes", &Simulation::_entityTypes);
    addAttribute("groupEntityTypes", &Simulation::_groupEntityTypes);
    // Read last, when the entity array and the handle tables are complete: rebuilds the per-type pointers.
    addAccessorsAttribute<bool>("resolveEntityTypeEntities", &Simulation::getResolveEntityTypeEntitiesDummy,
                                &Simulation::setResolveEntityTypeEntities);
}

Simulation::Simulation(int maxEntities, int maxGroups) : _entitiesManager(maxEntities), _groupsManager(maxGroups)
{
    _entitiesManager.setSimulation(this);
    _groupsManager.setSimulation(this);
    addDefaultContexts();
}

Simulation::~Simulation()
{
    orvAssertMsg(!isInitialized(),
                 "Simulation must be finished before calling its destructor (destructor may be called at software "
                 "close time : call getSimulation().finish() before in your code)");
    reset();
    removeContext(_behaviorContext);
    delete _behaviorContext;
    _behaviorContext = nullptr;
    removeContext(_kbContext);
    delete _kbContext;
    _kbContext = nullptr;
}

void Simulation::addDefaultContexts()
{
    _kbContext = new KBContext();
    addContext(_kbContext);
    _behaviorContext = new BehaviorContext();
    addContext(_behaviorContext);
}

void Simulation::reset()
{
    orvAssertMsg(_initialized == false,
                 "Simulation reset can only be called when Simulation is not initialized (before init, or after "
                 "finish)");
    while (!_contexts.empty())
    {
        IContext* context = _contexts[0];
        removeContext(context);
        delete context;
    }
    _kbContext = nullptr;
    _behaviorContext = nullptr;
    // No context is left, so no component callback runs while the managers empty.
    _entitiesManager.reset();
    _groupsManager.reset();
    for (size_t i = 0; i < _groupEntityTypes.size(); ++i)
    {
        delete _groupEntityTypes[i];
    }
    for (size_t i = 0; i < _entityTypes.size(); ++i)
    {
        delete _entityTypes[i];
    }
    _groupEntityTypes.clear();
    _entityTypes.clear();
    _groundManager.reset();
    addDefaultContexts();
}

Entity* Simulation::getEntityOrGroup(EntityHandle handle)
{
    if (handle._isGroup != 0)
    {
        return _groupsManager.getGroup(handle);
    }
    return _entitiesManager.getEntity(handle);
}

int Simulation::createEntityType(int maxCount)
{
    EntityType* type = new EntityType(maxCount);
    type->setSimulation(this);
    _entityTypes.push_back(type);
    const int id = static_cast<int>(_entityTypes.size()) - 1;
    type->setEntityTypeId(id);
    for (size_t i = 0; i < _contexts.size(); ++i)
    {
        if (_contexts[i]->registeredOnCreateEntityType())
        {
            _contexts[i]->onCreateEntityType(id);
        }
    }
    return id;
}

int Simulation::createGroupEntityType(int maxCount)
{
    orvAssert(isInitialized() == false);
    GroupEntityType* type = new GroupEntityType(maxCount);
    type->setSimulation(this);
    _groupEntityTypes.push_back(type);
    const int id = static_cast<int>(_groupEntityTypes.size()) - 1;
    type->setEntityTypeId(id);
    for (size_t i = 0; i < _contexts.size(); ++i)
    {
        if (_contexts[i]->registeredOnCreateEntityType())
        {
            _contexts[i]->onCreateEntityType(id);
        }
    }
    return id;
}

EntityType* Simulation::getEntityType(int entityTypeId) const
{
    orvAssert(entityTypeId >= 0);
    orvAssert(entityTypeId < static_cast<int>(_entityTypes.size()));
    return _entityTypes[entityTypeId];
}

GroupEntityType* Simulation::getGroupEntityType(int groupEntityTypeId) const
{
    orvAssert(groupEntityTypeId >= 0);
    orvAssert(groupEntityTypeId < static_cast<int>(_groupEntityTypes.size()));
    return _groupEntityTypes[groupEntityTypeId];
}

void Simulation::addContextInternal(IContext* context)
{
    orvAssert(context != NULL);
    orvAssertMsg(!isInitialized(), "Contexts must be added before simulation initialization.");
    context->setContextType();
    context->setSimulation(this);
    context->allocateComponentsArrays();
    // Contexts of equal type keep the order of their adding.
    IContext** position = _contexts.end();
    for (IContext** it = _contexts.begin(); it != _contexts.end(); ++it)
    {
        if ((*it)->getContextType() > context->getContextType())
        {
            position = it;
            break;
        }
    }
    _contexts.insert(position, context);
}

void Simulation::addContext(IContext* context)
{
    orvAssertMsg(getEntityCount() == 0, "Contexts must be added before simulation creates entities.");
    orvAssertMsg(getGroupCount() == 0, "Contexts must be added before simulation creates groups.");
    addContextInternal(context);
}

void Simulation::addContextLate(IContext* context)
{
    addContextInternal(context);
    const int typeCount = getEntityTypeCount();
    if (typeCount > 0 && context->registeredOnCreateEntityType())
    {
        for (int i = 0; i < typeCount; ++i)
        {
            context->onCreateEntityType(i);
        }
    }
    const int entityCount = getEntityCount();
    if (entityCount > 0 && context->registeredOnCreateEntityComponent())
    {
        for (int entityIndex = 0; entityIndex < entityCount; ++entityIndex)
        {
            const Entity* entity = _entitiesManager.getEntity(entityIndex);
            for (int typeId = 0; typeId < typeCount; ++typeId)
            {
                if (_entityTypes[typeId] == entity->getEntityType())
                {
                    context->onCreateEntityComponent(entityIndex, entity->getHandle(), typeId);
                    break;
                }
            }
        }
    }
}

void Simulation::removeContext(IContext* context)
{
    orvAssert(!isInitialized());
    orvAssert(context != NULL);
    for (IContext** it = _contexts.begin(); it != _contexts.end(); ++it)
    {
        if (*it == context)
        {
            context->deallocateComponentsArrays();
            context->setSimulation(nullptr);
            _contexts.erase(it);
            return;
        }
    }
}

IContext* Simulation::getContext(IContext::ContextType::Value type) const
{
    for (size_t i = 0; i < _contexts.size(); ++i)
    {
        if (_contexts[i]->getContextType() == type)
        {
            return _contexts[i];
        }
    }
    return nullptr;
}

void Simulation::enqueueBlockingBatch(ProcessingBatchQueue& queue)
{
    enqueueBatch(queue, &Simulation::emptyBlockingBatch, nullptr, true, 0, 0, 0.0);
}

void Simulation::enqueueInit(ProcessingBatchQueue& queue)
{
    enqueueBatch(queue, &Simulation::preInitBatch, this, true, 0, 0, 0.0);
    // Every context runs doInit and its per-type initialisation before any context sees an entity.
    for (size_t i = 0; i < _contexts.size(); ++i)
    {
        _contexts[i]->enqueueInit(queue, getEntityTypeCount(), getGroupEntityTypeCount());
    }
    for (size_t i = 0; i < _contexts.size(); ++i)
    {
        _contexts[i]->enqueueComponentsInit(queue, getEntityCount(), getGroupCount());
    }
    enqueueBatch(queue, &Simulation::postInitBatch, this, true, 0, 0, 0.0);
}

void Simulation::enqueueUpdate(ProcessingBatchQueue& queue, Time dt)
{
    enqueueBatch(queue, &Simulation::preUpdateBatch, this, true, 0, 0, dt);
    // The counts are read now: entities created during the frame are not in its slices.
    const int entityCount = getEntityCount();
    const int groupCount = getGroupCount();
    for (size_t i = 0; i < _contexts.size(); ++i)
    {
        if (!_contexts[i]->isPaused())
        {
            _contexts[i]->enqueueUpdate(queue, dt, entityCount, groupCount);
        }
    }
    enqueueBatch(queue, &Simulation::postUpdateBatch, this, true, 0, 0, dt);
}

void Simulation::enqueueFinish(ProcessingBatchQueue& queue)
{
    enqueueBatch(queue, &Simulation::finishBatch, this, true, 0, 0, 0.0);
}

void Simulation::enqueueInitEntities(ProcessingBatchQueue& queue, const EntityHandle* handles, int count)
{
    for (int i = 0; i < count; ++i)
    {
        enqueueBatch(queue, &Simulation::initEntityBatch, this, false,
                     _entitiesManager.getHandleEntries()[handles[i]._index]._contentIndex, 0, 0.0);
    }
    enqueueBlockingBatch(queue);
}

void Simulation::enqueueInitGroups(ProcessingBatchQueue& queue, const EntityHandle* handles, int count)
{
    for (int i = 0; i < count; ++i)
    {
        enqueueBatch(queue, &Simulation::initGroupBatch, this, false, static_cast<int>(handles[i]._index), 0, 0.0);
    }
    enqueueBlockingBatch(queue);
}

void Simulation::preInitBatch(Time, void* userData, int, int)
{
    Simulation* theSimulation = static_cast<Simulation*>(userData);
    orvAssertMsg(!theSimulation->_initialized, "Simulation has already been initialized");
    orvLogCore(LogSeverity::LOG_INFO, "orv::Simulation initialization");
    theSimulation->_duration = 0.0;
    theSimulation->_frame = 0;
    theSimulation->_currentUserEvent = 0;
    // _previousDuration stays: events at or before the last run's final time do not fire again.
    theSimulation->_groundManager.init();
}

void Simulation::initEntityBatch(Time, void* userData, int first, int)
{
    Simulation* theSimulation = static_cast<Simulation*>(userData);
    EntitiesManager& manager = theSimulation->_entitiesManager;
    manager.initEntity(manager.getEntity(first)->getHandle());
}

void Simulation::initGroupBatch(Time, void* userData, int first, int)
{
    Simulation* theSimulation = static_cast<Simulation*>(userData);
    GroupsManager& manager = theSimulation->_groupsManager;
    if (Group* group = manager.getGroup(first))
    {
        manager.initGroup(group->getHandle());
    }
}

void Simulation::postInitBatch(Time, void* userData, int, int)
{
    Simulation* theSimulation = static_cast<Simulation*>(userData);
    theSimulation->_initialized = true;
    for (size_t i = 0; i < theSimulation->_contexts.size(); ++i)
    {
        theSimulation->_initialized = theSimulation->_initialized && theSimulation->_contexts[i]->isInitialized();
    }
    orvAssertMsg(theSimulation->_initialized, "Unable to initialize Simulation");
}

void Simulation::preUpdateBatch(Time dt, void* userData, int, int)
{
    Simulation* theSimulation = static_cast<Simulation*>(userData);
    ++theSimulation->_frame;
    const Array<SimulationUserEvent*>& events = theSimulation->_userEventsList.getUserEvents();
    while (theSimulation->_currentUserEvent < events.size())
    {
        SimulationUserEvent* event = events[theSimulation->_currentUserEvent];
        if (event == nullptr || !(theSimulation->_duration >= event->getTriggerTime()))
        {
            break;
        }
        // An event whose time the previous frame already passed is skipped without a call.
        if (event->getTriggerTime() > theSimulation->_previousDuration)
        {
            event->trigger();
        }
        ++theSimulation->_currentUserEvent;
    }
    theSimulation->_groundManager.update(dt);
}

void Simulation::postUpdateBatch(Time dt, void* userData, int, int)
{
    Simulation* theSimulation = static_cast<Simulation*>(userData);
    theSimulation->_entitiesManager.updateEntities();
    theSimulation->_groupsManager.updateGroups();
    theSimulation->_previousDuration = theSimulation->_duration;
    theSimulation->_duration += dt;
}

void Simulation::finishBatch(Time, void* userData, int, int)
{
    Simulation* theSimulation = static_cast<Simulation*>(userData);
    if (!theSimulation->_initialized)
    {
        return;
    }
    orvLogCore(LogSeverity::LOG_INFO, "orv::Simulation deinitialization");
    for (int i = theSimulation->getContextCount() - 1; i >= 0; --i)
    {
        theSimulation->_contexts[i]->finish();
    }
    theSimulation->_groundManager.finish();
    theSimulation->_initialized = false;
}

void Simulation::emptyBlockingBatch(Time, void*, int, int)
{
}

void Simulation::setResolveEntityTypeEntities(bool)
{
    for (size_t i = 0; i < _entityTypes.size(); ++i)
    {
        _entityTypes[i]->resolveEntityHandles(*this);
    }
}

bool Simulation::exportToBinary(const char* path) const
{
    if (path == nullptr)
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot write a snapshot without a path");
        return true;
    }
    // The contexts that could not be read back are taken out for the writing only: the world itself is unchanged
    // when this returns.
    Array<IContext*>& contexts = const_cast<Array<IContext*>&>(_contexts);
    const Array<IContext*> allContexts = contexts;
    contexts.clear();
    for (size_t i = 0; i < allContexts.size(); ++i)
    {
        if (hasOwnDescriptor(*allContexts[i]))
        {
            contexts.push_back(allContexts[i]);
        }
        else
        {
            orvLogCore(LogSeverity::LOG_WARNING, "The context " << className(*allContexts[i]).c_str()
                                                                << " has no class descriptor of its own: it is left "
                                                                   "out of the snapshot "
                                                                << path);
        }
    }
    BinaryStream stream;
    stream.pack(getRNG());
    stream.pack(*this);
    contexts = allContexts;
    stream.exportTo(path);
    // The stream says nothing of a file it could not write; the host hears of it here. The result stays true, as
    // every snapshot operation's does.
    if (FileDir::size(path) != static_cast<int64_t>(stream.getLength()))
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot write the snapshot " << path << ": the file is not written");
    }
    return true;
}

bool Simulation::loadAndImportFromBinary(const char* path)
{
    if (path == nullptr || !FileDir::exist(path))
    {
        orvLogCore(LogSeverity::LOG_ERROR,
                   "Cannot load the snapshot " << (path != nullptr ? path : "(null)") << ": no such file");
        return false;
    }
    std::ifstream file(path, std::ios::in | std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file.good() && !file.eof())
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot load the snapshot " << path << ": the file cannot be read");
        return false;
    }
    const uint8_t* data = reinterpret_cast<const uint8_t*>(bytes.data());
    SnapshotCheckReport report;
    if (!checkBinaryData(data, bytes.size(), &report))
    {
        orvLogCore(LogSeverity::LOG_ERROR, "Cannot load the snapshot " << path << ": at byte " << report._offset << ", "
                                                                       << report._reason.c_str());
        return false;
    }
    BinaryStream stream;
    stream.importFrom(data, bytes.size());
    importFrom(stream);
    return true;
}

bool Simulation::checkBinaryData(const uint8_t* data, size_t size, SnapshotCheckReport* report)
{
    return SnapshotCheck::check(data, size, report);
}

bool Simulation::validateLoadedBinaryData(const uint8_t* data, size_t size)
{
    return data != nullptr && size != 0;
}

bool Simulation::importFromValidatedBinaryData(const uint8_t* data, size_t size, Simulation& simulation)
{
    BinaryStream stream;
    stream.importFrom(data, size);
    simulation.importFrom(stream);
    return true;
}

void Simulation::importFrom(BinaryStream& stream)
{
    // The file's contexts and types replace this world's: the ones left out of the new arrays are dropped here.
    // Contexts go unfinished, since the world they served is gone.
    const Array<IContext*> previousContexts = _contexts;
    const Array<EntityType*> previousEntityTypes = _entityTypes;
    const Array<GroupEntityType*> previousGroupEntityTypes = _groupEntityTypes;
    // The generator comes first, then the world: the file's order.
    stream.unpack(getRNG());
    stream.unpack(*this);
    for (size_t i = 0; i < previousContexts.size(); ++i)
    {
        IContext* context = previousContexts[i];
        if (!holdsContext(_contexts, context))
        {
            context->deallocateComponentsArrays();
            context->setSimulation(nullptr);
            context->setInitialized(false);
            delete context;
        }
    }
    deleteAllBut(previousEntityTypes, _entityTypes);
    deleteAllBut(previousGroupEntityTypes, _groupEntityTypes);
    // Contexts made by the stream are set up as an added context is.
    for (size_t j = 0; j < _contexts.size(); ++j)
    {
        IContext* context = _contexts[j];
        if (context != nullptr && !holdsContext(previousContexts, context))
        {
            context->setContextType();
            context->allocateComponentsArrays();
        }
    }
    _kbContext = getContext<KBContext>();
    _behaviorContext = getContext<BehaviorContext>();
    // The head of the free handle entries is not saved: it follows from the table.
    _entitiesManager.rebuildFreeListHead();
    // Behaviour rows read from a file are made to fit the types' slots before any frame walks them.
    for (size_t i = 0; i < _entityTypes.size(); ++i)
    {
        _entityTypes[i]->touchBehaviorGraph().repairLoadedNodes();
    }
    for (size_t i = 0; i < _groupEntityTypes.size(); ++i)
    {
        _groupEntityTypes[i]->touchBehaviorGraph().repairLoadedNodes();
    }
}

} // namespace orv
