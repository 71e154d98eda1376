#include <gtest/gtest.h>

#include "system/utils/orvCharUtils.h"

namespace
{

TEST(CharUtilsTest, CopiesAndFormattingAreCutAndAlwaysTerminated)
{
    char buffer[6];
    EXPECT_EQ(buffer, orv::strcpySafe(buffer, sizeof(buffer), "abcdefgh"));
    EXPECT_STREQ("abcde", buffer);
    // The result is the length the whole text would have had.
    EXPECT_EQ(11, orv::sprintfSafe(buffer, sizeof(buffer), "%s-%d", "frame", 12345));
    EXPECT_STREQ("frame", buffer);
}

TEST(CharUtilsTest, BackslashesAreReplacedUpToTheGivenSize)
{
    char path[] = "a\\b\\c";
    orv::replaceBackSlashWithForwardSlash(path, 3);
    EXPECT_STREQ("a/b\\c", path);
}

} // namespace
