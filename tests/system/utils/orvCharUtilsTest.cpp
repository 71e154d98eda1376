#include <gtest/gtest.h>

#include <cstring>

#include "system/utils/orvCharUtils.h"

namespace
{

TEST(CharUtilsTest, CopiesAreCutAndAlwaysTerminated)
{
    char buffer[6];
    memset(buffer, 'x', sizeof(buffer));
    EXPECT_EQ(buffer, orv::strcpySafe(buffer, sizeof(buffer), "abcdefgh"));
    EXPECT_STREQ("abcde", buffer);
    orv::strcpySafe(buffer, sizeof(buffer), "ab");
    EXPECT_STREQ("ab", buffer);
}

TEST(CharUtilsTest, FormattingIsCutAndReportsTheFullLength)
{
    char buffer[8];
    EXPECT_EQ(11, orv::sprintfSafe(buffer, sizeof(buffer), "%s-%d", "frame", 12345));
    EXPECT_STREQ("frame-1", buffer);
    EXPECT_EQ(4, orv::sprintfSafe(buffer, sizeof(buffer), "%d", 1234));
    EXPECT_STREQ("1234", buffer);
}

TEST(CharUtilsTest, BackslashesAreReplacedUpToTheGivenSize)
{
    char path[] = "a\\b\\c";
    orv::replaceBackSlashWithForwardSlash(path, 3);
    EXPECT_STREQ("a/b\\c", path);
    orv::replaceBackSlashWithForwardSlash(path, sizeof(path));
    EXPECT_STREQ("a/b/c", path);
}

} // namespace
