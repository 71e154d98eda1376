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
    EXPECT_STREQ("crowd.tar.gz", name.filename().c_str());
    EXPECT_STREQ("data/scenes/crowd.tar.gz", name.fullname().c_str());
    EXPECT_STREQ("data/scenes/crowd.tar", name.fullnameNoExt().c_str());
    EXPECT_STREQ("data/scenes/crowd.tar.xml", name.fullname("xml").c_str());
    EXPECT_FALSE(name.isAbsolute());
}

TEST(FileNameTest, ASlashAtTheStartOrNoneGivesTheCurrentDirectory)
{
    const FileName rooted("/file");
    EXPECT_STREQ(".", rooted.pathname(false).c_str());
    EXPECT_STREQ("file", rooted.filename().c_str());
    EXPECT_STREQ("./file", rooted.fullname().c_str());

    const FileName bare("file.txt");
    EXPECT_STREQ(".", bare.pathname(false).c_str());
    EXPECT_STREQ("./file.txt", bare.fullname().c_str());
}

TEST(FileNameTest, ADotAtTheStartOrNoneGivesNoExtension)
{
    const FileName hidden("home/.hidden");
    EXPECT_STREQ(".hidden", hidden.filenameNoExt().c_str());
    EXPECT_STREQ("", hidden.extension().c_str());
    EXPECT_STREQ("home/.hidden", hidden.fullname().c_str());

    const FileName plain("home/README");
    EXPECT_STREQ("README", plain.filename().c_str());
    EXPECT_STREQ("", plain.extension().c_str());
}

TEST(FileNameTest, BackslashesBecomeSlashes)
{
    const FileName name("C:\\data\\run.rpl");
    EXPECT_STREQ("C:/data", name.pathname(false).c_str());
    EXPECT_STREQ("run", name.filenameNoExt().c_str());
    EXPECT_TRUE(name.isAbsolute());
    EXPECT_TRUE(FileName("/usr/share/a.txt").isAbsolute());
}

TEST(FileNameTest, PartsCanBeReplacedOneByOne)
{
    FileName name("out/first.xml");
    name.extension(".bin");
    EXPECT_STREQ("out/first.bin", name.fullname().c_str());
    name.filename("second.orvc");
    EXPECT_STREQ("out/second.orvc", name.fullname().c_str());
}

} // namespace
