#include <gtest/gtest.h>

#include <cstring>
#include <iomanip>
#include <sstream>
#include <string>

#include "system/containers/orvStaticString.h"
#include "system/containers/orvString.h"
#include "system/memory/orvMemoryAllocatorMalloc.h"
#include "system/memory/orvProxyAllocator.h"
#include "system/containers/orvStringPrinter.h"

namespace
{

using orv::OrvString;

TEST(OrvStringTest, NeverAllocatedStringIsEmptyWithATerminatedCString)
{
    OrvString s;
    EXPECT_EQ(0u, s.size());
    EXPECT_EQ(nullptr, s._data._data);
    ASSERT_NE(nullptr, s.c_str());
    EXPECT_STREQ("", s.c_str());
    EXPECT_TRUE(s.empty());
    s.clear();
    s.erase();
    EXPECT_EQ(nullptr, s._data._data);
}

TEST(OrvStringTest, StorageHoldsTheLengthPlusTheTerminator)
{
    OrvString s;
    s.push_back('a');
    EXPECT_EQ(8u, s._data.capacity());
    EXPECT_EQ(2u, s._data._size);
    s = "hello world";
    EXPECT_EQ(11u, s.size());
    EXPECT_EQ(12u, s._data._size);
    EXPECT_EQ('\0', s._data._data[11]);
    s.clear();
    EXPECT_EQ(1u, s._data._size);
    EXPECT_STREQ("", s.c_str());
}

TEST(OrvStringTest, BuildsFromTextSubstringsAndStandardStrings)
{
    const OrvString base("abcdef");
    EXPECT_EQ("cde", OrvString(base, 2, 3));
    EXPECT_EQ("ef", OrvString(base, 4));
    EXPECT_EQ("", OrvString(base, 6));
    EXPECT_EQ("ab", OrvString("abc", 2));
    EXPECT_EQ("xxx", OrvString(3, 'x'));
    EXPECT_EQ("std", OrvString(std::string("std")));
    EXPECT_EQ("", OrvString(static_cast<const char*>(nullptr)));
}

TEST(OrvStringTest, EditsKeepTheTerminatorInPlace)
{
    OrvString s("world");
    s.insert(0, "hello ");
    s += '!';
    s.append(2, '?');
    EXPECT_EQ("hello world!??", s);
    s.erase(5, 6);
    EXPECT_EQ("hello!??", s);
    s.replace(0, 5, "bye");
    EXPECT_EQ("bye!??", s);
    s.replace(3, OrvString::npos, 1, '.');
    EXPECT_EQ("bye.", s);
    s.resize(6, '-');
    EXPECT_EQ("bye.--", s);
    s.resize(2);
    EXPECT_EQ("by", s);
    s.pop_back();
    EXPECT_EQ("b", s);
    EXPECT_EQ(strlen(s.c_str()), s.size());
}

TEST(OrvStringTest, TextFromTheStringItselfSurvivesReallocation)
{
    // The standard string is the reference for each step.
    OrvString s("abcdefg");
    std::string r("abcdefg");
    s.append(s);
    r.append(r);
    EXPECT_EQ(r, s.c_str());
    s.insert(1, s.c_str() + 10);
    r.insert(1, r.c_str() + 10);
    EXPECT_EQ(r, s.c_str());
    s.replace(0, 3, s.c_str() + 1, 12);
    r.replace(0, 3, r.c_str() + 1, 12);
    EXPECT_EQ(r, s.c_str());
    s.assign(s.c_str() + 20, 3);
    r.assign(r.c_str() + 20, 3);
    EXPECT_EQ(r, s.c_str());
}

TEST(OrvStringTest, SearchesHonourStartPositionsAndBounds)
{
    const OrvString s("abcabcxa");
    EXPECT_EQ(0u, s.find("abc"));
    EXPECT_EQ(3u, s.find("abc", 1));
    EXPECT_EQ(OrvString::npos, s.find("abc", 4));
    EXPECT_EQ(OrvString::npos, s.find("abcabcxaz"));
    EXPECT_EQ(8u, s.find("", 8));
    EXPECT_EQ(OrvString::npos, s.find("", 9));
    EXPECT_EQ(7u, s.find('a', 4));
    EXPECT_EQ(3u, s.rfind("abc"));
    EXPECT_EQ(0u, s.rfind("abc", 2));
    EXPECT_EQ(7u, s.rfind('a'));
    EXPECT_EQ(0u, s.rfind('a', 0));
    EXPECT_EQ(2u, s.find_first_of("xc"));
    EXPECT_EQ(6u, s.find_last_of("xc"));
    EXPECT_EQ(2u, s.find_first_not_of("ab"));
    EXPECT_EQ(6u, s.find_last_not_of("ab"));
    EXPECT_EQ(OrvString::npos, s.find_first_not_of("abcx"));
    EXPECT_EQ(OrvString::npos, OrvString().find_last_of("a"));
    EXPECT_EQ(0u, OrvString().rfind(""));
}

TEST(OrvStringTest, OrderIsByteWiseThenByLength)
{
    EXPECT_LT(OrvString("abc"), OrvString("abd"));
    EXPECT_LT(OrvString("ab"), OrvString("abc"));
    EXPECT_LT(OrvString("z"), OrvString("\xe9"));
    EXPECT_GT(OrvString("b").compare("abc"), 0);
    EXPECT_EQ(0, OrvString("xabcx").compare(1, 3, OrvString("abc")));
    EXPECT_TRUE("abc" == OrvString("abc"));
    EXPECT_TRUE(OrvString() == "");
    EXPECT_TRUE(OrvString("a") != OrvString("a\0b", 3));
    EXPECT_LT(OrvString("a"), OrvString("a\0b", 3));
}

TEST(OrvStringTest, ConcatenationAndCaseChangesLeaveOperandsAlone)
{
    const OrvString a("Path/");
    const OrvString joined = a + "File" + '.' + OrvString("Ext");
    EXPECT_EQ("Path/File.Ext", joined);
    EXPECT_EQ("Path/", a);
    EXPECT_EQ("<Path/", '<' + a);
    OrvString lower = joined;
    lower.toLowerSelf();
    EXPECT_EQ("path/file.ext", lower);
    EXPECT_EQ("PATH/FILE.EXT", lower.toUpperSelf());
    EXPECT_EQ("Path/File.Ext", joined);
    EXPECT_EQ("File", joined.substr(5, 4));
}

TEST(OrvStringTest, StreamsWriteWithWidthAndReadWordByWord)
{
    std::ostringstream out;
    out << std::setw(6) << OrvString("ab") << '|' << OrvString();
    EXPECT_EQ("    ab|", out.str());

    std::istringstream in("  first second\n");
    OrvString word("kept");
    in >> word;
    EXPECT_EQ("first", word);
    in >> word;
    EXPECT_EQ("second", word);
    in >> word;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ("second", word);
}

TEST(OrvStringTest, StringAllocatorIsAProxyCountingUnderTheStringCategory)
{
    // Leave the proxy as this test found it: a library start-up elsewhere may have bound it.
    orv::ProxyAllocator* before = static_cast<orv::ProxyAllocator*>(orv::getStringAllocator());
    orv::MemoryAllocator* previousTarget = before != nullptr ? before->getTarget() : nullptr;

    orv::MemoryAllocatorMalloc target;
    orv::initializeStringAllocator(&target);
    orv::ProxyAllocator* proxy = static_cast<orv::ProxyAllocator*>(orv::getStringAllocator());
    ASSERT_NE(nullptr, proxy);
    EXPECT_EQ(&target, proxy->getTarget());
    EXPECT_EQ(15u, proxy->getCategory());
    orv::uninitializeStringAllocator();
    EXPECT_EQ(nullptr, orv::getStringAllocator());

    if (previousTarget != nullptr)
    {
        orv::initializeStringAllocator(previousTarget);
    }
}

TEST(OrvStaticStringTest, OrdersByTextNotByAddress)
{
    char first[] = "beta";
    char second[] = "beta";
    EXPECT_TRUE(orv::OrvStaticString(first) == orv::OrvStaticString(second));
    EXPECT_TRUE(orv::OrvStaticString("alpha") < orv::OrvStaticString(second));
    EXPECT_FALSE(orv::OrvStaticString(second) < orv::OrvStaticString(first));
    EXPECT_STREQ("", orv::OrvStaticString().c_str());
}

using OrvStringDeathTest = ::testing::Test;

TEST_F(OrvStringDeathTest, PositionPastTheEndIsFatal)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    OrvString s("abc");
    EXPECT_DEATH(s.substr(4), "pos <= other.size()");
    EXPECT_DEATH(s.insert(5, "x"), "pos <= oldSize");
    EXPECT_DEATH(s.at(3), "index < size()");
}

} // namespace
