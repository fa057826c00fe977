#include <gtest/gtest.h>

#include <functional>
#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"

#include "tests/CallLog.h"
#include "tests/Failure.h"

// Run under the thread sanitizer, which finds what chance does not.

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::NodeOf;
using Core::Property;

constexpr int kThreads = 4;

/// Runs the work on all threads at once, first use included; what each returns.
std::vector<std::string> OnAllThreads(const std::function<std::string()>& work) {
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
    return results;
}

/// Every answer of a helper, and what it makes of a preset with those values.
std::string Use(const IDataHelper& helper, const Property& settings) {
    std::string text = Dump(helper.GetDefaultSettings());
    ConstraintMap constraints;
    helper.FillConstraints(constraints);
    ValidationRuleList rules;
    helper.FillValidationRules(rules);
    for (const auto& [path, rule] : rules) constraints.emplace(rule->GetSecondName(), rule->GetSecondConstraint());
    for (const auto& [key, constraint] : constraints) {
        text += key + CallLog::Of(*constraint) + constraint->GetDescription(key);
        for (Property value : {Property("", "nope"), Property("", 12345), Property("", 0.5)}) {
            text += constraint->CorrectValue(value) ? Dump(value) : " no ";
        }
    }
    Property node = settings;
    try {
        helper.ApplyPresetSettings(helper.GetDefaultSettings(), node);
        helper.CorrectFormatCodec(node);
    } catch (const Exception& e) {
        text += e.what();
    }
    return text + Dump(node);
}

TEST(Threads, ShareTheWholeRegistry) {
    const std::string types[] = {IPreset::KEY_FORMAT, IPreset::KEY_FILTER_AUDIO_CODEC, IPreset::KEY_FILTER_VIDEO_CODEC};
    const Property source = NodeOf("CodecVideo", {{"Width", 640},
                                                  {"Height", 480},
                                                  {"Fps", Property::Ratio(25)},
                                                  {"SampleRate", 8000},
                                                  {"Layout", "mono"},
                                                  {"SampleFmt", "s16"}});
    const auto results = OnAllThreads([&] {
        std::string text;
        for (const std::string& type : types) {
            for (const auto& [name, helper] : GetAvailableDataHelpers(type)) {
                text += Use(*CreateDataHelper(type, name), source);
            }
        }
        return text + (FormatHasGlobalHeader("mp4") ? "header" : "") + (CodecHasGlobalHeader("aac") ? "header" : "");
    });
    for (const std::string& result : results) EXPECT_EQ(result, results.front());
    EXPECT_GT(results.front().size(), 1000U);
    for (const std::string& type : types) {
        for (const auto& [name, helper] : GetAvailableDataHelpers(type)) EXPECT_EQ(helper->GetRefCount(), 1) << name;
    }
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
        std::vector<Handles> shared(
            20, {helper, ConstraintSet::Create(PropertyTypes::Int64, NodeOf("", {{"1", 1}})), rule});
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
    const auto results = OnAllThreads([&] {
        for (int i = 0; i < 100; ++i) {
            const std::string name = "name " + std::to_string(i);
            ExpectFailure<HelperException>(
                [&] { CreateDataHelper(IPreset::KEY_FORMAT, name); },
                [&](const Exception& e) { EXPECT_EQ(InfoOf<HelperException::TagTypeIsNotFound>(e), name); });
            ExpectFailure<ConstraintIsNotApplicableForTypeException>(
                [&] {
                    set->IsValid({"", "text"});
                },
                [](const Exception& e) { EXPECT_EQ(PlaceOf(e).line, 69); });
        }
        return set->GetDescription("BitRate");
    });
    for (const std::string& result : results) EXPECT_EQ(result, results.front());
}

}  // namespace
}  // namespace Kestro::Conf
