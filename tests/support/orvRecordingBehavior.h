#pragma once

#include <deque>
#include <sstream>
#include <string>
#include <vector>

#include "behavior/behaviors/orvAbstractUserBehavior.h"
#include "behavior/engine/orvAbstractBehavior.h"

namespace orvtest
{

/// The hooks received by recording behaviours, in order, as "name:doStart(0)" (or "doStart(0)" without a name).
using Journal = std::vector<std::string>;

/// A node that writes every hook it receives, with its arguments, into a shared journal. What doStop answers,
/// whether doStart or doUpdate stop the row themselves, and after how many updates it ends on its own are set by
/// the test. Base is AbstractBehavior (a bare node with any number of followers) or AbstractUserBehavior.
template <class Base>
class RecordingNodeT : public Base
{
public:
    using Time = orv::AbstractBehavior::Time;
    using ResultStatus = orv::AbstractBehavior::ResultStatus;

    RecordingNodeT() = default;
    explicit RecordingNodeT(Journal* journal, std::string name = std::string())
        : _journal(journal), _name(std::move(name))
    {
    }

    /// Stores a follower id in the row, as a selecting operator does.
    void selectFollower(int entity, uint32_t id)
    {
        this->touchStatusData(entity)._nextBehaviorSelectedIdPerInstance = id;
    }

    Journal* _journal = nullptr;
    std::string _name;
    /// Answers of doStop, first first; SUCCESS when empty.
    std::deque<ResultStatus::Value> _stopAnswers;
    bool _initAnswer = true;
    bool _stopInStart = false;
    bool _stopInUpdate = false;
    /// Updates after which a run asks for its own stop; 0 runs until stopped from outside.
    int _updatesPerRun = 0;
    /// Updates of the present run, all entities together.
    int _updates = 0;

protected:
    bool doInit() override
    {
        note("doInit()");
        return _initAnswer;
    }
    void doFinish() override { note("doFinish()"); }
    void doAllocate(int capacity) override { note("doAllocate(" + std::to_string(capacity) + ")"); }
    void doDeallocate() override { note("doDeallocate()"); }
    void doAddEntity(int entity) override
    {
        // The row exists when the hook runs.
        note("doAddEntity(" + std::to_string(entity) + (this->hasRow(entity) ? ")" : ", no row)"));
    }
    void doInit(int entity) override { note("doInit(" + std::to_string(entity) + ")"); }
    void doFinish(int entity) override { note("doFinish(" + std::to_string(entity) + ")"); }
    void doStart(int entity) override
    {
        note("doStart(" + std::to_string(entity) + ")");
        _updates = 0;
        if (_stopInStart)
        {
            this->requestStop(entity);
        }
    }
    void doUpdate(Time dt, int entity) override
    {
        note("doUpdate(" + text(dt) + ")");
        ++_updates;
        if (_stopInUpdate || (_updatesPerRun > 0 && _updates >= _updatesPerRun))
        {
            this->requestStop(entity);
        }
    }
    ResultStatus::Value doStop(Time dt, int) override
    {
        note("doStop(" + text(dt) + ")");
        if (_stopAnswers.empty())
        {
            return ResultStatus::SUCCESS;
        }
        const ResultStatus::Value answer = _stopAnswers.front();
        _stopAnswers.pop_front();
        return answer;
    }
    void onRequestStart(int) override { note("onRequestStart"); }
    void onRequestStop(int) override { note("onRequestStop"); }

private:
    void note(const std::string& line)
    {
        if (_journal != nullptr)
        {
            _journal->push_back(_name.empty() ? line : _name + ":" + line);
        }
    }
    static std::string text(Time value)
    {
        std::ostringstream stream;
        stream << value;
        return stream.str();
    }
};

/// A bare recording node: any number of followers, none selected by default.
class RecordingNode : public RecordingNodeT<orv::AbstractBehavior>
{
public:
    using RecordingNodeT::RecordingNodeT;
    bool checkNextBehaviorCandidatesConnection() const override { return true; }
};

/// A recording host behaviour: one follower, selected by default.
using RecordingBehavior = RecordingNodeT<orv::AbstractUserBehavior>;

} // namespace orvtest
