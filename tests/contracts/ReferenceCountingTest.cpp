#include <gtest/gtest.h>

#include <atomic>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <latch>
#include <thread>
#include <vector>

#include "Kestro/RefCounted.h"

namespace Kestro {
namespace {

class Counted final : public RefCounted<IRefCountable> {
public:
    explicit Counted(std::atomic<int>& destroyed) : destroyed_(destroyed) {}
    ~Counted() override { ++destroyed_; }

private:
    std::atomic<int>& destroyed_;
};

TEST(ReferenceCounting, OperationsReturnTheNewCount) {
    std::atomic<int> destroyed = 0;
    const IRefCountable* object = new Counted(destroyed);
    EXPECT_EQ(object->GetRefCount(), 0);
    EXPECT_EQ(object->AddRef(), 1);
    EXPECT_EQ(object->AddRef(), 2);
    EXPECT_EQ(object->Release(), 1);
    EXPECT_EQ(object->GetRefCount(), 1);
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(object->Release(), 0);
    EXPECT_EQ(destroyed, 1);
}

TEST(ReferenceCounting, TheLastHandleOfAnyThreadDestroys) {
    constexpr int kThreads = 4;
    std::atomic<int> destroyed = 0;
    boost::intrusive_ptr<const IRefCountable> object = new Counted(destroyed);
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([handle = object, &start] {
            start.arrive_and_wait();
            for (int round = 0; round < 100'000; ++round) {
                const auto copy = handle;
                const boost::intrusive_ptr<const IRefCountable> another(copy.get());
            }
        });
    }
    object.reset();
    for (std::thread& thread : threads) thread.join();
    threads.clear();
    EXPECT_EQ(destroyed, 1);
}

}  // namespace
}  // namespace Kestro
