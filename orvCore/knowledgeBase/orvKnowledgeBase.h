// orvCore/knowledgeBase/orvKnowledgeBase.h
#pragma once

namespace orv
{

/// Typed, named values of an entity type, or of the world.
class KnowledgeBase
{
public:
    virtual ~KnowledgeBase();
};

} // namespace orv
