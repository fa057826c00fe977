#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Json.h"
#include "Kestro/Planner/MakePlan.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/RuleTree.h"

namespace Kestro::Planner {
namespace {

using Conf::StreamType;

/// A film with sound and a cover picture, as a probe finds it; no container takes its streams as they are.
MediaInfo Film() {
    MediaStream video{.index = 0, .type = StreamType::Video, .codec = "ffv1"};
    video.width = 1919;
    video.height = 1080;
    video.fps = {24000, 1001};
    MediaStream audio{.index = 1, .type = StreamType::Audio, .codec = "pcm_f32be"};
    audio.sampleRate = 96000;
    audio.layout = "5.1";
    audio.sampleFormat = "fltp";
    MediaStream cover{.index = 2, .type = StreamType::Video, .codec = "mjpeg", .width = 500, .height = 500};
    cover.isCover = true;
    MediaStream data{.index = 3, .type = {}, .codec = "bin_data"};
    return {.path = "film.mkv", .demuxer = "matroska,webm", .duration = 5400.5, .streams = {video, audio, cover, data}};
}

/// The plans of the film for every container that can have one with its defaults.
std::vector<Plan> PlansOfContainers() {
    std::vector<Plan> plans;
    for (const std::string& container : HelperNames(kFormats)) {
        try {
            plans.push_back(MakePlan(Film(), Preset::OfContainer(container)));
        } catch (const NotAcceptable&) {
            // Containers of subtitles, and of sound that no default brings in line.
        }
    }
    EXPECT_GT(plans.size(), 50U);
    return plans;
}

TEST(Plans, AreTheSameAfterAJourneyAsJson) {
    for (const Plan& plan : PlansOfContainers()) {
        SCOPED_TRACE(plan.container);
        const std::string text = ToJson(plan);
        const Plan arrived = PlanFromJson(text);
        EXPECT_EQ(ToJson(arrived), text);
        EXPECT_EQ(arrived.settings, plan.settings) << "types included";
        const CommandOptions options{.workFolder = "passes"};
        EXPECT_EQ(FfmpegCommands(arrived, "out", options), FfmpegCommands(plan, "out", options));
    }
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

/// The code with which reading the plan, or making commands of it, is refused.
ProblemCode RefusalOf(const std::string& text) {
    try {
        FfmpegCommands(PlanFromJson(text), "out");
        ADD_FAILURE() << "taken";
    } catch (const NotAcceptable& refused) {
        EXPECT_STRNE(refused.what(), "");
        return refused.Problems().front().code;
    }
    return {};
}

TEST(Plans, ThatAreDamagedOrHostileAreRefused) {
    const std::string good = ToJson(MakePlan(Film(), Preset::OfContainer("mp4")));
    const struct {
        std::string from;
        std::string to;
        ProblemCode code;
    } cases[] = {
        {"{", "", ProblemCode::InvalidJson},
        {R"("duration":5400.5)", R"("duration":"long")", ProblemCode::InvalidPlan},
        {R"("demuxer")", R"("demux")", ProblemCode::InvalidPlan},
        {R"("demuxer":")", R"("demuxer":"concat,)", ProblemCode::InvalidPlan},
        {R"("demuxer":")", R"("demuxer":"x11grab,)", ProblemCode::InvalidPlan},
        {R"("fps":"24000/1001")", R"("fps":"24000/0")", ProblemCode::InvalidPlan},
        {R"("fps":"24000/1001")", R"("fps":"1/1000000007")", ProblemCode::InvalidPlan},
        {R"("notes":[)", R"("notes":[)" + std::string(99, '[') + std::string(99, ']'), ProblemCode::InvalidPlan},
        {R"("inputStream":1)", R"("inputStream":3)", ProblemCode::InvalidPlan},
        {R"("container":"mp4")", R"("container":"nope")", ProblemCode::UnknownName},
        {R"("container":"mp4")", R"("container":"mov")", ProblemCode::InvalidPlan},
        {R"("Width":)", R"("Width":true,"W":)", ProblemCode::WrongType},
        {R"("SampleFmt":"fltp")", R"("SampleFmt":"s16,amovie=secret.wav")", ProblemCode::InvalidPlan},
        {R"("Scaler":")", R"("Scaler":"movie=secret.png,)", ProblemCode::InvalidPlan},
        {R"("Width":)", R"("Width":0,"BitsPerPixel":)", ProblemCode::InvalidPlan},
        {R"("AspectY":)", R"("AspectY":0,"BitsPerPixel":)", ProblemCode::InvalidPlan},
    };
    for (const auto& [from, to, code] : cases) {
        SCOPED_TRACE(to);
        EXPECT_EQ(RefusalOf(Replaced(good, from, to)), code);
    }
}

TEST(Presets, TellAllTheirProblemsAtOnce) {
    Preset preset = Preset::FromJson(
        R"({"Format":{"Container":"mp4","Nope":1},"Streams":[
            {"TypeId":"video","VideoCodec":{"CodecId":"h264","BitRate":"much","Threds":1}},
            {"TypeId":"sound"},{"TypeId":"audio","AudioCodec":{"CodecId":"acc"}}]})",
        "preset.json");
    preset.Set("Streams/0/VideoCodec/KeyInterval", "often").Set("Streams/9/x", "1");
    std::vector<std::pair<ProblemCode, std::string>> found;
    for (const Problem& problem : Check(preset)) {
        found.emplace_back(problem.code, problem.path);
        EXPECT_FALSE(problem.message.empty());
        EXPECT_FALSE(ProblemText(problem.code).empty());
    }
    EXPECT_THAT(found,
                ::testing::UnorderedElementsAre(std::pair(ProblemCode::UnknownSetting, "Format/Nope"),
                                                std::pair(ProblemCode::WrongType, "Streams/0/VideoCodec/KeyInterval"),
                                                std::pair(ProblemCode::NoSuchStream, "Streams/9"),
                                                std::pair(ProblemCode::WrongType, "Streams/0/VideoCodec/BitRate"),
                                                std::pair(ProblemCode::UnknownSetting, "Streams/0/VideoCodec/Threds"),
                                                std::pair(ProblemCode::UnknownName, "Streams/1/TypeId"),
                                                std::pair(ProblemCode::UnknownName, "")));
    EXPECT_THROW(MakePlan(Film(), preset), NotAcceptable);
}

/// Every path of every rule of every helper of a plan stands in its rule tree.
TEST(RuleTrees, HoldWhatRulesName) {
    std::size_t rules = 0;
    for (const Plan& plan : PlansOfContainers()) {
        for (std::size_t i = 0; i < plan.streams.size(); ++i) {
            const PlannedStream& stream = plan.streams[i];
            if (stream.isCopied) continue;
            const Core::Property tree = RuleTree(plan.FormatSettings(), plan.StreamSettings(i));
            Conf::ValidationRuleList list;
            FindHelper(kFormats, plan.container)->FillValidationRules(list);
            FindHelper(CodecsOf(stream.kind->type), stream.codecId)->FillValidationRules(list);
            for (const auto& [name, rule] : list) {
                const bool isOther = rule->GetFirstName().find(stream.kind->typeId) == std::string::npos &&
                                     rule->GetFirstName().find("Streams") != std::string::npos;
                if (isOther || tree.FindByPath(rule->GetFirstName()) == nullptr) continue;
                EXPECT_TRUE(rule->Validate(tree)) << plan.container << ": " << name;
                ++rules;
            }
        }
    }
    EXPECT_GT(rules, 100U);
}

TEST(Planner, MakesTheSamePlanOnManyThreads) {
    const std::string expected = ToJson(MakePlan(Film(), Preset::OfContainer("dvd")));
    std::vector<std::string> made(4);
    std::vector<std::thread> threads;
    for (std::string& text : made) {
        threads.emplace_back([&text] {
            for (int i = 0; i < 20; ++i) text = ToJson(MakePlan(Film(), Preset::OfContainer("dvd")));
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_THAT(made, ::testing::Each(expected));
}

}  // namespace
}  // namespace Kestro::Planner
