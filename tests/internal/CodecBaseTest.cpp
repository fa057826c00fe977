#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/DataHelpers/CodecSheet.h"
#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/VideoCodecs/DataHelperVideoCodecWmv3.h"
#include "Kestro/Conf/GetDefaultVideoBitrate.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyException.h"

#include "tests/CallLog.h"
#include "tests/Failure.h"

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::Property;
using Core::PropertyException;
using Core::TreeOf;

class TestCodec final : public DataHelperCodecFFMPEG {
public:
    explicit TestCodec(const CodecSheet& sheet) : DataHelperCodecFFMPEG(sheet) {}
    TestCodec(const CodecSheet& sheet, const std::string& id) : DataHelperCodecFFMPEG(sheet, id) {}
};

boost::intrusive_ptr<const IDataHelper> Audio(const std::string& id) {
    return CreateDataHelper(IPreset::KEY_FILTER_AUDIO_CODEC, id);
}
boost::intrusive_ptr<const IDataHelper> H264() {
    return CreateDataHelper(IPreset::KEY_FILTER_VIDEO_CODEC, IFormatCodecVideo::CODEC_ID_H264);
}

Property Applied(const IDataHelper& helper, const Property& preset, Property settings) {
    helper.ApplyPresetSettings(preset, settings);
    return settings;
}
std::string Corrected(const IDataHelper& helper, const char* settings) {
    Property node = TreeOf(settings);
    helper.CorrectFormatCodec(node);
    return Dump(node);
}

void ExpectRefused(const std::function<void()>& action, const std::string& message, const char* details = "") {
    ExpectFailure<HelperException>(action, [&](const Exception& e) {
        EXPECT_EQ(e.what(), message);
        EXPECT_EQ(InfoOf<TagDetails>(e).value_or(""), details);
        EXPECT_EQ(PlaceOf(e).file, "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG");
    });
}

TEST(CodecBase, AudioPresets) {
    const auto aac = Audio("aac");
    const Property target = TreeOf("s{SampleRate=48000,BitRate=7}");
    const std::pair<const char*, const char*> rows[] = {
        {"p{CodecId=aac,RateControl=cbr,BitRate=96000,Quality=5}",
         "s{SampleRate=48000,BitRate=96000,CodecId=aac,RateControl=cbr,EncodeOptions{Profile=aac_low}}"},
        {"p{CodecId=aac,RateControl=vbr,BitRate=96000,Quality=5,EncodeOptions}",
         "s{SampleRate=48000,BitRate=7,CodecId=aac,RateControl=vbr,Quality=5,EncodeOptions{Profile=aac_low}}"},
        {"p{CodecId=aac,RateControl=cbr_auto,BitRate=96000,EncodeOptions{Mine=1}}",
         "s{SampleRate=48000,BitRate=7,CodecId=aac,RateControl=cbr,EncodeOptions{Mine=1}}"},
    };
    for (const auto& [preset, expected] : rows) EXPECT_EQ(Dump(Applied(*aac, TreeOf(preset), target)), expected);

    const auto apply = [&](const char* preset) { return [&, preset] { Applied(*aac, TreeOf(preset), target); }; };
    ExpectRefused(apply("p{CodecId=mp3}"), "Incompatible preset codec id: mp3, required aac", "mp3");
    ExpectRefused(apply("p{CodecId=aac,RateControl=abr}"), "Unknown bitrate mode", "abr");
    for (const char* lacking : {"p", "p{CodecId=aac}", "p{CodecId=aac,RateControl=cbr,Quality=1}", "p{CodecId=1}",
                                "p{CodecId=aac,RateControl=vbr,BitRate=1}", "p{CodecId=aac,RateControl=1}"}) {
        EXPECT_THROW(apply(lacking)(), PropertyException) << lacking;
    }
}

TEST(CodecBase, VideoPresets) {
    const auto h264 = H264();
    const Property source = TreeOf("s{Width=1280,Height=720,Fps=25/1}");
    const auto bitrate = [](double fps, int quality) {
        return ",BitRate=" + std::to_string(GetDefaultVideoBitrate("h264", 1280, 720, fps, quality)) + "}";
    };
    const struct {
        std::string preset, expected;
    } rows[] = {
        {"p{RateControl=cbr,BitRate=123456}", "s{RateControl=cbr,BitRate=123456,Fps=25/1,BitsPerPixel=0,Cover=false}"},
        {"p{RateControl=cbr,BitRate=123456,Fps=0/1,Cover=false}", "s{Fps=25/1,Cover=false}"},
        {"p{RateControl=cbr_auto,BitRate=1,Fps='30000/1001'}",
         "s{RateControl=cbr,Fps=30000/1001" + bitrate(29.97003, -1)},
        {"p{RateControl=cbr_auto}", "s{RateControl=cbr" + bitrate(25, -1)},
        {"p{RateControl=vbr,BitRate=1,Quality=80}", "s{RateControl=vbr,Quality=80" + bitrate(25, 80)},
        {"p{RateControl=vbr,BitRate=1,Quality=80,EncodeOptions{ApprovedVbrOnly=true}}",
         "s{BitRate=1,EncodeOptions{ApprovedVbrOnly=true}}"},
        {"p{RateControl=vbr,BitRate=1,Quality=80,EncodeOptions{ApprovedVbrOnly=false}}",
         "s{Quality=80" + bitrate(25, 80)},
        {"p{RateControl=vbr,Quality=80,EncodeOptions{ApprovedVbrOnly=true}}", "s{Quality=80" + bitrate(25, 80)},
        {"p{RateControl=vbr,Quality=9223372036854775807}", "s{RateControl=vbr" + bitrate(25, 100)},
        {"p{RateControl=vbr,Quality=-9223372036854775808}", "s{RateControl=vbr" + bitrate(25, -1)},
        {"p{RateControl=cbr_auto,KeyInterval='50',MaxBFrames=3,Threads=2,UseAllCores=1,Multipass=two-pass,BitsPerPixel="
         "24,"
         "Cover=true}",
         "s{KeyInterval=50,MaxBFrames=3,Threads=2,UseAllCores=true,Multipass=two-pass,BitsPerPixel=24,Cover=true}"},
    };
    const auto apply = [&](const std::string& text, const Property& settings) {
        Property preset = TreeOf(text);
        preset.SetChild("CodecId", "h264");
        return Applied(*h264, preset, settings);
    };
    for (const auto& row : rows) {
        const Property settings = apply(row.preset, source);
        for (const Property& expected : TreeOf(row.expected)) {
            EXPECT_EQ(settings[expected.Name()], expected) << row.preset << ": " << expected.Name();
        }
        EXPECT_EQ(settings.ChildExists("Threads"), TreeOf(row.preset).ChildExists("Threads"));
    }
    ExpectRefused([&] { apply("p{RateControl=vbr}", source); }, "Quality is required for VBR bitrate mode");
    ExpectRefused([&] { apply("p{RateControl=VBR}", source); }, "Unknown bitrate mode", "VBR");
    for (const char* tag : {"Width", "Height", "Fps"}) {
        Property part = source;
        part.RemoveChild(tag);
        EXPECT_THROW(apply("p{RateControl=cbr_auto}", part), PropertyException) << tag;
    }
}

TEST(CodecBase, Wmv3StaysOutOfTheRegistry) {
    const boost::intrusive_ptr<const IDataHelper> wmv3 = new DataHelperVideoCodecWmv3();
    EXPECT_EQ(Dump(wmv3->GetDefaultSettings()),
              "VideoCodec{CodecId=wmv3,RateControl=cbr,BitRate=2000000,EncodeOptions,GlobalHeader=true}");
    EXPECT_THROW(CreateDataHelper(IPreset::KEY_FILTER_VIDEO_CODEC, "wmv3"), HelperException);
}

TEST(CodecBase, AnUnknownStreamTypeIsRefused) {
    static constexpr CodecSheet kSheet{
        .codecId = IFormatCodec::CODEC_ID_AUTO, .stream = StreamType::Subtitle, .settings = {}};
    const boost::intrusive_ptr<const IDataHelper> helper = new TestCodec(kSheet);
    ExpectRefused([&] { Applied(*helper, helper->GetDefaultSettings(), Property("s")); }, "Unknown stream type");
    ExpectRefused([&] { Corrected(*helper, "s"); }, "Unknown stream type");
}

TEST(CodecBase, BitratesAreRepaired) {
    const struct {
        const char* codec;
        const char* settings;
        const char* corrected;
    } rows[] = {
        {"aac", "s{BitRate=100000}", "s{BitRate=256000}"},
        {"aac", "s{BitRate=96000}", "s{BitRate=96000}"},
        {"aac", "s{RateControl=vbr,Quality=700}", "s{RateControl=cbr,Quality=700}"},  // no quality in AAC's sheet
        {"mp3", "s{RateControl=vbr,Quality=100}", "s{RateControl=vbr,Quality=100}"},
        {"mp3", "s{Quality=0}", "s{Quality=1}"},
        {"mp3", "s", "s"},
        {"mp3", "s{SampleRate=8000,BitRate=256000}", "s{SampleRate=8000,BitRate=64000}"},
        {"mp3", "s{SampleRate=16000,BitRate=320000}", "s{SampleRate=16000,BitRate=128000}"},
        {"mp3", "s{SampleRate=22050,BitRate=256000}", "s{SampleRate=22050,BitRate=160000}"},
        {"mp3", "s{SampleRate=22050,BitRate=96000}", "s{SampleRate=22050,BitRate=96000}"},
        {"mp3", "s{SampleRate=44100,BitRate=256000}", "s{SampleRate=44100,BitRate=256000}"},
    };
    for (const auto& row : rows) EXPECT_EQ(Corrected(*Audio(row.codec), row.settings), row.corrected);
    EXPECT_THROW(Corrected(*Audio("aac"), "s{BitRate=much}"), ConstraintException);

    static constexpr SettingRow kSettings[] = {{.tag = IFormatCodec::TAG_BITRATE, .initial = 12200}};
    static constexpr CodecSheet kSheet{
        .codecId = IFormatCodecAudio::CODEC_ID_AMR_NB, .stream = StreamType::Audio, .settings = kSettings};
    EXPECT_EQ(Corrected(TestCodec(kSheet), "s{BitRate=7}"), "s{BitRate=12200}") << "without a constraint";
}

TEST(CodecBase, BFramesAndKeyIntervalAreCompleted) {
    EXPECT_EQ(Corrected(*H264(), "s{BitRate=99999}"), "s{BitRate=2000000,MaxBFrames=0,KeyInterval=25}");
    EXPECT_EQ(Corrected(*H264(), "s{BitRate=100000,MaxBFrames=9,KeyInterval=1}"),
              "s{BitRate=100000,MaxBFrames=9,KeyInterval=1}");
    static constexpr SettingRow kSettings[] = {{.tag = IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, .initial = 2}};
    static constexpr CodecSheet kSheet{
        .codecId = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, .stream = StreamType::Video, .settings = kSettings};
    for (const char* settings : {"s", "s{MaxBFrames=2}", "s{MaxBFrames=0}"}) {
        for (const char* id : {"mjpeg", "flv1", "wmv2", "h263"}) {
            EXPECT_EQ(Corrected(TestCodec(kSheet, id), settings), "s") << id;
        }
        EXPECT_NE(Corrected(TestCodec(kSheet), settings), "s");
    }
}

TEST(CodecBase, TheResamplersValuesAreChecked) {
    static constexpr int64_t kRates[] = {8000, 48000};
    static constexpr ChannelLayout kLayouts[] = {ChannelLayout::Mono};
    static constexpr SampleFormats kFormats[] = {SampleFormats::S16, SampleFormats::Fltp};
    static constexpr CodecSheet kSheet{.codecId = IFormatCodecAudio::CODEC_ID_AC3,
                                       .stream = StreamType::Audio,
                                       .settings = {},
                                       .sampleRates = Integers{kRates},
                                       .layouts = Layouts{kLayouts},
                                       .sampleFormats = SampleFormatList{kFormats}};
    const TestCodec codec(kSheet);
    for (const char* accepted : {"s", "s{SampleRate=48000}", "s{SampleFmt=fltp}", "s{Layout=mono}",
                                 "s{Layout=mono,SampleFmt=s16,SampleRate=8000}"}) {
        EXPECT_EQ(Corrected(codec, accepted), accepted);
    }
    const struct {
        const char* settings;
        const char* tag;
        const char* value;
    } refused[] = {
        {"s{SampleRate=96000}", "SampleRate", "96000"},
        {"s{SampleRate=48000,SampleFmt=fltp,Layout=stereo}", "Layout", "stereo"},
        {"s{SampleRate=48000,SampleFmt=s32,Layout=mono}", "SampleFmt", "s32"},
        {"s{Layout=stereo,SampleFmt=s32,SampleRate=1}", "SampleRate", "1"},
        {"s{Layout=stereo,SampleFmt=none}", "SampleFmt", "none"},
    };
    for (const auto& row : refused) {
        ExpectRefused([&] { Corrected(codec, row.settings); },
                      std::string("Can't fix value [") + row.tag + "] = " + row.value + " for encoder [ac3]",
                      row.value);
    }
    EXPECT_THROW(Corrected(codec, "s{SampleRate='48000'}"), ConstraintException);
}

TEST(CodecBase, SheetsBecomeSettingsConstraintsAndRules) {
    static constexpr FrameRate kRates[] = {FrameRates::kPal, FrameRates::kNtsc};
    static constexpr Text kModes[] = {IFormatCodec::TAG_BITRATE_MODE_CBR, IFormatCodec::TAG_BITRATE_MODE_VBR};
    static constexpr Text kVbr[] = {IFormatCodec::TAG_BITRATE_MODE_VBR};
    static constexpr SettingRow kSettings[] = {
        {.tag = IFormatCodec::TAG_BITRATE_MODE, .initial = kModes[0], .allowed = Texts{kModes}},
        {.tag = IFormatCodec::TAG_GLOBAL_HEADER, .initial = true},
        {.tag = IFormatCodec::TAG_QUALITY, .allowed = Range{.lo = 1, .hi = 9}},
        {.tag = IFormatCodecVideo::TAG_WIDTH, .node = Node::Resizer, .allowed = EvenSize()},
    };
    static constexpr CodecRuleRow kRules[] = {{.when = IFormatCodec::TAG_BITRATE_MODE,
                                               .is = Texts{kVbr},
                                               .tag = IFormatCodecVideo::TAG_WIDTH,
                                               .node = Node::Resizer,
                                               .allowed = Range{.lo = 16, .hi = 64}}};
    static constexpr CodecSheet kSheet{.codecId = IFormatCodecVideo::CODEC_ID_H263,
                                       .stream = StreamType::Video,
                                       .settings = kSettings,
                                       .frameRates = Rates{kRates},
                                       .rules = kRules};
    const boost::intrusive_ptr<const IDataHelper> helper = new TestCodec(kSheet);
    EXPECT_EQ(Dump(helper->GetDefaultSettings()),
              "VideoCodec{CodecId=h263,RateControl=cbr,EncodeOptions,GlobalHeader=true}");
    std::string text;
    FilterList filters;
    helper->GetRequiredFilters(filters);
    for (const auto& [filter, implementation] : filters) text += filter + " ";
    EXPECT_EQ(text, "VideoResize VideoFrameRate ");
    text.clear();
    ConstraintMap constraints;
    helper->FillConstraints(constraints);
    for (const auto& [key, constraint] : constraints) text += key + ": " + CallLog::Of(*constraint) + "\n";
    EXPECT_EQ(text,
              "Fps: 25=25/1, 29.97=30000/1001, end\n"
              "Quality: min 1, max 9\n"
              "RateControl: cbr=cbr, vbr=vbr, end\n"
              "VideoResize/Resizer/Width: \n");
    text.clear();
    ValidationRuleList rules;
    helper->FillValidationRules(rules);
    for (const auto& [path, rule] : rules) {
        text += path + ": " + rule->GetFirstName() + " [" + CallLog::Of(*rule->GetFirstConstraint()) + "] -> " +
                rule->GetSecondName() + " [" + CallLog::Of(*rule->GetSecondConstraint()) + "]\n";
    }
    EXPECT_EQ(
        text,
        "VideoCodec/Fps: VideoCodec/CodecId [h263=h263, end] -> VideoFrameRate/Fps [25=25/1, 29.97=30000/1001, "
        "end]\n"
        "VideoCodec/Width: VideoCodec/RateControl [vbr=vbr, end] -> VideoResize/Resizer/Width [min 16, max 64]\n");
    // The order that AAC's sheet asks for: options where the first of them stands.
    EXPECT_EQ(
        Dump(Audio("aac")->GetDefaultSettings()),
        "AudioCodec{CodecId=aac,RateControl=cbr,BitRate=256000,EncodeOptions{Profile=aac_low},GlobalHeader=true}");
}

}  // namespace
}  // namespace Kestro::Conf
