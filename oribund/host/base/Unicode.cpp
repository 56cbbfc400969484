#include "oribund/host/base/LightweightString.h"

#include <string>

namespace oribund
{

namespace
{

constexpr char32_t kReplacement = 0xfffd;
constexpr bool kWideIsUTF16 = sizeof(wchar_t) == 2;

constexpr bool isSurrogate(char32_t c) noexcept
{
    return c >= 0xd800 && c <= 0xdfff;
}

/** What the first byte of a sequence tells; the bounds of the second byte rule out overlong forms and surrogates. */
struct Lead {
    int length = 0;
    char32_t bits = 0;
    unsigned char secondLow = 0x80;
    unsigned char secondHigh = 0xbf;
};

constexpr Lead readLead(unsigned char lead) noexcept
{
    if (lead < 0x80)
        return {.length = 1, .bits = lead};
    if (lead >= 0xc2 && lead < 0xe0)
        return {.length = 2, .bits = lead & 0x1fu};
    if (lead >= 0xe0 && lead < 0xf0) {
        return {.length = 3,
                .bits = lead & 0x0fu,
                .secondLow = static_cast<unsigned char>(lead == 0xe0 ? 0xa0 : 0x80),
                .secondHigh = static_cast<unsigned char>(lead == 0xed ? 0x9f : 0xbf)};
    }
    if (lead >= 0xf0 && lead < 0xf5) {
        return {.length = 4,
                .bits = lead & 0x07u,
                .secondLow = static_cast<unsigned char>(lead == 0xf0 ? 0x90 : 0x80),
                .secondHigh = static_cast<unsigned char>(lead == 0xf4 ? 0x8f : 0xbf)};
    }
    return {};
}

/** Takes one character off the front of `text`, which is not empty; of a broken sequence, as much as was in order. */
char32_t takeUTF8(std::string_view& text) noexcept
{
    const Lead lead = readLead(static_cast<unsigned char>(text.front()));
    text.remove_prefix(1);
    if (lead.length == 0)
        return kReplacement;
    char32_t c = lead.bits;
    for (int i = 1; i < lead.length; ++i) {
        const auto byte = static_cast<unsigned char>(text.empty() ? 0 : text.front());
        const unsigned char low = i == 1 ? lead.secondLow : 0x80;
        const unsigned char high = i == 1 ? lead.secondHigh : 0xbf;
        if (byte < low || byte > high)
            return kReplacement;
        c = c << 6 | (byte & 0x3fu);
        text.remove_prefix(1);
    }
    return c;
}

char32_t takeWide(std::wstring_view& text) noexcept
{
    const auto c = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    if (kWideIsUTF16 && c >= 0xd800 && c < 0xdc00 && !text.empty()) {
        const auto low = static_cast<char32_t>(text.front());
        if (low >= 0xdc00 && low < 0xe000) {
            text.remove_prefix(1);
            return 0x10000 + ((c - 0xd800) << 10) + (low - 0xdc00);
        }
    }
    return c > 0x10ffff || isSurrogate(c) ? kReplacement : c;
}

void putUTF8(std::string& out, char32_t c)
{
    const auto continuation = [&](int shift) { out += static_cast<char>(0x80 | (c >> shift & 0x3f)); };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xc0 | c >> 6);
        continuation(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xe0 | c >> 12);
        continuation(6);
        continuation(0);
    } else {
        out += static_cast<char>(0xf0 | c >> 18);
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

void putWide(std::wstring& out, char32_t c)
{
    if (kWideIsUTF16 && c >= 0x10000) {
        out += static_cast<wchar_t>(0xd800 + ((c - 0x10000) >> 10));
        out += static_cast<wchar_t>(0xdc00 + ((c - 0x10000) & 0x3ff));
    } else {
        out += static_cast<wchar_t>(c);
    }
}

/** Walks two texts at once with `take`, which takes a character off a view's front. */
template <class View, class Take>
int compareFolded(View a, View b, Take take) noexcept
{
    while (!a.empty() && !b.empty()) {
        const auto ca = static_cast<char32_t>(foldCase(static_cast<wchar_t>(take(a))));
        const auto cb = static_cast<char32_t>(foldCase(static_cast<wchar_t>(take(b))));
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return static_cast<int>(!a.empty()) - static_cast<int>(!b.empty());
}

} // namespace

String toUTF8(std::wstring_view text)
{
    std::string out;
    out.reserve(text.size());
    while (!text.empty())
        putUTF8(out, takeWide(text));
    return String(out);
}

WString toWide(std::string_view text)
{
    std::wstring out;
    out.reserve(text.size());
    while (!text.empty())
        putWide(out, takeUTF8(text));
    return WString(out);
}

wchar_t foldCase(wchar_t character) noexcept
{
    const auto c = static_cast<char32_t>(character);
    const auto moved = [character](int distance) { return static_cast<wchar_t>(character + distance); };
    if (c < 0x80)
        return c >= 'A' && c <= 'Z' ? moved(32) : character;
    if (c >= 0xc0 && c <= 0xde)
        return c == 0xd7 ? character : moved(32);
    // Latin Extended-A alternates upper and lower; which of the two is even changes along the way.
    if ((c >= 0x100 && c <= 0x137 && c != 0x130 && c != 0x131) || (c >= 0x14a && c <= 0x177))
        return static_cast<wchar_t>(c | 1);
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17e))
        return c % 2 == 1 ? moved(1) : character;
    if (c == 0x178)
        return static_cast<wchar_t>(0xff);
    if ((c >= 0x391 && c <= 0x3ab && c != 0x3a2) || (c >= 0x410 && c <= 0x42f))
        return moved(32);
    if (c == 0x3c2) // a sigma at the end of a word
        return static_cast<wchar_t>(0x3c3);
    if (c >= 0x400 && c <= 0x40f)
        return moved(80);
    if (c >= 0x460 && c <= 0x481)
        return static_cast<wchar_t>(c | 1);
    return character;
}

int compareNoCase(const WString& a, const WString& b)
{
    return compareFolded(a.view(), b.view(), takeWide);
}

int compareNoCase(const String& a, const String& b)
{
    return compareFolded(a.view(), b.view(), takeUTF8);
}

} // namespace oribund
