#include <gtest/gtest.h>

#include <string>

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/DataHelpers/GlobalHeaderFunctions.h"
#include "Kestro/Conf/HelperException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"

#include "tests/Failure.h"
#include "tests/Trees.h"

namespace Kestro::Conf {
namespace {

using Core::Property;

TEST(GlobalHeader, IsTheFlagOfTheDefaultSettings) {
    const auto check = [](const std::string& type, bool (*hasGlobalHeader)(const std::string&)) {
        for (const auto& [name, helper] : GetAvailableDataHelpers(type)) {
            if (name == IFormatCodec::CODEC_ID_AUTO) continue;  // names no codec
            const Property defaults = helper->GetDefaultSettings();
            const Property* flag = defaults.FindByPath(IFormatCodec::TAG_GLOBAL_HEADER);
            EXPECT_EQ(hasGlobalHeader(name), flag != nullptr && flag->GetBool()) << type << " " << name;
        }
    };
    check(IPreset::KEY_FORMAT, FormatHasGlobalHeader);
    check(IPreset::KEY_FILTER_AUDIO_CODEC, CodecHasGlobalHeader);
    check(IPreset::KEY_FILTER_VIDEO_CODEC, CodecHasGlobalHeader);
    EXPECT_TRUE(FormatHasGlobalHeader(IFormatFile::FORMAT_MP4));
    EXPECT_TRUE(CodecHasGlobalHeader(IFormatCodecAudio::CODEC_ID_AAC));
    EXPECT_FALSE(CodecHasGlobalHeader(IFormatCodecAudio::CODEC_ID_MP3)) << "its defaults have no such flag";
}

TEST(GlobalHeader, OfWhatThereIsNot) {
    ExpectFailure<HelperException>(
        [] { FormatHasGlobalHeader(""); },
        [](const Exception& e) {
            EXPECT_STREQ(e.what(), "Empty name while getting global header flag.");
            EXPECT_EQ(PlaceOf(e), (Place{"Kestro/Conf/DataHelpers/GlobalHeaderFunctions", 32}));
            EXPECT_NE(std::string(InfoOf<boost::throw_function>(e).value_or("")).find("FormatHasGlobalHeader"),
                      std::string::npos);
        });
    ExpectFailure<HelperException>(
        [] { FormatHasGlobalHeader("nope"); },
        [](const Exception& e) { EXPECT_EQ(InfoOf<HelperException::TagTypeIsNotFound>(e), "nope"); });
    for (const char* id : {"", "nope", "auto", "subrip", "H264"}) EXPECT_FALSE(CodecHasGlobalHeader(id)) << id;
    EXPECT_THROW(CodecHasGlobalHeader(IFormatCodecVideo::CODEC_ID_WMV3), HelperException) << "a codec without a helper";
}

boost::intrusive_ptr<const IFormatFile> File(const std::string& name) {
    Property node("format");
    node.SetChild(IFormatFile::TAG_CONTAINER, name);
    return IFormatFile::Create(node);
}

/// A codec node with that id and the tag 0.
Property Codec(const std::string& id) {
    Property node("codec");
    node.SetChild(IFormatCodec::TAG_CODEC_ID, id);
    node.SetChild(IFormatCodec::TAG_CODEC_TAG, 0);
    return node;
}

bool TakesAudio(const std::string& file, const std::string& id) {
    return CodecIsSupported(File(file), IFormatCodecAudio::Create(Codec(id)));
}

TEST(CodecIsSupported, NamesOfContainersLeadToTheirMuxers) {
    // The muxers' default codecs: what the name stands for is the muxer, or the answer would be no.
    for (const auto& [file, id] : {std::pair(IFormatFile::FORMAT_MPEG2TS, IFormatCodecAudio::CODEC_ID_MP2),
                                   std::pair(IFormatFile::FORMAT_MPEG1VIDEO, IFormatCodecAudio::CODEC_ID_MP2),
                                   std::pair(IFormatFile::FORMAT_MPEG2VIDEO, IFormatCodecAudio::CODEC_ID_MP2),
                                   std::pair(IFormatFile::FORMAT_WMV, IFormatCodecAudio::CODEC_ID_WMAV2),
                                   std::pair(IFormatFile::FORMAT_WMA, IFormatCodecAudio::CODEC_ID_WMAV2),
                                   std::pair(IFormatFile::FORMAT_M4A, IFormatCodecAudio::CODEC_ID_AAC),
                                   std::pair(IFormatFile::FORMAT_M4V, IFormatCodecAudio::CODEC_ID_AAC),
                                   std::pair(IFormatFile::FORMAT_AC3, IFormatCodecAudio::CODEC_ID_AC3)}) {
        EXPECT_TRUE(TakesAudio(file, id)) << file;
        EXPECT_FALSE(TakesAudio(file, "nope")) << file;
    }
    EXPECT_FALSE(TakesAudio(IFormatFile::FORMAT_M4A, IFormatCodecAudio::CODEC_ID_WMAV2));
    EXPECT_FALSE(TakesAudio("nope", IFormatCodecAudio::CODEC_ID_AAC));
}

TEST(CodecIsSupported, OfIncompleteDescriptions) {
    const auto mp4 = File(IFormatFile::FORMAT_MP4);
    const Property whole = Codec(IFormatCodecVideo::CODEC_ID_H264);
    const auto answer = [&](const Property& codec) { return CodecIsSupported(mp4, IFormatCodecVideo::Create(codec)); };
    EXPECT_TRUE(answer(whole));
    for (const std::string& tag : {IFormatCodec::TAG_CODEC_ID, IFormatCodec::TAG_CODEC_TAG}) {
        Property part = whole;
        part.RemoveChild(tag);
        EXPECT_FALSE(answer(part)) << tag;
        part.SetChild(tag, 1.5);
        EXPECT_FALSE(answer(part)) << tag << " of another kind";
    }
    EXPECT_FALSE(answer(Property("empty")));
    EXPECT_FALSE(CodecIsSupported(mp4, nullptr));
    EXPECT_FALSE(CodecIsSupported(nullptr, IFormatCodecVideo::Create(whole)));
    EXPECT_FALSE(CodecIsSupported(IFormatFile::Create(Property("empty")), IFormatCodecVideo::Create(whole)));
}

TEST(CodecIsSupported, LosslessVideoIsTheMainStream) {
    const auto mp4 = File(IFormatFile::FORMAT_MP4);
    for (const bool lossless : {false, true}) {
        for (const bool main : {false, true}) {
            Property codec = Codec(IFormatCodecVideo::CODEC_ID_H264);
            codec.SetChild(IFormatCodec::TAG_LOSSLESS, lossless);
            codec.SetChild(IFormatCodec::TAG_MAIN_STREAM, main);
            EXPECT_EQ(CodecIsSupported(mp4, IFormatCodecVideo::Create(codec)), !lossless || main);
            codec = Codec(IFormatCodecAudio::CODEC_ID_AAC);
            codec.SetChild(IFormatCodec::TAG_LOSSLESS, lossless);
            EXPECT_TRUE(CodecIsSupported(mp4, IFormatCodecAudio::Create(codec))) << "only video must";
        }
    }
}

TEST(CodecIsSupported, GoesByTagsAndParameters) {
    const struct {
        const char* file;
        const char* codec;
        bool isSupported;
    } rows[] = {
        {"mp4", "c{CodecId=h264,CodecTag=828601953}", true},     // avc1
        {"mp4", "c{CodecId=mpeg4,CodecTag=1983148141}", true},   // mp4v
        {"mp4", "c{CodecId=hevc,CodecTag=1983148141}", false},   // another codec's
        {"mp4", "c{CodecId=mpeg4,CodecTag=1482049860}", false},  // DIVX, where mp4v belongs
        {"mp4", "c{CodecId=mpeg4,CodecTag=6278115437}", false},  // mp4v above 32 bits
        {"matroska", "c{CodecId=hevc,CodecTag=-1}", false},
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
        {"matroska", "c{CodecId=hevc,CodecTag=0}", true},        // has no tag for it
        {"matroska", "c{CodecId=hevc,CodecTag=0,Lossless=true,MainStream=true}", false},
        {"matroska", "c{CodecId=mpeg2video,CodecTag=1447904328,Lossless=true,MainStream=true}", true},  // HDMV
        {"mov", "c{CodecId=mpeg2video,CodecTag=1447904328,Lossless=true,MainStream=true}", false},
        {"mp4", "c{CodecId=mp3,CodecTag=0,SampleRate=16000}", true},
        {"mp4", "c{CodecId=mp3,CodecTag=0,SampleRate=8000}", false},
        {"flv", "c{CodecId=pcm_s16le,CodecTag=0,SampleRate=44100,Layout=stereo}", true},
        {"flv", "c{CodecId=pcm_s16le,CodecTag=0,SampleRate=44100,Layout=quad}", false},
        {"flv", "c{CodecId=pcm_s16le,CodecTag=0,SampleRate=48000,Layout=stereo}", false},
        {"image2", "c{CodecId=pbm,CodecTag=0,PixelFmt=monow}", true},
        {"image2", "c{CodecId=pbm,CodecTag=0,PixelFmt=yuv420p}", false},
        {"nut", "c{CodecId=h264,CodecTag=0}", true},  // a muxer that has no helper
        {"nut", "c{CodecId=pam,CodecTag=0}", false},
        {"MP4", "c{CodecId=h264,CodecTag=0}", true},  // as FFmpeg takes a name
        {"Matroska", "c{CodecId=hevc,CodecTag=0}", true},
        {"Matroska", "c{CodecId=pam,CodecTag=0}", false},
        {"mka", "c{CodecId=aac,CodecTag=0}", false},  // no muxer's name
        {"bmp", "c{CodecId=bmp,CodecTag=0}", false},
    };
    for (const auto& row : rows) {
        const Property node = Core::TreeOf(row.codec);
        const std::string& id = node[IFormatCodec::TAG_CODEC_ID].GetString();
        boost::intrusive_ptr<const IFormatCodec> codec = IFormatCodecVideo::Create(node);
        if (IsAudioCodec(id)) codec = IFormatCodecAudio::Create(node);
        EXPECT_EQ(CodecIsSupported(File(row.file), codec), row.isSupported) << row.file << " " << row.codec;
    }
}

TEST(CodecIsSupported, NeverThrows) {
    for (const auto& [name, helper] : GetAvailableDataHelpers(IPreset::KEY_FORMAT)) {
        for (const int64_t tag : {int64_t{0}, int64_t{0x7634706D}, int64_t{-1}, int64_t{1} << 40}) {
            Property codec = Codec("nope");
            codec.SetChild(IFormatCodec::TAG_CODEC_TAG, tag);
            EXPECT_FALSE(CodecIsSupported(File(name), IFormatCodecVideo::Create(codec))) << name;
            for (const std::string& id : VideoCodecIds()) {
                codec.SetChild(IFormatCodec::TAG_CODEC_ID, id);
                EXPECT_NO_THROW(CodecIsSupported(File(name), IFormatCodecVideo::Create(codec))) << name << " " << id;
            }
            for (const std::string& id : AudioCodecIds()) {
                codec.SetChild(IFormatCodec::TAG_CODEC_ID, id);
                EXPECT_NO_THROW(CodecIsSupported(File(name), IFormatCodecAudio::Create(codec))) << name << " " << id;
            }
        }
    }
}

}  // namespace
}  // namespace Kestro::Conf
