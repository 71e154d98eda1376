#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/orvCoreTestSupport.h"
#include "system/log/orvConsoleLogOutputter.h"
#include "system/log/orvCoreLog.h"
#include "system/log/orvFileLogOutputter.h"
#include "system/log/orvLog.h"
#include "system/log/orvLogEvent.h"

namespace
{

using orv::LogSeverity;

class Recorder : public orv::AbstractLogOutputter
{
public:
    Recorder(LogSeverity::Value severity, orv::Log* log) : orv::AbstractLogOutputter(severity, log) {}
    std::vector<std::string> _lines;

protected:
    void doOutput(const orv::LogEvent& event) override { _lines.push_back(event.getMessage()); }
};

struct CountingText
{
    int* built;
};

std::ostream& operator<<(std::ostream& stream, const CountingText& text)
{
    ++*text.built;
    return stream << "text";
}

class LogTest : public orvtest::CoreTest
{
protected:
    std::string tempPath(const char* name) { return ::testing::TempDir() + name; }
};

TEST_F(LogTest, FilteredSiteDoesNotBuildItsText)
{
    orv::Log log;
    Recorder recorder(LogSeverity::LOG_DEBUG, &log);
    log.setSeverityFilter(LogSeverity::LOG_ERROR);
    int built = 0;
    orvLog(log, LogSeverity::LOG_WARNING, CountingText{&built});
    EXPECT_EQ(0, built);
    orvLog(log, LogSeverity::LOG_ERROR, CountingText{&built} << " " << 3);
    EXPECT_EQ(1, built);
    EXPECT_EQ(std::vector<std::string>{"text 3"}, recorder._lines);
}

TEST_F(LogTest, OutputterStricterThanItsLogDropsTheEventAfterItWasBuilt)
{
    orv::Log log;
    log.setSeverityFilter(LogSeverity::LOG_DEBUG);
    Recorder strict(LogSeverity::LOG_WARNING, &log);
    Recorder loose(LogSeverity::LOG_DEBUG, &log);
    orvLog(log, LogSeverity::LOG_INFO, "info");
    orvLog(log, LogSeverity::LOG_CRITICAL, "critical");
    EXPECT_EQ(std::vector<std::string>{"critical"}, strict._lines);
    EXPECT_EQ((std::vector<std::string>{"info", "critical"}), loose._lines);
}

TEST_F(LogTest, ListenerAddedTwiceHearsTwiceAndDestroyedOutputterDetaches)
{
    orv::Log log;
    {
        Recorder recorder(LogSeverity::LOG_DEBUG, &log);
        log.addLogEventListener(&recorder);
        orvLog(log, LogSeverity::LOG_INFO, "twice");
        EXPECT_EQ(2u, recorder._lines.size());
        log.removeLogEventListener(&recorder);
    }
    EXPECT_FALSE(log.hasLogEventListener(nullptr));
    orvLog(log, LogSeverity::LOG_INFO, "nobody hears this");
}

TEST_F(LogTest, LogsAndOutputtersAreRegisteredWhileTheyLive)
{
    const size_t logs = orv::Log::getStaticLogs()->size();
    const size_t outputters = orv::AbstractLogOutputter::getStaticLogOutputters()->size();
    {
        orv::Log log;
        Recorder recorder(LogSeverity::LOG_DEBUG, &log);
        EXPECT_EQ(logs + 1, orv::Log::getStaticLogs()->size());
        EXPECT_EQ(outputters + 1, orv::AbstractLogOutputter::getStaticLogOutputters()->size());
    }
    EXPECT_EQ(logs, orv::Log::getStaticLogs()->size());
    EXPECT_EQ(outputters, orv::AbstractLogOutputter::getStaticLogOutputters()->size());
}

TEST_F(LogTest, ConsoleLineNamesTheSiteAndTheSeverity)
{
    orv::Log log;
    orv::ConsoleLogOutputter console(LogSeverity::LOG_DEBUG, &log);
    ::testing::internal::CaptureStderr();
    log.trace(LogSeverity::LOG_WARNING, "file.cpp", 12, "doThing", "careful");
    const std::string output = ::testing::internal::GetCapturedStderr();
    EXPECT_EQ("file.cpp(12) : doThing\n\t[WARNING] - careful\n\n", output);
}

TEST_F(LogTest, FileOutputterAppendsOrTruncatesAndIsSilentOnABadPath)
{
    const std::string path = tempPath("orvLogTest.log");
    std::remove(path.c_str());
    orv::Log log;
    {
        orv::FileLogOutputter file(path.c_str(), LogSeverity::LOG_DEBUG, &log, true, true);
        log.trace(LogSeverity::LOG_ERROR, "a.cpp", 1, "f", "first");
    }
    {
        orv::FileLogOutputter file(path.c_str(), LogSeverity::LOG_DEBUG, &log, false, false);
        log.trace(LogSeverity::LOG_DEBUG, "b.cpp", 2, "g", "second");
    }
    std::ifstream in(path);
    std::stringstream content;
    content << in.rdbuf();
    EXPECT_EQ("a.cpp(1) : f\n\tERROR : first\nb.cpp(2) : g\n\tDEBUG : second\n", content.str());

    {
        orv::FileLogOutputter file(path.c_str(), LogSeverity::LOG_DEBUG, &log, true, true);
        log.trace(LogSeverity::LOG_INFO, "c.cpp", 3, "h", "only");
        file.setPath("/nonexistent-dir/orv.log", true);
        log.trace(LogSeverity::LOG_INFO, "c.cpp", 4, "h", "lost");
        EXPECT_STREQ("/nonexistent-dir/orv.log", file.getPath().c_str());
    }
    std::ifstream again(path);
    std::stringstream rewritten;
    rewritten << again.rdbuf();
    EXPECT_EQ("c.cpp(3) : h\n\tINFO : only\n", rewritten.str());
    std::remove(path.c_str());
}

} // namespace
