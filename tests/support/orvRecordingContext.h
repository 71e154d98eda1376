// tests/support/orvRecordingContext.h
#pragma once

#include <string>
#include <vector>

#include "engine/simulation/orvIContext.h"

namespace orvtest
{

/// A host context that registers for every callback and writes down each call as "<name>:<event>(<args>)".
class RecordingContext : public orv::IContext
{
public:
    RecordingContext(std::vector<std::string>& journal, const char* name,
                     ContextType::Value type = ContextType::NAVIGATION, bool multithread = false,
                     bool processGroupsFirst = false)
        : orv::IContext(multithread, processGroupsFirst), _journal(journal), _name(name), _type(type)
    {
    }
    ~RecordingContext() override
    {
        // Tests may drop a simulation without finishing it; the base destructor would refuse.
        setInitialized(false);
    }

    void setContextType() override { assignContextType(_type); }
    void allocateComponentsArrays() override { note("allocate"); }
    void deallocateComponentsArrays() override { note("deallocate"); }
    void doInit() override { note("init"); }
    void doUpdate(orv::Time) override { note("update"); }
    void doPostUpdate(orv::Time) override { note("postUpdate"); }
    void doFinish() override { note("finish"); }

    bool registeredOnCreateEntityType() const override { return true; }
    void onCreateEntityType(int typeId) override { note("createType", typeId); }
    bool registeredOnInitEntityType() const override { return true; }
    void onInitEntityType(int typeId) override { note("initType", typeId); }
    bool registeredOnCreateEntityComponent() const override { return true; }
    void onCreateEntityComponent(int denseIndex, orv::EntityHandle, int typeId) override
    {
        note("create", denseIndex, typeId);
    }
    bool registeredOnInitEntityComponents() const override { return true; }
    void onInitEntityComponents(int first, int last) override { note("initEntities", first, last); }
    bool registeredOnFinishEntityComponents() const override { return true; }
    void onFinishEntityComponents(int first, int last) override { note("finishEntities", first, last); }
    bool registeredOnDestroyEntityComponents() const override { return true; }
    void onDestroyEntityComponents(int first, int last) override { note("destroyEntities", first, last); }

private:
    void note(const char* event, int a = -1, int b = -1)
    {
        std::string line = _name + ":" + event;
        if (a >= 0)
        {
            line += "(" + std::to_string(a) + (b >= 0 ? "," + std::to_string(b) : std::string()) + ")";
        }
        _journal.push_back(line);
    }

    std::vector<std::string>& _journal;
    std::string _name;
    ContextType::Value _type;
};

} // namespace orvtest
