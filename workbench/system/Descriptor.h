#pragma once

#include <unistd.h>

#include <utility>

namespace workbench
{

/** An open file of the system's, closed at the end of a block. */
class Descriptor
{
public:
    /** A negative number stands for none. */
    explicit Descriptor(int opened = -1)
        : number_(opened)
    {
    }

    ~Descriptor() { close(); }

    Descriptor(Descriptor&& other) noexcept
        : number_(std::exchange(other.number_, -1))
    {
    }

    Descriptor& operator=(Descriptor&& other) noexcept
    {
        if (this != &other) {
            close();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }

    explicit operator bool() const { return number_ >= 0; }

    int number() const { return number_; }

    void close()
    {
        if (number_ >= 0)
            ::close(std::exchange(number_, -1));
    }

private:
    int number_;
};

} // namespace workbench
