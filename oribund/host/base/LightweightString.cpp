#include "oribund/host/base/LightweightString.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace oribund
{

// The characters follow the header in the same allocation, with a terminating zero that is not counted.
template <class C>
struct LightweightString<C>::Buffer {
    std::atomic<int> refs{1};
    std::size_t size = 0;
    std::size_t capacity = 0;

    C* chars() noexcept { return reinterpret_cast<C*>(this + 1); }

    static Buffer* make(std::size_t capacity)
    {
        void* memory = ::operator new(sizeof(Buffer) + (capacity + 1) * sizeof(C));
        auto* buffer = new (memory) Buffer;
        buffer->capacity = capacity;
        return buffer;
    }

    void hold() noexcept { refs.fetch_add(1, std::memory_order_relaxed); }

    void drop() noexcept
    {
        if (refs.fetch_sub(1, std::memory_order_acq_rel) != 1)
            return;
        std::destroy_at(this);
        ::operator delete(static_cast<void*>(this));
    }

    bool isShared() const noexcept { return refs.load(std::memory_order_acquire) > 1; }

    void add(View text) noexcept
    {
        std::char_traits<C>::copy(chars() + size, text.data(), text.size());
        size += text.size();
        chars()[size] = 0;
    }
};

template <class C>
LightweightString<C>::LightweightString(const C* text)
    : LightweightString(fromPointer(text))
{
}

template <class C>
LightweightString<C>::LightweightString(View text)
{
    if (text.empty())
        return;
    buffer_ = Buffer::make(text.size());
    buffer_->add(text);
}

template <class C>
LightweightString<C>::LightweightString(const LightweightString& other) noexcept
    : buffer_(other.buffer_)
{
    if (buffer_)
        buffer_->hold();
}

template <class C>
LightweightString<C>::LightweightString(LightweightString&& other) noexcept
    : buffer_(std::exchange(other.buffer_, nullptr))
{
}

template <class C>
LightweightString<C>& LightweightString<C>::operator=(const LightweightString& other) noexcept
{
    LightweightString copy(other);
    std::swap(buffer_, copy.buffer_);
    return *this;
}

template <class C>
LightweightString<C>& LightweightString<C>::operator=(LightweightString&& other) noexcept
{
    LightweightString taken(std::move(other));
    std::swap(buffer_, taken.buffer_);
    return *this;
}

template <class C>
LightweightString<C>::~LightweightString()
{
    clear();
}

template <class C>
void LightweightString<C>::clear() noexcept
{
    if (Buffer* buffer = std::exchange(buffer_, nullptr))
        buffer->drop();
}

template <class C>
LightweightString<C>& LightweightString<C>::append(View text)
{
    if (text.empty())
        return *this;
    const std::size_t newSize = size() + text.size();
    if (buffer_ && newSize <= buffer_->capacity && !buffer_->isShared()) {
        buffer_->add(text);
        return *this;
    }
    // The old buffer goes last, as `text` may lie in it.
    Buffer* grown = Buffer::make(buffer_ ? std::max(newSize, size() * 2) : newSize);
    grown->add(view());
    grown->add(text);
    clear();
    buffer_ = grown;
    return *this;
}

template <class C>
std::size_t LightweightString<C>::sizeOf(const Buffer& buffer) noexcept
{
    return buffer.size;
}

template <class C>
const C* LightweightString<C>::chars() const noexcept
{
    return buffer_->chars();
}

template class LightweightString<char>;
template class LightweightString<wchar_t>;

} // namespace oribund
