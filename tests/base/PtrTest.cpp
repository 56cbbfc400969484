#include "oribund/host/base/Kt.h"
#include "oribund/host/base/iVirtual.h"

#include <gtest/gtest.h>

#include <latch>
#include <thread>
#include <utility>
#include <vector>

using namespace oribund;

namespace
{

class Shape : public Kt::InternalRefCount, public iVirtual
{
public:
    explicit Shape(int* destroyed)
        : destroyed_(destroyed)
    {
    }

    Shape(const Shape&) = default;

    ~Shape() override { ++*destroyed_; }

private:
    int* destroyed_;
};

class Circle : public Shape
{
public:
    using Shape::Shape;
};

} // namespace

TEST(Ptr, DestroysWithTheLastOne)
{
    int destroyed = 0;
    Kt::Ptr<Shape> a = Kt::makePtr<Circle>(&destroyed);
    Kt::Ptr<Shape> b(a.get()); // wrapping the raw pointer again shares
    EXPECT_EQ(a->refCount(), 2);
    a = nullptr;
    EXPECT_EQ(destroyed, 0);
    Kt::Ptr<Shape> c = std::move(b);
    EXPECT_FALSE(b); // NOLINT: what a move leaves is part of the contract
    EXPECT_EQ(c->refCount(), 1);
    c = *&c;
    EXPECT_EQ(destroyed, 0);
    c.reset(c.get());
    EXPECT_EQ(destroyed, 0);
    c.reset();
    EXPECT_EQ(destroyed, 1);
}

TEST(Ptr, CopiedObjectsCountForThemselves)
{
    int destroyed = 0;
    const auto a = Kt::makePtr<Shape>(&destroyed);
    auto b = Kt::makePtr<Shape>(*a);
    *b = *a;
    EXPECT_EQ(b->refCount(), 1);
    EXPECT_EQ(a->refCount(), 1);
}

TEST(Ptr, DynamicCastSharesOrYieldsNull)
{
    int destroyed = 0;
    const Kt::Ptr<Shape> circle = Kt::makePtr<Circle>(&destroyed);
    EXPECT_EQ(Kt::dynamicCast<Circle>(circle), circle);
    EXPECT_EQ(circle->refCount(), 1);
    EXPECT_FALSE(Kt::dynamicCast<Circle>(Kt::makePtr<Shape>(&destroyed)));
    EXPECT_FALSE(Kt::dynamicCast<Circle>(Kt::Ptr<Shape>()));
}

TEST(Ptr, IsCountedRightByManyThreads)
{
    int destroyed = 0;
    auto shared = Kt::makePtr<Shape>(&destroyed);
    std::vector<std::thread> threads;
    std::latch ready(4);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([mine = shared, &ready] {
            ready.arrive_and_wait();
            for (int i = 0; i < 500000; ++i)
                const Kt::Ptr<Shape> copy = mine;
        });
    }
    shared.reset(); // the threads alone keep it
    for (std::thread& thread : threads)
        thread.join();
    threads.clear();
    EXPECT_EQ(destroyed, 1);
}
