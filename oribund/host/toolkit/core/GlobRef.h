#pragma once

#include <memory>
#include <type_traits>

namespace oribund
{

/**
 * Points to a glob and becomes null when that is destroyed. With it a glob finds out whether a callback has destroyed
 * it: `GlobRef<Button> self(this); callback(); if (!self) return;`
 */
template <class T>
class GlobRef
{
public:
    GlobRef() = default;

    explicit GlobRef(T* glob)
        : token_(glob ? glob->token() : nullptr)
        , glob_(glob)
    {
    }

    T* get() const { return token_ && *token_ ? glob_ : nullptr; }

    T* operator->() const { return get(); }

    T& operator*() const { return *get(); }

    explicit operator bool() const { return get() != nullptr; }

    bool operator==(const T* glob) const { return get() == glob; }

    void reset() { *this = GlobRef(); }

private:
    std::shared_ptr<const bool> token_;
    T* glob_ = nullptr;
};

} // namespace oribund
