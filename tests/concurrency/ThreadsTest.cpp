#include <functional>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Conf/HelperException.h"

#include "tests/Failure.h"
#include "tests/Helpers.h"

// Run under the thread sanitizer, which finds what chance does not.

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::Property;

constexpr int kThreads = 4;

/// Runs the work on all threads at once, first use included; what all of them return.
std::string OnAllThreads(const std::function<std::string()>& work) {
    std::vector<std::string> results(kThreads);
    std::latch start(kThreads);
    std::vector<std::thread> threads;
    for (std::string& result : results) {
        threads.emplace_back([&] {
            start.arrive_and_wait();
            result = work();
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const std::string& result : results) EXPECT_EQ(result, results.front());
    return results.front();
}

/// Every answer of a helper, what its constraints make of values, and what it makes of its own preset.
std::string Use(const Key& key) {
    Subject subject(key.first, key.second);
    std::string text = subject.Answers();
    for (const auto& [path, rule] : subject.rules)
        subject.constraints.emplace(rule->GetSecondName(), rule->GetSecondConstraint());
    for (const auto& [path, constraint] : subject.constraints) {
        for (Property value : {Property("", "nope"), Property("", 12345), Property("", 0.5)})
            text += constraint->CorrectValue(value) ? Dump(value) : " no ";
    }
    return text + subject.MakesOfItsDefaults();
}

TEST(Threads, ShareTheWholeRegistry) {
    const std::string text = OnAllThreads([] {
        std::string answers;
        for (const Key& key : AllKeys()) answers += Use(key);
        return answers + (FormatHasGlobalHeader("mp4") && CodecHasGlobalHeader("aac") ? "headers" : "");
    });
    EXPECT_TRUE(text.ends_with("headers"));
    for (const auto& [type, name] : AllKeys()) EXPECT_EQ(CreateDataHelper(type, name)->GetRefCount(), 2) << name;
}

TEST(Threads, DropHandlesOfOthers) {
    struct Handles {
        boost::intrusive_ptr<const IDataHelper> helper;
        boost::intrusive_ptr<IPropertyConstraint> constraint;
        boost::intrusive_ptr<IValidationRule> rule;
    };
    const auto helper = CreateDataHelper(IPreset::KEY_FORMAT, IFormatFile::FORMAT_MP4);
    const int32_t before = helper->GetRefCount();
    for (int round = 0; round < 50; ++round) {
        // Made here, shared by all, and dropped wherever the last thread ends.
        const auto range = ConstraintRange::Create(int64_t{0}, int64_t{200}, int64_t{0});
        const auto rule = PairValidationRule::Create("", range, "", range);
        std::vector<Handles> shared(20, {helper, ConstraintSet::Create(ConstraintSet::Named<int64_t>{{"1", 1}}), rule});
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([mine = shared]() mutable {
                for (const Handles& handles : mine) {
                    EXPECT_TRUE(handles.constraint->IsValid({"", 1}));
                    EXPECT_TRUE(handles.rule->Validate({"", 100}));
                }
                mine.clear();
            });
        }
        shared.clear();
        for (std::thread& thread : threads) thread.join();
        threads.clear();
        EXPECT_EQ(rule->GetRefCount(), 1);
        EXPECT_EQ(range->GetRefCount(), 3);
    }
    EXPECT_EQ(helper->GetRefCount(), before);
}

TEST(Threads, FailEachForItself) {
    const auto set = ConstraintSet::Create(ConstraintSet::Named<int64_t>{{"one", 1}});
    OnAllThreads([&] {
        for (int i = 0; i < 100; ++i) {
            const std::string name = "name " + std::to_string(i);
            ExpectFailure<HelperException>(
                [&] { CreateDataHelper(IPreset::KEY_FORMAT, name); },
                [&](const Exception& e) { EXPECT_EQ(InfoOf<HelperException::TagTypeIsNotFound>(e), name); });
            ExpectFailure<ConstraintIsNotApplicableForTypeException>(
                [&] { set->IsValid(Property("", "text")); },
                [](const Exception& e) { EXPECT_EQ(PlaceOf(e).line, 69); });
        }
        return set->GetDescription("BitRate");
    });
}

}  // namespace
}  // namespace Kestro::Conf
