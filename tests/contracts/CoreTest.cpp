#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/FormatException.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/RefCounted.h"

#include "tests/Failure.h"

namespace Kestro {
namespace {

using Conf::ConfException;
using Conf::ConstraintException;
using Conf::HelperException;

constexpr boost::source_location kWhere("the/source", 42, "void TheFunction()");

template <class E, class Base>
void ExpectCaughtAs(const char* what) {
    const E exception = [&] {
        E made;
        made << TagDescription("the message") << TagDetails("the value");
        return made;
    }();
    try {
        Throw(exception, kWhere);
    } catch (const Base& e) {
        const Exception& base = e;
        EXPECT_STREQ(base.what(), "the message") << what;
        EXPECT_EQ(InfoOf<TagDetails>(base), "the value") << what;
        EXPECT_FALSE(InfoOf<TagCallStack>(base).value_or("").empty()) << what;
        EXPECT_EQ(PlaceOf(base), (Place{"the/source", 42})) << what;
        EXPECT_STREQ(InfoOf<boost::throw_function>(base).value_or(""), "void TheFunction()") << what;
    } catch (...) {
        ADD_FAILURE() << what << " is not caught as its base";
    }
}

TEST(Exceptions, AreCaughtAsTheirBasesWithAllThatTheyCarry) {
    ExpectCaughtAs<Core::PropertyException, Exception>("PropertyException");
    ExpectCaughtAs<ConfException, Exception>("ConfException");
    ExpectCaughtAs<HelperException, ConfException>("HelperException");
    ExpectCaughtAs<ConstraintException, ConfException>("ConstraintException");
    ExpectCaughtAs<Conf::ConstraintIsNotApplicableForTypeException, ConstraintException>("NotApplicable");
    ExpectCaughtAs<Conf::FormatException, Exception>("FormatException");
}

TEST(Exceptions, TagsOfOneClassAreApart) {
    HelperException exception;
    exception << HelperException::TagClassIsFound("type") << HelperException::TagTypeIsNotFound("name");
    const HelperException copy = exception;
    EXPECT_EQ(InfoOf<HelperException::TagClassIsFound>(copy), "type");
    EXPECT_EQ(InfoOf<HelperException::TagTypeIsNotFound>(copy), "name");
    EXPECT_EQ(InfoOf<HelperException::TagClassIsNotFound>(copy), std::nullopt);
    EXPECT_EQ(InfoOf<TagDescription>(copy), std::nullopt);
    EXPECT_STRNE(copy.what(), "");
}

#if defined(__GNUC__)
__attribute__((noinline))
#endif
std::string
CallStackBelow(int frames) {  // NOLINT(misc-no-recursion)
    std::string stack = frames > 0 ? CallStackBelow(frames - 1) : GetCallStack();
    stack.shrink_to_fit();  // nothing of the call may become a jump
    return stack;
}

TEST(CallStack, GrowsWithTheCallsUpTo64Frames) {
    const auto lines = [](const std::string& text) { return std::count(text.begin(), text.end(), '\n'); };
    const auto here = lines(CallStackBelow(0));
    EXPECT_GT(here, 1);
    EXPECT_EQ(lines(CallStackBelow(5)), here + 5);
    EXPECT_EQ(lines(CallStackBelow(200)), 64);
}

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
