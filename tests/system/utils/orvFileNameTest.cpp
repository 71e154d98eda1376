#include <gtest/gtest.h>

#include "system/utils/orvFileName.h"

namespace
{

using orv::FileName;

TEST(FileNameTest, SplitsDirectoryNameAndLastExtension)
{
    const FileName name("data/scenes/crowd.tar.gz");
    EXPECT_STREQ("data/scenes", name.pathname(false).c_str());
    EXPECT_STREQ("data/scenes/", name.pathname(true).c_str());
    EXPECT_STREQ("crowd.tar", name.filenameNoExt().c_str());
    EXPECT_STREQ("gz", name.extension().c_str());
    EXPECT_STREQ("data/scenes/crowd.tar.xml", name.fullname("xml").c_str());
    EXPECT_FALSE(name.isAbsolute());
}

TEST(FileNameTest, ASlashAtTheStartGivesTheCurrentDirectoryAndADotAtTheStartNoExtension)
{
    const FileName rooted("/file");
    EXPECT_STREQ(".", rooted.pathname(false).c_str());
    EXPECT_STREQ("./file", rooted.fullname().c_str());

    const FileName hidden("home/.hidden");
    EXPECT_STREQ(".hidden", hidden.filenameNoExt().c_str());
    EXPECT_STREQ("", hidden.extension().c_str());
    EXPECT_STREQ("home/.hidden", hidden.fullname().c_str());
}

TEST(FileNameTest, BackslashesBecomeSlashes)
{
    const FileName name("C:\\data\\run.rpl");
    EXPECT_STREQ("C:/data", name.pathname(false).c_str());
    EXPECT_TRUE(name.isAbsolute());
}

} // namespace
