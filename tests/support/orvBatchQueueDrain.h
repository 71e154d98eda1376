// tests/support/orvBatchQueueDrain.h
#pragma once

#include <vector>

#include "engine/simulation/orvProcessingBatch.h"

namespace orvtest
{

/// Empties a batch queue that nothing consumes and gives its batches in queue order.
inline std::vector<orv::ProcessingBatch> drain(orv::ProcessingBatchQueue& queue)
{
    std::vector<orv::ProcessingBatch> batches;
    while (!queue.empty())
    {
        batches.push_back(queue.front());
        queue.pop();
    }
    return batches;
}

} // namespace orvtest
