#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>

#include "Kestro/Conf/ConstraintException.h"
#include "Kestro/Conf/DataHelpers/DataHelperProxyAuto.h"
#include "Kestro/Conf/DataHelpers/Filters/DataHelperAudioFormatter.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Core/PropertyException.h"

#include "tests/Failure.h"
#include "tests/Helpers.h"

namespace Kestro::Conf {
namespace {

using Core::Dump;
using Core::Property;
using Core::TreeOf;
using Ratio = Property::Ratio;

TEST(Registry, HasOneObjectForEachTypeAndName) {
    std::set<const IDataHelper*> objects;
    for (const auto& [type, name] : AllKeys()) {
        SCOPED_TRACE(type + " " + name);
        const auto helper = CreateDataHelper(type, name);
        EXPECT_EQ(helper->GetRefCount(), 2);
        EXPECT_EQ(CreateDataHelper(type, name), helper);
        objects.insert(helper.get());
        EXPECT_TRUE(name.empty() || GetAvailableDataHelpers(type).at(name) == helper);
    }
    EXPECT_EQ(objects.size(), 60 + 25 + 35 + 5U);
    const std::string& audio = IPreset::KEY_FILTER_AUDIO_CODEC;
    const std::string& video = IPreset::KEY_FILTER_VIDEO_CODEC;
    for (const std::string& id : AudioCodecIds()) EXPECT_TRUE(GetAvailableDataHelpers(audio).contains(id)) << id;
    for (const std::string& id : VideoCodecIds()) {
        EXPECT_EQ(GetAvailableDataHelpers(video).contains(id), id != IFormatCodecVideo::CODEC_ID_WMV3) << id;
    }
    EXPECT_EQ(CreateDataHelper("CodecAudio", "aac"), CreateDataHelper(audio, "aac"));
    EXPECT_EQ(CreateDataHelper("CodecVideo", "h264"), CreateDataHelper(video, "h264"));
    EXPECT_EQ(CreateDataHelper("AudioResample", "any name"), CreateDataHelper("AudioResample", ""));
    EXPECT_NE(DataHelperAudioFormatter::Create(), CreateDataHelper("AudioPackets", ""));
}

TEST(Registry, SaysWhatIsMissing) {
    using MaybeText = std::optional<std::string>;
    const auto check = [](const auto& find, int line, const MaybeText& noClass, const MaybeText& found,
                          const MaybeText& noName) {
        ExpectFailure<HelperException>(find, [&](const Exception& e) {
            EXPECT_EQ(InfoOf<HelperException::TagClassIsNotFound>(e), noClass);
            EXPECT_EQ(InfoOf<HelperException::TagClassIsFound>(e), found);
            EXPECT_EQ(InfoOf<HelperException::TagTypeIsNotFound>(e), noName);
            EXPECT_EQ(PlaceOf(e), (Place{"Kestro/Conf/DataHelpers/DataHelpers", line}));
        });
    };
    for (const std::string& type :
         {std::string(), std::string("format"), std::string("Format\0", 7), std::string("Resampler")}) {
        check([&] { CreateDataHelper(type, "mp4"); }, 294, type, {}, {});
        check([&] { GetAvailableDataHelpers(type); }, 256, type, {}, {});
    }
    for (const auto& [type, name] :
         {Key("Format", ""), Key("Format", "MP4"), Key("AudioCodec", "h264"), Key("VideoCodec", "auto")}) {
        check([&, &type = type, &name = name] { CreateDataHelper(type, name); }, 297, {}, type, name);
    }
    ExpectFailure<HelperException>([] { CreateDataHelperAuto("AudioCodec", "no such"); }, [](const Exception&) {});
    ExpectFailure<HelperException>(
        [] { FormatHasGlobalHeader(""); },
        [](const Exception& e) {
            EXPECT_STREQ(e.what(), "Empty name while getting global header flag.");
            EXPECT_EQ(PlaceOf(e), (Place{"Kestro/Conf/DataHelpers/GlobalHeaderFunctions", 32}));
        });
    EXPECT_THROW(FormatHasGlobalHeader("nope"), HelperException);
    EXPECT_THROW(CodecHasGlobalHeader("wmv3"), HelperException) << "a codec without a helper";
    for (const char* id : {"", "nope", "auto", "subrip"}) EXPECT_FALSE(CodecHasGlobalHeader(id)) << id;
}

TEST(GlobalHeader, IsTheFlagOfTheDefaultSettings) {
    for (const auto& [type, name] : AllKeys()) {
        if (name.empty() || name == "auto") continue;
        const Property defaults = CreateDataHelper(type, name)->GetDefaultSettings();
        const Property* flag = defaults.FindByPath(IFormatCodec::TAG_GLOBAL_HEADER);
        const bool has = type == IPreset::KEY_FORMAT ? FormatHasGlobalHeader(name) : CodecHasGlobalHeader(name);
        EXPECT_EQ(has, flag != nullptr && flag->GetBool()) << type << " " << name;
    }
    EXPECT_TRUE(FormatHasGlobalHeader("mp4") && CodecHasGlobalHeader("aac") && CodecHasGlobalHeader("flac"));
}

TEST(CodecIsSupported, GoesByTagsAndParameters) {
    const struct {
        const char* container;
        const char* codec;
        bool isSupported;
    } rows[] = {
        // Names of containers lead to their muxers, whose default codecs these are.
        {"mpeg2ts", "c{CodecId=mp2}", true},
        {"mpeg1video", "c{CodecId=mp2}", true},
        {"mpeg2video", "c{CodecId=mp2}", true},
        {"wmv", "c{CodecId=wmav2}", true},
        {"wma", "c{CodecId=wmav2}", true},
        {"m4a", "c{CodecId=aac}", true},
        {"m4v", "c{CodecId=aac}", true},
        {"m4a", "c{CodecId=wmav2}", false},
        {"nope", "c{CodecId=aac}", false},
        {"mp4", "c{CodecId=h264,CodecTag=828601953}", true},     // avc1
        {"mp4", "c{CodecId=hevc,CodecTag=1983148141}", false},   // another codec's
        {"mp4", "c{CodecId=mpeg4,CodecTag=1482049860}", false},  // DIVX, where mp4v belongs
        {"mp4", "c{CodecId=mpeg4,CodecTag=6278115437}", false},  // mp4v above 32 bits
        {"matroska", "c{CodecId=hevc,CodecTag=-2}", false},
        // XVID, mp4v and AC-3: as a source had them, whatever the muxer's own.
        {"mp4", "c{CodecId=mpeg4,CodecTag=1145656920}", true},
        {"avi", "c{CodecId=mpeg4,CodecTag=1145656920}", true},
        {"mpeg", "c{CodecId=mpeg4,CodecTag=1983148141}", true},
        {"webm", "c{CodecId=mpeg4,CodecTag=1983148141}", false},
        {"mp4", "c{CodecId=hevc,CodecTag=1145656920}", false},
        {"wav", "c{CodecId=ac3,CodecTag=858604353}", true},
        {"mov", "c{CodecId=ac3,CodecTag=858604353,Lossless=true}", true},
        {"mov", "c{CodecId=eac3,CodecTag=858604353,Lossless=true}", false},
        {"mpegts", "c{CodecId=h264,CodecTag=828601953}", true},  // has no tags
        {"matroska", "c{CodecId=hevc}", true},                   // has no tag for it
        {"mp4", "c{CodecId=h264,Lossless=true}", false},
        {"mp4", "c{CodecId=h264,Lossless=true,MainStream=true}", true},
        {"mp4", "c{CodecId=aac,Lossless=true}", true},
        {"matroska", "c{CodecId=hevc,Lossless=true,MainStream=true}", false},
        {"matroska", "c{CodecId=mpeg2video,CodecTag=1447904328,Lossless=true,MainStream=true}", true},  // HDMV
        {"avi", "c{CodecId=mpeg2video,CodecTag=1447904328,Lossless=true,MainStream=true}", true},
        {"mov", "c{CodecId=mpeg2video,CodecTag=1447904328,Lossless=true,MainStream=true}", false},
        {"image2", "c{CodecId=pbm,PixelFmt=monow}", true},
        {"image2", "c{CodecId=pbm,PixelFmt=yuv420p}", false},
        {"flv", "c{CodecId=pcm_s16le,SampleRate=44100,Layout=quad}", false},
        {"nut", "c{CodecId=h264}", true},  // a muxer that has no helper
        {"nut", "c{CodecId=pam}", false},
        {"MP4", "c{CodecId=h264}", true},  // as FFmpeg takes a name
        {"Matroska", "c{CodecId=hevc}", true},
        {"Matroska", "c{CodecId=pam}", false},
        {"mka", "c{CodecId=aac}", false},  // no muxer's name
        {"bmp", "c{CodecId=bmp}", false},
        {"flv", "c{CodecId=pcm_s16le,SampleRate=48000,Layout=stereo}", false},
        {"mp4", "c{CodecId=nope}", false},
        {"mp4", "c{CodecId=h264,CodecTag=text}", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(IsSupported(row.container, TreeOf(row.codec)), row.isSupported) << row.container << row.codec;
    const auto h264 = IFormatCodecVideo::Create(TreeOf("c{CodecId=h264,CodecTag=0}"));
    const auto mp4 = IFormatFile::Create(TreeOf("f{Container=mp4}"));
    EXPECT_TRUE(CodecIsSupported(mp4, h264));
    EXPECT_FALSE(CodecIsSupported(nullptr, h264) || CodecIsSupported(mp4, nullptr));
    for (const char* part : {"c", "c{CodecId=h264}", "c{CodecTag=0}"}) {
        EXPECT_FALSE(CodecIsSupported(mp4, IFormatCodecVideo::Create(TreeOf(part)))) << part;
    }
    EXPECT_FALSE(CodecIsSupported(IFormatFile::Create(TreeOf("f")), h264));
    for (const auto& [type, name] : KeysOf({IPreset::KEY_FORMAT})) {
        for (const int64_t tag : {int64_t{0x7634706D}, int64_t{-1}, int64_t{1} << 40}) {
            for (const std::string& id : VideoCodecIds()) {
                Property codec = TreeOf("c{CodecId=" + id + "}");
                codec.SetChild(IFormatCodec::TAG_CODEC_TAG, tag);
                EXPECT_NO_THROW(IsSupported(name, codec)) << name << " " << id;
            }
        }
    }
}

/// The codec node after the filter was applied to it; the kind of what it throws.
std::string Applied(const std::string& filter, const char* settings, const char* codec) {
    Property target = TreeOf(codec);
    try {
        CreateDataHelper(filter, "")->ApplyPresetSettings(TreeOf(settings), target);
    } catch (const HelperException&) {
        return "helper";
    } catch (const Core::PropertyException&) {
        return "property";
    }
    return Dump(target);
}

TEST(Filters, KeepOrReplaceTheSourcesValues) {
    const std::string keep = "f{Resampler{SampleRate=-1,Layout=unknown}}";
    const std::string custom = "VideoResize{Resizer{FrameSizeMode=custom,Width=641,Height=360}}";
    const struct {
        const char* filter;
        std::string settings;
        const char* codec;
        const char* applied;
    } rows[] = {
        {"AudioResample", "f{Resampler{SampleRate='48000',Layout=stereo}}", "c{SampleRate=8000,Layout=mono}",
         "c{SampleRate=48000,Layout=stereo}"},
        {"AudioResample", keep, "c{SampleRate=8000,Layout=mono}", "c{SampleRate=8000,Layout=mono}"},
        {"AudioResample", keep, "c", "c"},
        {"AudioResample", keep, "c{SampleFmt=s16,BitsPerSample=24}", "c{SampleFmt=s16,BitsPerSample=16}"},
        {"AudioResample", keep, "c{SampleFmt=none}", "c{SampleFmt=none}"},
        {"AudioResample", keep, "c{SampleFmt=s17}", "helper"},
        {"AudioResample", keep, "c{SampleFmt=16}", "property"},
        {"AudioResample", "f{Resampler{Layout=mono}}", "c", "property"},
        {"VideoFrameRate", "f{Fps=25/1}", "c{Fps=50/1}", "c{Fps=25/1}"},
        {"VideoFrameRate", "f{Fps='0'}", "c{Fps=50/1}", "c{Fps=50/1}"},
        {"VideoFrameRate", "f", "c", "property"},
        {"VideoResize", "f", "c{Width=1279,Height=719}", "c{Width=1278,Height=718}"},
        {"VideoResize", custom, "c{Width=1279,Height=719}", "c{Width=640,Height=360}"},
        {"VideoResize", custom, "c{Width=720,Height=576,AspectX=16,AspectY=15}",
         "c{Width=640,Height=360,AspectX=1,AspectY=1}"},
        {"VideoResize", custom, "c", "property"},
        {"AudioVolume", "f{VolumePercent=9}", "c{VolumePercent=7}", "c{VolumePercent=7}"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Applied(row.filter, row.settings.c_str(), row.codec), row.applied) << row.settings;
    std::string offers;
    for (const char* filter : {"AudioResample", "AudioVolume", "VideoFrameRate", "VideoResize"}) {
        for (const auto& [key, constraint] : Subject(filter, "").constraints)
            offers += key + ": " + CallLog::Of(*constraint) + "\n";
    }
    for (const char* part : {"Resampler/Layout: unknown", "64000=64000, 88200=88200, 96000=96000, end",
                             "VolumePercent: min 0, max 200\n", "Fps: Auto=0/1, 8=8/1", "60=60/1"}) {
        EXPECT_NE(offers.find(part), std::string::npos) << part << " in " << offers;
    }
    const Subject resizer("VideoResize", "");
    for (const auto& [sizes, holds] :
         {std::pair("Width=640,Height=360", true), {"Width=641,Height=360", false}, {"Width=640,Height=361", false}}) {
        const Property tree = TreeOf(std::string("t{VideoResize{Resizer{FrameSizeMode=custom,") + sizes + "}}}");
        bool all = resizer.rules.size() == 2;
        for (const auto& [path, rule] : resizer.rules) all = all && rule->Validate(tree);
        EXPECT_EQ(all, holds) << sizes;
    }
}

TEST(AutomaticHelper, OffersTheAutomaticValueFirst) {
    constexpr const char* kRate = "AudioResample/Resampler/SampleRate";
    constexpr const char* kLayout = "AudioResample/Resampler/Layout";
    constexpr const char* kFps = "VideoFrameRate/Fps";
    const struct {
        const char* type;
        const char* name;
        const char* path;
        Property automatic;
        Property refused;
        std::string offered;  // begins so
    } rows[] = {
        {"AudioCodec", "mp3", kRate, {"", -1}, {"", 44}, "Auto 8000 "},
        {"AudioCodec", "mp3", kLayout, {"", "unknown"}, {"", "5.1"}, "Auto mono "},
        {"VideoCodec", "mpeg2video", kFps, {"", Ratio(0)}, {"", Ratio(7)}, "Auto 23.97 "},
        {"Format", "gif", kFps, {"", Ratio(0)}, {"", Ratio(7)}, "Auto 8 "},  // offered by the container itself, and
                                                                             // once
        {"AudioCodec", "alac", kRate, {"", -1}, {"", 0}, "minValue "},       // bounds do not hide behind a list of one
        {"VideoCodec", "h264", kFps, {"", Ratio(0)}, {"", Ratio(-1)}, ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name + std::string(" ") + row.path);
        const auto constraint = Subject(CreateDataHelperAuto(row.type, row.name)).Requirement(row.path);
        ASSERT_TRUE(constraint);
        Property kept = row.automatic;
        EXPECT_TRUE(constraint->IsValid(kept) && constraint->CorrectValue(kept) && kept == row.automatic);
        EXPECT_FALSE(constraint->IsValid(row.refused));
        EXPECT_TRUE(Names(*constraint).starts_with(row.offered)) << Names(*constraint);
        EXPECT_EQ(Names(*constraint).find("Auto", 1), std::string::npos);
    }
    const Subject mp4(CreateDataHelperAuto("Format", "mp4"));
    EXPECT_EQ(Names(*mp4.constraints.at("Streams/TypeId=audio/AudioCodec/CodecId")), "auto aac ac3 dts mp3 ");
    EXPECT_EQ(Names(*Subject(CreateDataHelperAuto("AudioCodec", "mp3")).constraints.at("RateControl")),
              "cbr_auto cbr vbr ");
    const auto rates = Subject(CreateDataHelperAuto("AudioCodec", "mp2")).Requirement(kRate);
    EXPECT_NE(rates->GetDescription("SampleRate").find(": Auto 32000 "), std::string::npos);
    // Whatever the helper: its own choices stay, in their order, and nothing else changes.
    for (const auto& [type, name] : AllKeys()) {
        SCOPED_TRACE(type + " " + name);
        const Subject own(type, name);
        const Subject automatic(CreateDataHelperAuto(type, name));
        EXPECT_EQ(automatic.helper->GetDefaultSettings(), own.helper->GetDefaultSettings());
        ASSERT_TRUE(automatic.constraints.size() == own.constraints.size() &&
                    automatic.rules.size() == own.rules.size());
        for (const auto& [key, constraint] : own.constraints) {
            const auto& widened = automatic.constraints.at(key);
            EXPECT_TRUE(widened == constraint || Names(*widened).ends_with(Names(*constraint))) << key;
            EXPECT_THROW(constraint->FillValueList(nullptr), ConstraintException) << key;
        }
        for (std::size_t i = 0; i < own.rules.size(); ++i) {
            const auto& [path, rule] = automatic.rules[i];
            const std::string& second = rule->GetSecondName();
            EXPECT_EQ(path, own.rules[i].first);
            EXPECT_THROW(rule->GetSecondConstraint()->FillValueList(nullptr), ConstraintException) << second;
            EXPECT_EQ(rule->GetFirstConstraint(), own.rules[i].second->GetFirstConstraint());
            EXPECT_TRUE(second == kRate || second == kLayout || second == kFps || rule == own.rules[i].second)
                << second;
        }
    }
}

}  // namespace
}  // namespace Kestro::Conf
