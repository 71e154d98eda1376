// orvCore/behavior/engine/orvBehaviorContext.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include "engine/simulation/orvIContext.h"

namespace orv
{

class AbstractEntityType;

/// The BEHAVIOR context, which every simulation holds by default: it runs the behaviour graph of every entity and
/// group type. A frame cuts each type's slots into batches, group types before entity types, and each batch updates
/// the graph once per slot in use. Multithreaded. Owned by its simulation; hooks on the host thread unless said.
class BehaviorContext : public IContext
{
    ORV_DECLARE_RTTI(BehaviorContext)

public:
    /// A multithreaded context that handles groups before entities.
    BehaviorContext();
    ~BehaviorContext() override;

    /// BEHAVIOR.
    void setContextType() override;
    /// The rows live in the graphs' nodes: these do nothing.
    void allocateComponentsArrays() override;
    void deallocateComponentsArrays() override;
    /// Nothing: the work is in the batches and the hooks.
    void doInit() override;
    void doUpdate(Time dt) override;
    /// finish() on the graph of every group type, then of every entity type.
    void doFinish() override;

    /// The context hears of type and component initialisation and finish: all true.
    bool registeredOnInitEntityType() const override { return true; }
    bool registeredOnInitGroupEntityType() const override { return true; }
    bool registeredOnInitEntityComponents() const override { return true; }
    bool registeredOnFinishEntityComponents() const override { return true; }
    bool registeredOnInitGroupComponents() const override { return true; }
    bool registeredOnFinishGroupComponents() const override { return true; }

    /// init() on the graph of the entity type; fatal for an id out of range.
    void onInitEntityType(int entityTypeId) override;
    /// init() on the graph of the group type; fatal for an id out of range.
    void onInitGroupEntityType(int groupEntityTypeId) override;
    /// init(slot) on its type's graph for each entity of the inclusive dense range. Host thread or one worker.
    void onInitEntityComponents(int first, int last) override;
    /// finish(slot) on its type's graph for each entity of the inclusive dense range. Host thread.
    void onFinishEntityComponents(int first, int last) override;
    /// As onInitEntityComponents, for groups; a range past the groups is skipped.
    void onInitGroupComponents(int first, int last) override;
    /// As onFinishEntityComponents, for groups; a range past the groups is skipped.
    void onFinishGroupComponents(int first, int last) override;

    /// Lays down initBehaviorGraphForIndex over every type's slots: group types, a blocking batch, entity types,
    /// a blocking batch. The counts set the batch sizes.
    void enqueueComponentsInit(ProcessingBatchQueue& queue, int entityCount, int groupCount) override;
    /// Lays down one frame: updateBehaviorGraphForIndex over the group types' slots, a blocking batch, over the
    /// entity types' slots, then postUpdateBatch. No pre-update batch.
    void enqueueUpdate(ProcessingBatchQueue& queue, Time dt, int entityCount, int groupCount) override;

    /// Batch functions; userData is the AbstractEntityType, first and last an inclusive range of its slots. Each
    /// slot in use gets init(slot), or update(dt, slot), on the type's graph; free slots are skipped. Workers.
    static void initBehaviorGraphForIndex(Time dt, void* userData, int first, int last);
    static void updateBehaviorGraphForIndex(Time dt, void* userData, int first, int last);

private:
    // Lays down the batches of one type, each of batchSize slots at most; nothing for a type without slots.
    static void enqueueTypeBatches(ProcessingBatchQueue& queue, BatchUpdateMethod method, AbstractEntityType* type,
                                   bool blocking, int batchSize, Time dt);
    // The batches of every group type, a blocking batch, the batches of every entity type.
    void enqueueAllTypes(ProcessingBatchQueue& queue, BatchUpdateMethod method, bool blocking, int entityCount,
                         int groupCount, Time dt);
};

} // namespace orv
