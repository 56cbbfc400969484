#include "oribund/host/base/LightweightString.h"
#include "oribund/host/base/UIString.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace oribund;

namespace
{

const char* const kNull = nullptr;

} // namespace

TEST(LightweightString, AbsentAndEmptyAreTheSame)
{
    const String absent(kNull);
    EXPECT_EQ(absent, "");
    EXPECT_EQ(absent, kNull);
    EXPECT_STREQ(absent.c_str(), "");
    EXPECT_EQ(std::hash<String>()(absent), std::hash<String>()(String("")));
    EXPECT_LT(absent, String("a"));
}

TEST(LightweightString, CopiesShareUntilOneIsAppendedTo)
{
    String b("curve");
    const String a = b;
    EXPECT_EQ(a.c_str(), b.c_str());
    b += " handle";
    EXPECT_EQ(a, "curve");
    // Room in the shared buffer belongs to neither.
    String c = b;
    c += "s";
    b += "!";
    const String d = c;
    c += "+";
    EXPECT_EQ(b, "curve handle!");
    EXPECT_EQ(c, "curve handles+");
    EXPECT_EQ(d, "curve handles");

    // The sole owner grows in place: of many appends only a few move the text.
    int moves = 0;
    for (int i = 0; i < 10000; ++i) {
        const char* const before = b.c_str();
        b += 'x';
        moves += before != b.c_str();
    }
    EXPECT_EQ(b.size(), 10013u);
    EXPECT_LT(moves, 30);
}

TEST(LightweightString, AppendsWhatLiesInItself)
{
    String a("abc");
    for (int i = 0; i < 2; ++i)
        a += a;
    EXPECT_EQ(a, "abcabcabcabc");
    a = *&a;
    EXPECT_EQ(a, "abcabcabcabc");

    String tail("0123456789");
    tail.append(tail.view().substr(8));
    tail.append(tail.view().substr(10, 2));
    EXPECT_EQ(tail, "01234567898989");
}

TEST(LightweightString, OrdersByCodeUnitAndKeepsInnerZeros)
{
    EXPECT_LT(String("B"), "a");
    EXPECT_LT(String("a"), String("\xc3\xa4")); // bytes count as unsigned
    const String zero(std::string_view("a\0b", 3));
    EXPECT_EQ(zero.size(), 3u);
    EXPECT_NE(zero, "a");
    EXPECT_EQ(String("a") + zero + "c" + std::string_view("d"), std::string_view("aa\0bcd", 6));
    EXPECT_EQ("x" + String("y"), "xy");
}

TEST(LightweightString, CopiesMayBeUsedByManyThreads)
{
    const String shared("shared by all of them");
    std::vector<std::thread> threads;
    std::atomic<int> wrong{0};
    std::latch ready(4);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&shared, &wrong, &ready] {
            ready.arrive_and_wait();
            for (int i = 0; i < 50000; ++i) {
                String mine = shared;
                mine += '!';
                wrong += mine.size() != shared.size() + 1;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(shared, "shared by all of them");
}

TEST(Unicode, WellFormedTextSurvivesTheRoundTrip)
{
    const WString wide(L"Aä\u20ac\U0001F3AC\uffff");
    const String utf8 = toUTF8(wide);
    EXPECT_EQ(utf8, "A\xc3\xa4\xe2\x82\xac\xf0\x9f\x8e\xac\xef\xbf\xbf");
    EXPECT_EQ(toWide(utf8), wide);
    // Every boundary between lengths, and next to the surrogates and the end.
    for (const char32_t c : {0x7f, 0x80, 0x7ff, 0x800, 0xd7ff, 0xe000, 0xffff, 0x10000, 0x10ffff}) {
        const auto wc = static_cast<wchar_t>(c);
        EXPECT_EQ(toWide(toUTF8(std::wstring_view(&wc, 1))).view(), std::wstring_view(&wc, 1))
            << static_cast<unsigned>(c);
    }
}

TEST(Unicode, BrokenSequencesBecomeReplacementCharacters)
{
    const std::pair<std::string_view, std::wstring_view> cases[] = {
        {"a\x80z", L"a\ufffdz"},                           // a continuation without a start
        {"a\xc3", L"a\ufffd"},                             // cut off by the end
        {"\xe2\x82\xc3\xa4", L"\ufffd\u00e4"},             // cut off by a sequence that is kept
        {"\xc0\xaf", L"\ufffd\ufffd"},                     // overlong
        {"\xe0\x80\xaf", L"\ufffd\ufffd\ufffd"},           // overlong
        {"\xed\xa0\x80", L"\ufffd\ufffd\ufffd"},           // a surrogate
        {"\xf4\x90\x80\x80", L"\ufffd\ufffd\ufffd\ufffd"}, // beyond the last character
        {"\xff\xfe", L"\ufffd\ufffd"},                     // no bytes of UTF-8 at all
        {"\xf0\x9f\x8e", L"\ufffd"},                       // three of four
    };
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(toWide(bytes).view(), expected) << testing::PrintToString(std::string(bytes));

    if constexpr (sizeof(wchar_t) == 4) {
        const wchar_t wrong[] = {L'a', static_cast<wchar_t>(0xd800), static_cast<wchar_t>(0x110000), L'b'};
        EXPECT_EQ(toUTF8(std::wstring_view(wrong, 4)), "a\xef\xbf\xbd\xef\xbf\xbd"
                                                       "b");
    }
}

TEST(Unicode, ComparesWithoutCase)
{
    EXPECT_EQ(compareNoCase(WString(L"Färbung ŽΣЖЁ"), WString(L"FÄRBUNG žσжё")), 0);
    EXPECT_EQ(compareNoCase(WString(L"ς"), WString(L"Σ")), 0);
    EXPECT_EQ(compareNoCase(String("\xc3\x84ther"), String("\xc3\xa4THER")), 0);
    EXPECT_LT(compareNoCase(String("Blur"), String("blurs")), 0);
    EXPECT_GT(compareNoCase(String("c"), String("B")), 0);
    // Neighbours of the ranges that have pairs do not pair.
    for (const auto& [a, b] :
         {std::pair(L"@", L"`"), std::pair(L"[", L"{"), std::pair(L"×", L"÷"), std::pair(L"ı", L"i")})
        EXPECT_NE(compareNoCase(WString(a), WString(b)), 0);
    for (wchar_t c = 0; c < 0x500; ++c)
        EXPECT_EQ(foldCase(foldCase(c)), foldCase(c)) << static_cast<int>(c);
}

TEST(UIString, ReplacesPlaceholdersOnceAndLeavesUnknownOnes)
{
    const UIString text = UIString(L"Track $TRACK$ of $COUNT$: $NAME$")
                              .withPlaceholder(L"TRACK", L"$COUNT$")
                              .withPlaceholder(L"COUNT", L"7")
                              .withPlaceholder(L"COUNT", L"8");
    EXPECT_EQ(text.expand(text.text()), L"Track $COUNT$ of 8: $NAME$");
    EXPECT_EQ(text.expand(L"5$ and $TRACK$"), L"5$ and $COUNT$");
    EXPECT_EQ(text.expand(L"$COUNT$$COUNT$$"), L"88$");
    EXPECT_EQ(text.expand(L"$unknown$COUNT$"), L"$unknown8");
    EXPECT_EQ(UIString(L"$A$").expand(L"$A$"), L"$A$");
}
