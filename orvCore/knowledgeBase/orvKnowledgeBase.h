// orvCore/knowledgeBase/orvKnowledgeBase.h
#pragma once

namespace orv
{

/// The knowledge of an entity type or of the world, held by value by its owner. Today it holds no value: an
/// empty object with a virtual destructor, not saved in snapshots.
class KnowledgeBase
{
public:
    /// Knowledge bases may be deleted through a base.
    virtual ~KnowledgeBase();
};

} // namespace orv
