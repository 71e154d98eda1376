// orvCore/engine/simulation/orvProcessingBatch.h
#pragma once

#include "engine/simulation/orvTime.h"
#include "system/containers/orvDeque.h"
#include "system/containers/orvQueue.h"

namespace orv
{

/// What a batch runs: (dt, the object it works on, first index, last index).
typedef void (*BatchUpdateMethod)(Time dt, void* userData, int firstIndex, int lastIndex);

/// One unit of work of a frame. A blocking batch runs alone on the consuming thread; the others may run in parallel.
struct ProcessingBatch
{
    /// What to run.
    BatchUpdateMethod _updateMethod = nullptr;
    /// The Simulation or IContext it works on, or null.
    void* _userData = nullptr;
    /// True: runs alone, after everything queued before it has ended.
    bool _blocking = true;
    /// First index of the inclusive range, or the single index.
    int _firstIndex = 0;
    /// Last index of the inclusive range.
    int _lastIndex = 0;
    /// The time step.
    Time _dt = 0.0;
};

/// The first-in first-out queue of batches that a SimulationsProcessor consumes.
typedef OrvQueue<ProcessingBatch, OrvDeque<ProcessingBatch>> ProcessingBatchQueue;

/// A batch with these fields.
inline ProcessingBatch makeBatch(BatchUpdateMethod method, void* userData, bool blocking, int firstIndex, int lastIndex,
                                 Time dt)
{
    ProcessingBatch batch;
    batch._updateMethod = method;
    batch._userData = userData;
    batch._blocking = blocking;
    batch._firstIndex = firstIndex;
    batch._lastIndex = lastIndex;
    batch._dt = dt;
    return batch;
}

/// Appends one batch to a queue.
inline void enqueueBatch(ProcessingBatchQueue& queue, BatchUpdateMethod method, void* userData, bool blocking,
                         int firstIndex, int lastIndex, Time dt)
{
    queue.push(makeBatch(method, userData, blocking, firstIndex, lastIndex, dt));
}

} // namespace orv
