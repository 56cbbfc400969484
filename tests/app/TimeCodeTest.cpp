#include "workbench/app/timeline/TimeCode.h"

#include <gtest/gtest.h>

namespace workbench
{
namespace
{

FormatData rate(int numerator, int denominator)
{
    FormatData format;
    format.fpsNumerator = numerator;
    format.fpsDenominator = denominator;
    return format;
}

TEST(TimeCode, CountsEveryFrameOfTheEditAndReadsThemBack)
{
    for (const FormatData& format : {rate(25, 1), rate(30000, 1001), rate(24000, 1001), rate(60, 1)})
        for (const int frame : {0, 1, 59, 60, 1499, 90000, 6000000})
            EXPECT_EQ(frameOfTimeCode(timeCodeOf(frame, format), format), frame);
    EXPECT_EQ(timeCodeOf(30, rate(30000, 1001)), "00:00:01:00");
    EXPECT_EQ(timeCodeOf(-5, rate(25, 1)), "00:00:00:00");
    EXPECT_FALSE(frameOfTimeCode("99999999:0:0:0", rate(25, 1)));
}

} // namespace
} // namespace workbench
