#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>

#include "system/containers/orvStaticString.h"
#include "system/containers/orvString.h"
#include "system/containers/orvStringPrinter.h"

namespace
{

using orv::OrvString;

TEST(OrvStringTest, EditsMatchTheStandardStringEvenWithTextFromTheStringItself)
{
    OrvString s;
    std::string r;
    // Never allocated, yet its C string is terminated.
    EXPECT_EQ(nullptr, s._data._data);
    EXPECT_STREQ("", s.c_str());
    int step = 0;
    const auto edit = [&](auto&& change)
    {
        change(s);
        change(r);
        ++step;
        EXPECT_EQ(r, s.c_str()) << "step " << step;
        EXPECT_EQ(r.size(), s.size()) << "step " << step;
    };
    edit([](auto& t) { t.insert(0, "world"); });
    edit([](auto& t) { t.insert(0, "hello "); });
    edit([](auto& t) { t += '!'; });
    edit([](auto& t) { t.append(2, '?'); });
    edit([](auto& t) { t.erase(5, 6); });
    edit([](auto& t) { t.replace(0, 5, "bye"); });
    edit([](auto& t) { t.replace(3, std::string::npos, 1, '.'); });
    edit([](auto& t) { t.resize(6, '-'); });
    edit([](auto& t) { t.resize(2); });
    edit([](auto& t) { t.pop_back(); });
    // Text taken from the string's own block must survive the reallocation it causes.
    edit([](auto& t) { t.assign("abcdefg"); });
    edit([](auto& t) { t.append(t); });
    edit([](auto& t) { t.insert(1, t.c_str() + 10); });
    edit([](auto& t) { t.replace(0, 3, t.c_str() + 1, 12); });
    edit([](auto& t) { t.assign(t.c_str() + 20, 3); });
}

TEST(OrvStringTest, SearchesMatchTheStandardStringFromEveryStart)
{
    const size_t starts[] = {0, 1, 2, 3, 4, 6, 7, 8, 9, OrvString::npos};
    for (const char* text : {"abcabcxa", ""})
    {
        const OrvString s(text);
        const std::string r(text);
        for (const char* needle : {"abc", "a", "xc", "ab", "abcx", "", "abcabcxaz"})
        {
            for (size_t pos : starts)
            {
                const std::string where = std::string("'") + needle + "' in '" + text + "' from " + std::to_string(pos);
                EXPECT_EQ(r.find(needle, pos), s.find(needle, pos)) << where;
                EXPECT_EQ(r.rfind(needle, pos), s.rfind(needle, pos)) << where;
                EXPECT_EQ(r.find_first_of(needle, pos), s.find_first_of(needle, pos)) << where;
                EXPECT_EQ(r.find_last_of(needle, pos), s.find_last_of(needle, pos)) << where;
                EXPECT_EQ(r.find_first_not_of(needle, pos), s.find_first_not_of(needle, pos)) << where;
                EXPECT_EQ(r.find_last_not_of(needle, pos), s.find_last_not_of(needle, pos)) << where;
                EXPECT_EQ(r.find(needle[0], pos), s.find(needle[0], pos)) << where;
                EXPECT_EQ(r.rfind(needle[0], pos), s.rfind(needle[0], pos)) << where;
            }
        }
    }
}

TEST(OrvStringTest, OrderIsByteWiseThenByLength)
{
    EXPECT_LT(OrvString("abc"), OrvString("abd"));
    EXPECT_LT(OrvString("ab"), OrvString("abc"));
    EXPECT_LT(OrvString("z"), OrvString("\xe9"));
    EXPECT_EQ(0, OrvString("xabcx").compare(1, 3, OrvString("abc")));
    EXPECT_LT(OrvString("a"), OrvString("a\0b", 3));
}

TEST(OrvStringTest, BuildsFromPartsAndCaseChangesLeaveTheOperandsAlone)
{
    const OrvString base("abcdef");
    EXPECT_EQ("cde", OrvString(base, 2, 3));
    EXPECT_EQ("", OrvString(base, 6));
    EXPECT_EQ("xxx", OrvString(3, 'x'));
    EXPECT_EQ("", OrvString(static_cast<const char*>(nullptr)));
    const OrvString a("Path/");
    const OrvString joined = '<' + a + "File" + '.' + OrvString("Ext");
    EXPECT_EQ("<Path/File.Ext", joined);
    EXPECT_EQ("Path/", a);
    OrvString lower = joined;
    EXPECT_EQ("<path/file.ext", lower.toLowerSelf());
    EXPECT_EQ("<PATH/FILE.EXT", lower.toUpperSelf());
    EXPECT_EQ("<Path/File.Ext", joined);
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
    in >> word;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ("second", word);
}

TEST(OrvStaticStringTest, OrdersByTextNotByAddress)
{
    char first[] = "beta";
    char second[] = "beta";
    EXPECT_TRUE(orv::OrvStaticString(first) == orv::OrvStaticString(second));
    EXPECT_TRUE(orv::OrvStaticString("alpha") < orv::OrvStaticString(second));
    EXPECT_FALSE(orv::OrvStaticString(second) < orv::OrvStaticString(first));
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
