#include <gtest/gtest.h>

#include <functional>

#include "Kestro/Conf/DataHelpers/ConstraintRange.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"
#include "Kestro/Conf/DataHelpers/FakeConstraintConsumer.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioFormatter.h"
#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/Preset.h"

#include "Allocations.h"
#include "tests/Helpers.h"

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::NodeOf;
using Core::Property;
using Core::TreeOf;

/// Gives what it found as a text.
using Action = std::function<std::string()>;

/// Lets every allocation of the action fail, one after the other: each time std::bad_alloc comes out of it or it gets
/// by without, nothing is left behind, and the next call is right.
void FailEach(const std::string& what, const Action& action) {
    SCOPED_TRACE(what);
    const std::string expected = action();
    bool hasFailed = true;
    for (int64_t n = 1; hasFailed; ++n) {
        const int64_t before = Allocations::Alive();
        {
            std::string found = expected;
            Allocations::FailAt(n);
            try {
                found = action();
            } catch (const std::bad_alloc&) {
                found = expected;
            }
            hasFailed = Allocations::StopFailing();
            ASSERT_EQ(found, expected) << "allocation " << n;
        }
        ASSERT_EQ(Allocations::Alive(), before) << "allocation " << n;
        if (n % 16 == 1) {
            ASSERT_EQ(action(), expected) << "after allocation " << n;
        }
    }
    ASSERT_EQ(action(), expected);
}

// The first test of the program: tables are made at the first call, as often as it fails.
TEST(Exhaustion, OfTheFirstCalls) {
    const auto call = [] {
        const std::string& id = IFormatCodecVideo::CODEC_ID_H264;
        const Property settings = CreateDataHelper(IPreset::KEY_FILTER_VIDEO_CODEC, id)->GetDefaultSettings();
        return settings["CodecId"].GetString() == id && FormatHasGlobalHeader("mp4") && IsSupported("mp4", settings);
    };
    int64_t alive = Allocations::Alive();
    int grown = 0;
    for (int64_t n = 1;; ++n) {
        bool isRight = false;
        Allocations::FailAt(n);
        try {
            isRight = call();
        } catch (const std::bad_alloc&) {
        }
        if (!Allocations::StopFailing()) {
            EXPECT_TRUE(isRight);
            break;
        }
        if (alive != Allocations::Alive()) ++grown;
        alive = Allocations::Alive();
    }
    EXPECT_LT(grown, 20) << "more than the tables that were made";
}

const std::string kLong = "a text that does not fit into a std::string itself";

Property LongTree() {
    Property tree = TreeOf("root{a{x=1,y=text},b=2,c,r=30000/1001}");
    tree["a"].SetChild(kLong, kLong);
    tree["c"] = kLong;
    return tree;
}

Property WideTree() {
    Property tree("wide");
    for (int i = 0; i < 50; ++i) tree.SetChild(kLong + std::to_string(i), i);
    return tree;
}

TEST(Exhaustion, OfOperationsOfTrees) {
    // On a tree that is there before, and is asked afterwards whether it is still one.
    const struct {
        const char* what;
        void (*change)(Property& tree);
    } rows[] = {
        {"make a child", [](Property& tree) { tree.SetChild(kLong + "2", kLong); }},
        {"replace a child", [](Property& tree) { tree.SetChild("a", kLong); }},
        {"copy into a child", [](Property& tree) { tree.SetChild(kLong, tree); }},
        {"move into a child", [](Property& tree) { tree.SetChild(kLong, std::move(tree["a"])); }},
        {"move a child of a long name out", [](Property& tree) { Property moved(std::move(tree["a"][kLong])); }},
        {"move what holds the target", [](Property& tree) { tree["a"] = std::move(tree); }},
        {"assign", [](Property& tree) { tree = LongTree(); }},
        {"assign a part", [](Property& tree) { tree = tree["a"]; }},
        {"assign a text", [](Property& tree) { tree["b"] = kLong; }},
        {"copy data", [](Property& tree) { tree["b"].CopyDataFrom(tree); }},
        {"remove", [](Property& tree) { tree.RemoveChild("a"); }},
    };
    for (const auto& [what, change] : rows) {
        FailEach(what, [change = change] {
            Property tree = LongTree();
            try {
                change(tree);
            } catch (const std::bad_alloc&) {
                // Whole: every child is found under its name, and the tree can be copied, changed and compared.
                for (const Property& child : tree) EXPECT_EQ(&tree[child.Name()], &child);
                EXPECT_TRUE(Property(tree) == tree);
                tree.SetChild("again", kLong);
                throw;
            }
            return Dump(tree);
        });
    }
}

TEST(Exhaustion, OfAWideTree) {
    FailEach("build, look up, remove", [] {
        Property tree = WideTree();
        const std::string name = kLong + "40";
        std::string found = PropertyValueToString(tree[name]) + PropertyValueToString(tree[41]);
        tree.RemoveChild(name);
        found += tree.ChildExists(name) ? "still there" : PropertyValueToString(tree.ChildByPath(kLong + "41"));
        return found + Dump(Property(tree));
    });
}

TEST(Exhaustion, OfReadingTrees) {
    FailEach("a failed read", [] {
        const Property tree = LongTree();
        try {
            return Dump(tree.ChildByPath("a/" + kLong + "/nope"));
        } catch (const Core::PropertyException& e) {
            return std::string(e.what());
        }
    });
}

TEST(Exhaustion, OfFactories) {
    const auto describe = [](const boost::intrusive_ptr<IPropertyConstraint>& constraint) {
        return CallLog::Of(*constraint) + constraint->GetDescription("Setting");
    };
    const ConstraintSet::Named<std::string> texts{{kLong, kLong}, {"b", "b"}};
    const ConstraintSet::Named<int64_t> numbers{{kLong, 1}, {"b", 2}};
    FailEach("range", [&] { return describe(ConstraintRange::Create(int64_t{1}, int64_t{9}, int64_t{2})); });
    FailEach("texts", [&] { return describe(ConstraintSet::Create(texts)); });
    FailEach("numbers", [&] { return describe(ConstraintSet::Create(numbers)); });
    FailEach("consumer", [&] {
        const auto consumer = FakeConstraintConsumer::Create();
        ConstraintSet::Create(texts)->FillValueList(consumer);
        return Dump(consumer->GetResult());
    });
    FailEach("rule", [&] {
        const auto set = ConstraintSet::Create(texts);
        const auto rule = PairValidationRule::Create(kLong, set, kLong, set);
        return rule->GetFirstName() + (rule->Validate(NodeOf("", {{kLong, "b"}})) ? "holds" : "");
    });
    FailEach("filter", [] { return Dump(DataHelperAudioFormatter::Create()->GetDefaultSettings()); });
    FailEach("descriptions", [] {
        Property node = LongTree();
        node.SetChild("CodecId", "h264");
        node.SetChild("CodecTag", 0);
        node.SetChild("Container", "mp4");
        return std::string(CodecIsSupported(IFormatFile::Create(node), IFormatCodecVideo::Create(node)) &&
                                   !CodecIsSupported(IFormatFile::Create(node), IFormatCodecSubtitle::Create(node))
                               ? "supported"
                               : "");
    });
    FailEach("an unknown helper", [] {
        try {
            return Dump(CreateDataHelper(IPreset::KEY_FORMAT, kLong)->GetDefaultSettings());
        } catch (const HelperException& e) {
            return std::string(e.what());
        }
    });
}

TEST(Exhaustion, OfEveryHelpersOperations) {
    for (const auto& [type, name] : AllKeys()) {
        FailEach(type + " " + name, [&, &type = type, &name = name] {
            const Subject subject(name.empty() ? CreateDataHelper(type, name) : CreateDataHelperAuto(type, name));
            std::string text = Dump(subject.helper->GetDefaultSettings());
            for (const auto& [key, constraint] : subject.constraints) text += key;
            for (const auto& [key, rule] : subject.rules) text += key + rule->GetSecondName();
            for (const auto& [filter, implementation] : subject.filters) text += filter;
            return text + subject.MakesOfItsDefaults();
        });
    }
}

TEST(Exhaustion, OfPlanning) {
    Planner::MediaStream video{.index = 0, .type = StreamType::Video, .codec = "mpeg2video", .width = 721};
    video.height = 576;
    video.fps = 25;
    Planner::MediaStream audio{.index = 1, .type = StreamType::Audio, .codec = "ac3", .sampleRate = 48000};
    audio.layout = "5.1(side)";
    audio.sampleFormat = "fltp";
    const Planner::MediaInfo film{.path = "film.vob", .demuxer = "mpeg", .duration = 60, .streams = {video, audio}};
    for (const char* bitrate : {"128000", "many"}) {
        FailEach(bitrate, [&] {
            Planner::Preset preset = Planner::Preset::OfContainer("matroska");
            preset.Set("Streams/1/AudioCodec/BitRate", bitrate);
            std::string text;
            try {
                for (const auto& command : FfmpegCommands(MakePlan(film, preset), "out.mkv")) {
                    for (const std::string& argument : command) text += argument + " ";
                }
            } catch (const Planner::NotAcceptable& e) {
                text += e.what();
            }
            return text;
        });
    }
}

}  // namespace
}  // namespace Kestro::Conf
