// orvCore/knowledgeBase/orvKBContext.h
#pragma once

#include "system/inspection/orvClassDescriptor.h"

#include "engine/simulation/orvIContext.h"

namespace orv
{

/// The KNOWLEDGE_BASE context, which every simulation holds by default. Multithreaded, entities before groups.
/// Today it registers for no callback and its hooks do nothing: a frame costs its three blocking batches and no
/// slice. Owned by its simulation; its hooks run on the host thread.
class KBContext : public IContext
{
    ORV_DECLARE_RTTI(KBContext)

public:
    /// A multithreaded context that handles entities before groups.
    KBContext();
    ~KBContext() override;

    /// KNOWLEDGE_BASE.
    void setContextType() override;
    /// The context keeps no per-entity storage yet: these do nothing.
    void allocateComponentsArrays() override;
    void deallocateComponentsArrays() override;
    void doInit() override;
    void doUpdate(Time dt) override;
    void doFinish() override;
};

} // namespace orv
