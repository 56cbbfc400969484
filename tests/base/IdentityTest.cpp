#include "oribund/host/base/Cookie.h"
#include "oribund/host/base/IdStamp.h"

#include <gtest/gtest.h>

#include <unordered_set>
#include <vector>

using namespace oribund;

TEST(IdStamp, OrdersByItsIntegersInTurn)
{
    const std::vector<IdStamp> sorted{{-1, 5, 5}, {0, -3, 0}, {0, 0, 1}, {1, 0, 0}, {1, 0, 2}, {1, 2, 0}, {2, 0, 0}};
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        EXPECT_LT(sorted[i - 1].compare(sorted[i]), 0);
        EXPECT_GT(sorted[i].compare(sorted[i - 1]), 0);
        EXPECT_EQ(sorted[i].compare(IdStamp(sorted[i])), 0);
    }
}

TEST(IdStamp, ReadsBackWhatItWrites)
{
    EXPECT_EQ(IdStamp(3, 2, 1).asString(), "3-2-1");
    for (const IdStamp& id : {IdStamp(), IdStamp(1, -2, 3), IdStamp(-2147483647 - 1, 2147483647, -1)})
        EXPECT_EQ(IdStamp::fromString(id.asString().view()), id);
    for (const char* text : {"", "1", "1-2", "1-2-", "1-2-3-4", "1-2-3 ", " 1-2-3", "a-b-c", "1-2-99999999999", "1--2",
                             "01-2-3", "-0-2-3"})
        EXPECT_EQ(IdStamp::fromString(text), std::nullopt) << text;
}

TEST(Cookie, IdentifiesByTextThenNumber)
{
    EXPECT_FALSE(Cookie().valid());
    EXPECT_LT(Cookie("a", 9), Cookie("b", 1));
    EXPECT_LT(Cookie("a", 1), Cookie("a", 2));
    EXPECT_EQ(Cookie("clip").asString(), "clip");
    EXPECT_EQ(Cookie("clip", -2).asString(), "clip:-2");
    EXPECT_EQ((std::unordered_set<Cookie>{Cookie("a"), Cookie("a", 1), Cookie("a", 0)}.size()), 2u);
}
