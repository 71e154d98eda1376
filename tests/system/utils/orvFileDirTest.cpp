#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "system/containers/orvString.h"
#include "system/utils/orvFileDir.h"

namespace
{

using orv::FileDir;
using orv::OrvString;

/// A fresh directory under the system's temporary directory, removed with what the test left in it.
class FileDirTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        char pattern[] = "/tmp/orvFileDirTest.XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(pattern));
        _directory = pattern;
    }
    void TearDown() override
    {
        for (const char* name : {"a.bin", "b.bin", "c.bin", "sub"})
        {
            FileDir::remove(path(name).c_str());
        }
        FileDir::remove(_directory.c_str());
    }

    OrvString path(const char* name) const { return _directory + "/" + name; }

    void write(const char* name, const char* content) const
    {
        FILE* file = fopen(path(name).c_str(), "wb");
        ASSERT_NE(nullptr, file);
        fputs(content, file);
        fclose(file);
    }

    OrvString _directory;
};

TEST_F(FileDirTest, CopiedFilesHaveTheSameSizeAndContent)
{
    write("a.bin", "crowd of agents");
    ASSERT_TRUE(FileDir::copy(path("a.bin").c_str(), path("b.bin").c_str()));
    EXPECT_EQ(15, FileDir::size(path("b.bin").c_str()));
    EXPECT_TRUE(FileDir::sameContent(path("a.bin").c_str(), path("b.bin").c_str()));
    // The same length with one byte changed, then a prefix.
    write("c.bin", "crowd of agentS");
    EXPECT_FALSE(FileDir::sameContent(path("a.bin").c_str(), path("c.bin").c_str()));
    write("c.bin", "crowd");
    EXPECT_FALSE(FileDir::sameContent(path("a.bin").c_str(), path("c.bin").c_str()));
}

TEST_F(FileDirTest, MissingFilesAnswerByReturnValue)
{
    uint64_t time = 7;
    EXPECT_FALSE(FileDir::exist(path("none").c_str()));
    EXPECT_EQ(-1, FileDir::size(path("none").c_str()));
    EXPECT_FALSE(FileDir::getLastModificationTime(path("none").c_str(), time));
    EXPECT_EQ(7u, time);
    EXPECT_FALSE(FileDir::copy(path("none").c_str(), path("b.bin").c_str()));
    EXPECT_FALSE(FileDir::sameContent(path("none").c_str(), path("none").c_str()));
}

TEST_F(FileDirTest, DirectoriesAreMadeOnceAndRemovedWhenEmpty)
{
    EXPECT_TRUE(FileDir::createDir(path("sub").c_str()));
    EXPECT_TRUE(FileDir::createDir(path("sub").c_str()));
    write("a.bin", "x");
    EXPECT_FALSE(FileDir::createDir(path("a.bin").c_str()));
    EXPECT_TRUE(FileDir::remove(path("sub").c_str()));
    EXPECT_FALSE(FileDir::exist(path("sub").c_str()));
}

TEST(FileDirSystemTest, ProgramsAreFoundOnThePathOrLeaveTheResultUntouched)
{
    OrvString found;
    ASSERT_TRUE(FileDir::findInSystemPath("sh", found));
    OrvString missing("untouched");
    EXPECT_FALSE(FileDir::findInSystemPath("orv-no-such-program", missing));
    EXPECT_STREQ("untouched", missing.c_str());
}

} // namespace
