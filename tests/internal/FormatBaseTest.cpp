#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/Formats/DataHelperFormatF4a.h"
#include "Kestro/Conf/DataHelpers/FormatSheet.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyException.h"

#include "tests/CallLog.h"
#include "tests/Failure.h"
#include "tests/Trees.h"

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::Property;
using Core::TreeOf;

class TestFormat final : public DataHelperFormatBase {
public:
    explicit TestFormat(const FormatSheet& sheet) : DataHelperFormatBase(sheet, "box") {}
    using DataHelperFormatBase::SetCodecConstraint;
};

constexpr Text kVideo[] = {IFormatCodecVideo::CODEC_ID_H264, IFormatCodecVideo::CODEC_ID_MPEG2VIDEO};
constexpr Text kAudio[] = {IFormatCodecAudio::CODEC_ID_MP3, IFormatCodecAudio::CODEC_ID_AAC};
constexpr Text kH264[] = {kVideo[0]};
constexpr Text kMp3[] = {kAudio[0]};
constexpr FrameRate kRates[] = {FrameRates::kFilm, FrameRates::kPal, FrameRates::kNtsc};
constexpr Text kProfiles[] = {IFormatCodecVideo::TAG_X264_PROFILE_BASELINE};
constexpr int64_t kSampleRates[] = {44'100, 48'000};
constexpr ChannelLayout kLayouts[] = {ChannelLayout::Mono, ChannelLayout::Stereo};
constexpr SettingRow kSettings[] = {{.tag = IFormatFile::TAG_PSP_MODE, .initial = false}};
constexpr StreamRow kStreams[] = {
    {.type = StreamType::Audio, .codecs = kAudio, .defaultCodec = kAudio[1]},
    {.type = StreamType::Video, .codecs = kVideo, .defaultCodec = kVideo[1], .isCover = true},
};
constexpr FormatRuleRow kRules[] = {
    {.type = StreamType::Video, .tag = IFormatCodecVideo::TAG_FPS, .node = Node::FrameRate, .allowed = Rates{kRates}},
    {.type = StreamType::Video, .tag = IFormatCodecVideo::TAG_COVER_FLAG, .node = Node::Own, .allowed = Flag{true}},
    {.type = StreamType::Video,
     .codecs = kH264,
     .tag = IFormatCodec::TAG_PROFILE,
     .node = Node::Options,
     .allowed = Texts{kProfiles}},
    {.type = StreamType::Audio,
     .codecs = kMp3,
     .tag = IFormatCodecAudio::TAG_SAMPLE_RATE,
     .node = Node::Resampler,
     .allowed = Integers{kSampleRates}},
    {.type = StreamType::Audio,
     .tag = IFormatCodecAudio::TAG_LAYOUT,
     .node = Node::Resampler,
     .allowed = Layouts{kLayouts}},
};
constexpr FormatSheet kSheet{.container = IFormatFile::FORMAT_MOV,
                             .settings = kSettings,
                             .limits = {.video = 1, .audio = 2, .subtitle = 0, .other = 4},
                             .streams = kStreams,
                             .rules = kRules};
static_assert(IsSound(kSheet));

boost::intrusive_ptr<const TestFormat> Box() { return new TestFormat(kSheet); }

TEST(FormatBase, SheetsBecomeSettingsConstraintsAndRules) {
    const auto box = Box();
    EXPECT_EQ(
        Dump(box->GetDefaultSettings()),
        "Format{Container=box,PspMode=false,Limits{MaxVideo=1,MaxAudio=2,MaxSubtitle=0,MaxOther=4},"
        "Streams{0{TypeId=audio,AudioCodec{CodecId=aac}},1{TypeId=video,VideoCodec{CodecId=mpeg2video,Cover=true}}"
        "}}");
    std::string text;
    ConstraintMap constraints;
    box->FillConstraints(constraints);
    for (const auto& [key, constraint] : constraints) text += key + ": " + CallLog::Of(*constraint) + "\n";
    EXPECT_EQ(text,
              "Streams/TypeId=audio/AudioCodec/CodecId: mp3=mp3, aac=aac, end\n"
              "Streams/TypeId=video/VideoCodec/CodecId: h264=h264, mpeg2video=mpeg2video, end\n");
    text.clear();
    ValidationRuleList rules;
    box->FillValidationRules(rules);
    for (const auto& [path, rule] : rules) {
        text += path + " " + CallLog::Of(*rule->GetFirstConstraint()) + " -> " + rule->GetSecondName() + "\n";
        const bool isAudio = rule->GetSecondName().starts_with("Audio");
        EXPECT_EQ(rule->GetFirstName(),
                  isAudio ? "Streams/TypeId=audio/AudioCodec/CodecId" : "Streams/TypeId=video/VideoCodec/CodecId");
    }
    EXPECT_EQ(text,
              "/ h264=h264, mpeg2video=mpeg2video, end -> VideoFrameRate/Fps\n"
              "/ h264=h264, mpeg2video=mpeg2video, end -> VideoCodec/Cover\n"
              "/ h264=h264, end -> VideoCodec/EncodeOptions/Profile\n"
              "/ mp3=mp3, end -> AudioResample/Resampler/SampleRate\n"
              "/ mp3=mp3, aac=aac, end -> AudioResample/Resampler/Layout\n");
}

std::string Corrected(const IDataHelper& helper, const char* codec) {
    Property node = TreeOf(codec);
    helper.CorrectFormatCodec(node);
    return Dump(node);
}

TEST(FormatBase, CodecNodesAreHeldToTheRules) {
    const std::pair<const char*, const char*> rows[] = {
        {"CodecVideo{CodecId=mpeg2video,Fps=30/1,Cover=true}",
         "CodecVideo{CodecId=mpeg2video,Fps=30000/1001,Cover=true}"},
        {"CodecVideo{CodecId=mpeg2video,Fps='24'}", "CodecVideo{CodecId=mpeg2video,Fps=24}"},
        {"CodecVideo{CodecId=h264,EncodeOptions{Profile=high}}",
         "CodecVideo{CodecId=h264,EncodeOptions{Profile=baseline}}"},
        {"CodecAudio{CodecId=mp3,SampleRate=96000,Layout=5.1(side)}",
         "CodecAudio{CodecId=mp3,SampleRate=48000,Layout=stereo}"},
        {"CodecAudio{CodecId=aac,SampleRate=96000,Layout=quad}",
         "CodecAudio{CodecId=aac,SampleRate=96000,Layout=stereo}"},
    };
    for (const auto& [codec, corrected] : rows) EXPECT_EQ(Corrected(*Box(), codec), corrected);
    for (const char* kept :
         {"CodecVideo{CodecId=mpeg2video,EncodeOptions{Profile=high}}",
          "CodecVideo{CodecId=h264,EncodeOptions,Profile=high,SampleRate=1}",
          "CodecVideo{CodecId=vp9,Fps=30/1,Cover=false}", "CodecAudio{CodecId=aac,Fps=30/1}", "CodecAudio",
          "AudioCodec{CodecId=mp3,SampleRate=96000}", "codecvideo{CodecId=mpeg2video,Fps=30/1}"}) {
        EXPECT_EQ(Corrected(*Box(), kept), kept);
    }
    const auto mp4 = CreateDataHelper(IPreset::KEY_FORMAT, IFormatFile::FORMAT_MP4);
    EXPECT_EQ(Corrected(*mp4, "CodecAudio{CodecId=mp3,SampleRate=96000}"), "CodecAudio{CodecId=mp3,SampleRate=48000}");
    EXPECT_EQ(Corrected(*mp4, "CodecAudio{CodecId=aac,SampleRate=96000}"), "CodecAudio{CodecId=aac,SampleRate=96000}");
}

TEST(FormatBase, WhatCannotBeCorrectedIsNamed) {
    const struct {
        const char* codec;
        const char* message;
        const char* value;
    } rows[] = {
        {"CodecVideo{CodecId=h264,Cover=false}", "Can't fix value [Cover] = false for container [box]", "false"},
        {"CodecVideo{CodecId=h264,Fps='24.5'}", "Can't fix value [Fps] = 24.5 for container [box]", "24.5"},
        {"CodecAudio{CodecId=aac,Layout=unknown}", "Can't fix value [Layout] = unknown for container [box]", "unknown"},
    };
    for (const auto& row : rows) {
        Property codec = TreeOf(row.codec);
        ExpectFailure<HelperException>([&] { Box()->CorrectFormatCodec(codec); },
                                       [&](const Exception& e) {
                                           EXPECT_STREQ(e.what(), row.message);
                                           EXPECT_EQ(InfoOf<TagDetails>(e), row.value);
                                           EXPECT_EQ(PlaceOf(e).file, "Kestro/Conf/DataHelpers/DataHelperFormatBase");
                                       });
        EXPECT_EQ(codec, TreeOf(row.codec));
    }
    EXPECT_THROW(Corrected(*Box(), "CodecVideo{Fps=25/1}"), Core::PropertyException) << "no codec id";
    EXPECT_THROW(Corrected(*Box(), "CodecVideo{CodecId=h264,Fps=fast}"), Core::PropertyException);
    EXPECT_THROW(Corrected(*Box(), "CodecVideo{CodecId=1,Fps=25/1}"), ConstraintException);
    EXPECT_THROW(Corrected(*Box(), "CodecAudio{CodecId=mp3,SampleRate='44100'}"), ConstraintException);
}

TEST(FormatBase, CodecsOfStreamsThatAreNotCarried) {
    static constexpr FormatSheet kAudioOnly{.container = IFormatFile::FORMAT_MP3,
                                            .settings = {},
                                            .limits = {.video = 0, .audio = 1, .subtitle = 0, .other = 0},
                                            .streams = std::span(kStreams).first(1)};
    const boost::intrusive_ptr<const TestFormat> audio = new TestFormat(kAudioOnly);
    EXPECT_EQ(audio->DefaultAudioCodec(), "aac");
    EXPECT_EQ(CallLog::Of(*audio->AudioCodecsConstraint()), "mp3=mp3, aac=aac, end");
    EXPECT_EQ(audio->AudioCodecsConstraint(), audio->AudioCodecsConstraint());
    const std::string video = "Video codecs constraint is not set";
    const std::string subtitle = "Subtitle codecs constraint is not set";
    ExpectMessage<HelperException>([&] { audio->VideoCodecsConstraint(); }, video);
    ExpectMessage<HelperException>([&] { audio->DefaultVideoCodec(); }, video);
    ExpectMessage<HelperException>([&] { audio->SubtitleTextCodecsConstraint(); }, subtitle);
    ExpectMessage<HelperException>([&] { audio->DefaultSubtitleTextCodec(); }, subtitle);
    static constexpr FormatSheet kNothing{
        .container = IFormatFile::FORMAT_SRT, .settings = {}, .limits = {}, .streams = {}};
    const boost::intrusive_ptr<const TestFormat> nothing = new TestFormat(kNothing);
    ExpectMessage<HelperException>([&] { nothing->DefaultAudioCodec(); }, "Audio codecs constraint is not set");
}

TEST(FormatBase, ListsOfCodecsHoldTheirDefault) {
    const auto codecs = TestFormat::SetCodecConstraint({"a", "b", "c"}, "b");
    EXPECT_EQ(CallLog::Of(*codecs), "a=a, b=b, c=c, end");
    EXPECT_EQ(codecs->GetDefaultValue().GetString(), "b");
    const auto refuse = [](const std::vector<std::string>& list, const char* choice, const char* message, int line) {
        ExpectFailure<HelperException>(
            [&] { TestFormat::SetCodecConstraint(list, choice); },
            [&](const Exception& e) {
                EXPECT_STREQ(e.what(), message);
                EXPECT_EQ(PlaceOf(e), (Place{"Kestro/Conf/DataHelpers/DataHelperFormatBase", line}));
            });
    };
    refuse({}, "a", "List of available codecs is empty", 202);
    refuse({}, "", "List of available codecs is empty", 202);
    refuse({"a", "b"}, "B", "Default codecB is not presented in list of avalible codecs", 207);
    refuse({"a"}, "", "Default codec is not presented in list of avalible codecs", 207);
}

TEST(FormatBase, F4aStaysOutOfTheRegistry) {
    const boost::intrusive_ptr<const DataHelperFormatF4a> f4a = new DataHelperFormatF4a();
    EXPECT_EQ(f4a->DefaultAudioCodec(), "aac");
    EXPECT_THROW(f4a->VideoCodecsConstraint(), HelperException);
    Property codec = TreeOf("CodecAudio{CodecId=mp3,SampleRate=48000}");
    f4a->CorrectFormatCodec(codec);
    EXPECT_EQ(Dump(codec), "CodecAudio{CodecId=mp3,SampleRate=44100}");
    const auto registered = CreateDataHelper(IPreset::KEY_FORMAT, IFormatFile::FORMAT_F4A);
    EXPECT_EQ(dynamic_cast<const DataHelperFormatF4a*>(registered.get()), nullptr);
}

}  // namespace
}  // namespace Kestro::Conf
