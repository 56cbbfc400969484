#include "oribund/host/base/Colour.h"
#include "oribund/host/base/ListParam.h"
#include "oribund/host/base/VideoInputParam.h"

#include <gtest/gtest.h>

using namespace oribund;

TEST(Colour, ConvertsFromAndToBytes)
{
    for (const std::uint32_t rgb : {0x000000u, 0xffffffu, 0x123456u, 0x80ff01u})
        EXPECT_EQ(Colour::fromRGB(rgb).toRGB(), rgb);
    EXPECT_EQ((Colour{-1.0, 0.5, 2.0, 1.0}).toRGB(), 0x0080ffu);
    EXPECT_EQ(Colour::fromRGB(0xff0000, 0.25).a, 0.25);
}

TEST(Colour, MixesWithOpacityAndScalesWithout)
{
    const Colour a{0.0, 0.2, 1.0, 1.0};
    EXPECT_EQ(a.mix({1.0, 0.2, 0.0, 0.0}, 0.25), (Colour{0.25, 0.2, 0.75, 0.75}));
    EXPECT_EQ((Colour{0.25, 0.5, 0.75, 0.5}).scaled(2.0), (Colour{0.5, 1.0, 1.0, 0.5}));
}

TEST(ListParam, SelectsOnlyWhatItHas)
{
    ListParam<String> list({{"normal", L"Normal"}, {"add", L"Add"}, {"add", L"Add again"}}, 2);
    EXPECT_FALSE(list.select(3));
    EXPECT_FALSE(list.select(-1));
    EXPECT_FALSE(list.selectValue("screen"));
    EXPECT_EQ(list.selectedItem()->label, UIString(L"Add again"));
    EXPECT_TRUE(list.selectValue("add"));
    EXPECT_EQ(list.selectedIndex(), 1);
    EXPECT_EQ(ListParam<int>({}, 0).selectedIndex(), -1);
    EXPECT_EQ((ListParam<int>({{7, L"seven"}}, 5).selectedItem()), nullptr);

    VideoInputParam input({L"Fg", L"Bg"}, 1);
    EXPECT_FALSE(input.select(2));
    EXPECT_EQ(input.selectedIndex(), 1);
    EXPECT_TRUE(input.select(0));
    EXPECT_EQ(input, (VideoInputParam({L"Fg", L"Bg"})));
    EXPECT_NE(input, (VideoInputParam({L"Fg", L"Matte"})));
    EXPECT_EQ(VideoInputParam().selectedIndex(), -1);
}

TEST(ListParam, CopiesShareTheListAndCompareByContent)
{
    const ListParam<int> a({{1, L"one"}, {2, L"two"}}, 0);
    ListParam<int> b = a;
    EXPECT_EQ(a.items().data(), b.items().data());
    EXPECT_TRUE(b.select(1));
    EXPECT_EQ(a.selectedIndex(), 0);
    EXPECT_EQ(b, (ListParam<int>({{1, L"one"}, {2, L"two"}}, 1)));
    EXPECT_NE(b, (ListParam<int>({{1, L"one"}, {2, L"zwei"}}, 1)));
}
