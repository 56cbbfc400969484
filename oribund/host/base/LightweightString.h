#pragma once

#include "oribund/host/base/Export.h"

#include <compare>
#include <cstddef>
#include <string_view>

namespace oribund
{

/**
 * A text that is cheap to pass by value: copies share one buffer, which is duplicated only when a shared text is
 * appended to. Narrow texts are UTF-8, wide ones hold code points (UTF-16 where wchar_t has 16 bits).
 *
 * An absent text (a null pointer) and an empty one are the same. Different copies may be used by different threads; one
 * object may not be changed by one thread while another uses it. Comparison is by code unit and case-sensitive.
 */
template <class C>
class LightweightString
{
public:
    using View = std::basic_string_view<C>;

    LightweightString() noexcept = default;
    LightweightString(const C* text);
    LightweightString(View text);
    LightweightString(const LightweightString& other) noexcept;
    LightweightString(LightweightString&& other) noexcept;
    LightweightString& operator=(const LightweightString& other) noexcept;
    LightweightString& operator=(LightweightString&& other) noexcept;
    ~LightweightString();

    /** Valid until this text is changed or destroyed. */
    View view() const noexcept { return buffer_ ? View(chars(), size()) : View(); }

    /** Terminated by a zero; never null. Valid as long as view(). */
    const C* c_str() const noexcept { return buffer_ ? chars() : &kZero; }

    std::size_t size() const noexcept { return buffer_ ? sizeOf(*buffer_) : 0; }

    bool empty() const noexcept { return size() == 0; }

    const C* begin() const noexcept { return c_str(); }

    const C* end() const noexcept { return c_str() + size(); }

    /** Appends in place while this is the only owner of its buffer and there is room; `text` may lie in this text. */
    LightweightString& append(View text);

    LightweightString& operator+=(const LightweightString& text) { return append(text.view()); }

    LightweightString& operator+=(View text) { return append(text); }

    LightweightString& operator+=(const C* text) { return append(fromPointer(text)); }

    LightweightString& operator+=(C character) { return append(View(&character, 1)); }

    void clear() noexcept;

    friend LightweightString operator+(LightweightString a, const LightweightString& b)
    {
        a.append(b.view());
        return a;
    }

    friend LightweightString operator+(LightweightString a, View b)
    {
        a.append(b);
        return a;
    }

    friend LightweightString operator+(LightweightString a, const C* b)
    {
        a += b;
        return a;
    }

    friend LightweightString operator+(const C* a, const LightweightString& b) { return LightweightString(a) + b; }

    friend bool operator==(const LightweightString& a, const LightweightString& b) noexcept
    {
        return a.buffer_ == b.buffer_ || a.view() == b.view();
    }

    friend bool operator==(const LightweightString& a, View b) noexcept { return a.view() == b; }

    friend bool operator==(const LightweightString& a, const C* b) noexcept { return a.view() == fromPointer(b); }

    friend std::strong_ordering operator<=>(const LightweightString& a, const LightweightString& b) noexcept
    {
        return a.view() <=> b.view();
    }

    friend std::strong_ordering operator<=>(const LightweightString& a, View b) noexcept { return a.view() <=> b; }

    friend std::strong_ordering operator<=>(const LightweightString& a, const C* b) noexcept
    {
        return a.view() <=> fromPointer(b);
    }

private:
    struct Buffer;

    static View fromPointer(const C* text) noexcept { return text ? View(text) : View(); }

    static std::size_t sizeOf(const Buffer& buffer) noexcept;
    const C* chars() const noexcept;

    static constexpr C kZero = 0;
    Buffer* buffer_ = nullptr;
};

extern template class ORIBUND_API LightweightString<char>;
extern template class ORIBUND_API LightweightString<wchar_t>;

using String = LightweightString<char>;
using WString = LightweightString<wchar_t>;

/** Converts to UTF-8. What is no Unicode character becomes U+FFFD; the conversion never fails. */
ORIBUND_API String toUTF8(std::wstring_view text);

inline String toUTF8(const WString& text)
{
    return toUTF8(text.view());
}

inline String toUTF8(const wchar_t* text)
{
    return toUTF8(WString(text));
}

/** Converts from UTF-8. Each broken sequence becomes one U+FFFD; the conversion never fails. */
ORIBUND_API WString toWide(std::string_view text);

inline WString toWide(const String& text)
{
    return toWide(text.view());
}

inline WString toWide(const char* text)
{
    return toWide(String(text));
}

/**
 * Negative, zero or positive as `a` sorts before, with or after `b` when upper and lower case are the same. Knows the
 * letter pairs of Latin, Greek and Cyrillic, and does not depend on the process's locale.
 */
ORIBUND_API int compareNoCase(const WString& a, const WString& b);
ORIBUND_API int compareNoCase(const String& a, const String& b);

/** The lower-case form with which compareNoCase() compares; other characters come back unchanged. */
ORIBUND_API wchar_t foldCase(wchar_t character) noexcept;

} // namespace oribund

template <class C>
struct std::hash<oribund::LightweightString<C>> {
    std::size_t operator()(const oribund::LightweightString<C>& text) const noexcept
    {
        return std::hash<std::basic_string_view<C>>()(text.view());
    }
};
