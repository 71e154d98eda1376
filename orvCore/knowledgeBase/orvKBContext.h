// orvCore/knowledgeBase/orvKBContext.h
#pragma once

#include "system/inspection/orvInspectable.h"

#include "engine/simulation/orvIContext.h"

namespace orv
{

/// Keeps the knowledge bases of entities, groups and the world in step with them.
/// A default context: every simulation holds one.
class KBContext : public IContext
{
    ORV_DECLARE_RTTI(KBContext)

public:
    KBContext();
    ~KBContext() override;

    void setContextType() override;
    void allocateComponentsArrays() override;
    void deallocateComponentsArrays() override;
    void doInit() override;
    void doUpdate(Time dt) override;
    void doFinish() override;
};

} // namespace orv
