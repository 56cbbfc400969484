#pragma once

#include "oribund/host/base/Export.h"

#include <atomic>
#include <compare>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace oribund::Kt
{

/**
 * Base of shared objects: the number of Ptr that hold it. Counting is thread-safe; the object is not made so.
 *
 * A new object has the count 0 and belongs to the first Ptr that takes it. A constructor must not wrap `this` in a Ptr:
 * when that Ptr goes, so does the object. A copied object starts with a count of its own.
 */
class ORIBUND_API InternalRefCount
{
public:
    void addRef() const noexcept { count_.fetch_add(1, std::memory_order_relaxed); }

    /** True when this was the last reference. */
    bool dropRef() const noexcept { return count_.fetch_sub(1, std::memory_order_acq_rel) == 1; }

    int refCount() const noexcept { return count_.load(std::memory_order_acquire); }

protected:
    InternalRefCount() noexcept = default;

    InternalRefCount(const InternalRefCount&) noexcept {}

    InternalRefCount& operator=(const InternalRefCount&) noexcept { return *this; }

    ~InternalRefCount() = default;

private:
    mutable std::atomic<int> count_{0};
};

/** How a Ptr counts objects that derive from InternalRefCount. */
struct InternalRefCountTraits {
    static void addRef(const InternalRefCount* object) noexcept { object->addRef(); }

    static bool dropRef(const InternalRefCount* object) noexcept { return object->dropRef(); }
};

/** How a Ptr ends its object: by its destructor. */
struct DtorTraits {
    // Not inlined: it is the rare end of every copy and would swell each place where one goes.
    template <class T>
    [[gnu::noinline]] static void destroy(T* object) noexcept
    {
        static_assert(std::has_virtual_destructor_v<T> || std::is_final_v<T>,
                      "a shared object is destroyed through its base: give it a virtual destructor or make it final");
        delete object;
    }
};

/**
 * Intrusive shared pointer. Any raw pointer to a living shared object may be wrapped again, as the count is inside it.
 * Different Ptr may be used by different threads. `T` may be only declared where a Ptr is declared, but has to be
 * defined where one is copied or destroyed.
 */
template <class T, class Dtor = DtorTraits, class Count = InternalRefCountTraits>
class Ptr
{
public:
    using element_type = T;

    Ptr() noexcept = default;

    Ptr(std::nullptr_t) noexcept {}

    explicit Ptr(T* object) noexcept
        : object_(object)
    {
        hold();
    }

    Ptr(const Ptr& other) noexcept
        : object_(other.object_)
    {
        hold();
    }

    Ptr(Ptr&& other) noexcept
        : object_(std::exchange(other.object_, nullptr))
    {
    }

    template <class U>
    requires std::is_convertible_v<U*, T*> Ptr(const Ptr<U, Dtor, Count>& other)
    noexcept
        : object_(other.get())
    {
        hold();
    }

    ~Ptr() { drop(); }

    Ptr& operator=(const Ptr& other) noexcept
    {
        Ptr(other).swap(*this);
        return *this;
    }

    Ptr& operator=(Ptr&& other) noexcept
    {
        Ptr(std::move(other)).swap(*this);
        return *this;
    }

    /** The old object, if any, may be destroyed inside; this Ptr holds the new one by then. */
    void reset(T* object = nullptr) noexcept { Ptr(object).swap(*this); }

    void swap(Ptr& other) noexcept { std::swap(object_, other.object_); }

    T* get() const noexcept { return object_; }

    T* operator->() const noexcept { return object_; }

    T& operator*() const noexcept { return *object_; }

    explicit operator bool() const noexcept { return object_ != nullptr; }

    friend bool operator==(const Ptr& a, const Ptr& b) noexcept { return a.object_ == b.object_; }

    friend bool operator==(const Ptr& a, const T* b) noexcept { return a.object_ == b; }

    friend bool operator==(const Ptr& a, std::nullptr_t) noexcept { return a.object_ == nullptr; }

    friend std::strong_ordering operator<=>(const Ptr& a, const Ptr& b) noexcept
    {
        return std::compare_three_way()(a.object_, b.object_);
    }

private:
    void hold() const noexcept
    {
        if (object_)
            Count::addRef(object_);
    }

    void drop() noexcept
    {
        if (T* object = std::exchange(object_, nullptr); object && Count::dropRef(object))
            Dtor::destroy(object);
    }

    T* object_ = nullptr;
};

/** A new object, owned by the pointer returned. */
template <class T, class... Args>
Ptr<T> makePtr(Args&&... args)
{
    return Ptr<T>(new T(std::forward<Args>(args)...));
}

/** The same object as its derived class `T`; null when it is none. */
template <class T, class U>
Ptr<T> dynamicCast(const Ptr<U>& object) noexcept
{
    return Ptr<T>(dynamic_cast<T*>(object.get()));
}

} // namespace oribund::Kt

template <class T, class D, class C>
struct std::hash<oribund::Kt::Ptr<T, D, C>> {
    std::size_t operator()(const oribund::Kt::Ptr<T, D, C>& object) const noexcept
    {
        return std::hash<T*>()(object.get());
    }
};
