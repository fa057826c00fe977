#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <set>
#include <string>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/samplefmt.h>
}

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/FormatException.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/Conf/SampleFmtRecord.h"
#include "Kestro/FFWrapper/ChannelLayoutMapping.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/EncoderCapabilities.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/SampleFormatMapping.h"

#include "tests/Failure.h"
#include "tests/Trees.h"

// The vocabulary beside FFmpeg's, and descriptions made of it.

namespace Kestro::Conf {
namespace {

using Core::Property;
using Core::TreeOf;

std::vector<std::string> AllCodecIds() {
    std::vector<std::string> ids(AudioCodecIds().begin(), AudioCodecIds().end());
    ids.insert(ids.end(), VideoCodecIds().begin(), VideoCodecIds().end());
    return ids;
}

TEST(Records, AgreeWithFfmpeg) {
    int code = 0;
    for (const LayoutRecord& record : LayoutRecord::All()) {
        SCOPED_TRACE(record.name);
        EXPECT_EQ(static_cast<int>(record.code), ++code);
        EXPECT_EQ(LayoutRecord::Find(record.code), &record);
        EXPECT_EQ(LayoutRecord::Find(record.name), &record);
        EXPECT_EQ(FFWrapper::ChannelLayoutKestroFromFFMPEG(record.ffmpegMask), record.code);
        AVChannelLayout layout{};
        ASSERT_EQ(av_channel_layout_from_mask(&layout, record.ffmpegMask), 0);
        char name[64] = {};
        av_channel_layout_describe(&layout, name, sizeof name);
        EXPECT_EQ(name, record.name);
        EXPECT_EQ(layout.nb_channels, record.channels);
        const LayoutRecord* usual = LayoutRecord::Find(record.channels);
        av_channel_layout_default(&layout, record.channels);
        EXPECT_EQ(usual->ffmpegMask, layout.u.mask);
    }
    int count = 0;
    for (void* place = nullptr; av_channel_layout_standard(&place) != nullptr;) ++count;
    EXPECT_LE(code, count);  // newer releases have more
    code = 0;
    for (const SampleFmtRecord& record : SampleFmtRecord::All()) {
        SCOPED_TRACE(record.name);
        EXPECT_EQ(SampleFmtRecord::Find(record.code), &record);
        EXPECT_EQ(SampleFmtRecord::Find(record.name), &record);
        const auto format = static_cast<AVSampleFormat>(code++);
        EXPECT_EQ(FFWrapper::SampleFormatKestroFromFFMPEG(format), record.code);
        EXPECT_EQ(record.name, av_get_sample_fmt_name(format));
        EXPECT_EQ(record.bitsPerSample, 8 * av_get_bytes_per_sample(format));
        EXPECT_EQ(record.planar, av_sample_fmt_is_planar(format) != 0);
        EXPECT_EQ(static_cast<int>(record.alternative), av_get_alt_sample_fmt(format, record.planar ? 0 : 1));
    }
    EXPECT_EQ(code, AV_SAMPLE_FMT_NB);
    EXPECT_EQ(FFWrapper::SampleFormatKestroFromFFMPEG(AV_SAMPLE_FMT_NONE), SampleFormats::None);
    for (const uint64_t mask : {uint64_t{0}, uint64_t{AV_CH_BACK_LEFT}, UINT64_MAX}) {
        EXPECT_FALSE(FFWrapper::ChannelLayoutFFMPEGIsSupported(mask)) << mask;
    }
    for (const char* name : {"", "unknown", "none", "Stereo", "stereo ", "s17"}) {
        EXPECT_TRUE(LayoutRecord::Find(name) == nullptr && SampleFmtRecord::Find(name) == nullptr) << name;
    }
    for (const int other : {-1, 0, 65, INT_MIN, INT_MAX}) {
        EXPECT_EQ(LayoutRecord::Find(other), nullptr) << other;
        EXPECT_EQ(LayoutRecord::Find(static_cast<ChannelLayout>(other)), nullptr) << other;
    }
}

TEST(Records, HaveNamesForTheConstants) {
    using Audio = IFormatCodecAudio;
    const std::pair<const std::string&, ChannelLayout> constants[] = {
        {Audio::TAG_CH_LAYOUT_MONO, ChannelLayout::Mono},
        {Audio::TAG_CH_LAYOUT_STEREO, ChannelLayout::Stereo},
        {Audio::TAG_CH_LAYOUT_2POINT1, ChannelLayout::Layout2Point1},
        {Audio::TAG_CH_LAYOUT_2_1, ChannelLayout::Layout2_1},
        {Audio::TAG_CH_LAYOUT_2_2, ChannelLayout::Layout2_2},
        {Audio::TAG_CH_LAYOUT_QUAD, ChannelLayout::Quad},
        {Audio::TAG_CH_LAYOUT_5POINT0, ChannelLayout::Layout5Point0},
        {Audio::TAG_CH_LAYOUT_5POINT1, ChannelLayout::Layout5Point1},
        {Audio::TAG_CH_LAYOUT_5POINT0_BACK, ChannelLayout::Layout5Point0Back},
        {Audio::TAG_CH_LAYOUT_5POINT1_BACK, ChannelLayout::Layout5Point1Back},
        {Audio::TAG_CH_LAYOUT_7POINT1, ChannelLayout::Layout7Point1},
    };
    for (const auto& [name, code] : constants) EXPECT_EQ(LayoutRecord::Find(name)->code, code) << name;
}

TEST(CodecIds, NameFfmpegsCodecsAndEncoders) {
    const std::vector<std::string> ids = AllCodecIds();
    EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), ids.size());
    for (const std::string& id : ids) {
        const AVCodecDescriptor* descriptor = avcodec_descriptor_get(FFWrapper::CodecIDFromTextID(id));
        ASSERT_NE(descriptor, nullptr) << id;
        EXPECT_EQ(descriptor->name, id);
        EXPECT_EQ(descriptor->type == AVMEDIA_TYPE_AUDIO, IsAudioCodec(id)) << id;
        EXPECT_EQ(descriptor->type == AVMEDIA_TYPE_VIDEO, IsVideoCodec(id)) << id;
        const std::string name = FFWrapper::EncoderNameFromCodecId(id);
        EXPECT_EQ(name.empty(), avcodec_find_encoder(descriptor->id) == nullptr) << id;
        if (name.empty()) continue;
        EXPECT_EQ(avcodec_find_encoder_by_name(name.c_str())->id, descriptor->id) << name;
    }
    const std::pair<std::string, AVCodecID> others[] = {
        {"srt", AV_CODEC_ID_SUBRIP}, {"subrip", AV_CODEC_ID_SUBRIP}, {"ssa", AV_CODEC_ID_ASS},
        {"ass", AV_CODEC_ID_ASS},    {"auto", AV_CODEC_ID_NONE},     {"", AV_CODEC_ID_NONE},
        {"H264", AV_CODEC_ID_NONE},  {"h264 ", AV_CODEC_ID_NONE},    {std::string("h264\0x", 6), AV_CODEC_ID_NONE},
    };
    for (const auto& [text, id] : others) EXPECT_EQ(FFWrapper::CodecIDFromTextID(text), id) << text;
    for (const auto& [id, preferred] : {std::pair("h264", "libx264"), {"av1", "libsvtav1"}, {"prores", "prores_ks"}}) {
        if (avcodec_find_encoder_by_name(preferred) != nullptr) {
            EXPECT_EQ(FFWrapper::EncoderNameFromCodecId(id), preferred);
        }
    }
    const auto pcm = FFWrapper::EncoderCapabilities::Find("pcm_s16le").value();
    EXPECT_TRUE(pcm.sampleRates.empty() && pcm.channelLayouts.empty() && pcm.sampleFormats.size() == 1);
    EXPECT_FALSE(FFWrapper::EncoderCapabilities::Find("no encoder").has_value());
}

/// A setting of a description, read back as a Property.
template <class Description>
struct Getter {
    std::string tag;
    Property value;
    bool (Description::*exists)() const;
    std::function<Property(const Description&)> get;
};

template <class Description>
void CheckGetters(const std::vector<Getter<Description>>& getters) {
    for (const auto& getter : getters) {
        SCOPED_TRACE(getter.tag);
        const auto make = [&](const Property& value) {
            Property node("codec");
            if (!value.Name().empty()) node.SetChild(getter.tag, value);
            return Description::Create(node);
        };
        const auto whole = make(getter.value);
        EXPECT_TRUE(((*whole).*getter.exists)());
        EXPECT_EQ(getter.get(*whole), getter.value);
        for (const Property& other : TreeOf("{a,b=true,c=2.5,d=7,e=text,f=30000/1001,g{h=1}}")) {
            if (other.Type() == getter.value.Type()) continue;
            for (const Property& wrong : {other, Property()}) {
                const auto description = make(wrong);
                EXPECT_FALSE(((*description).*getter.exists)());
                ExpectFailure<FormatException>(
                    [&] { getter.get(*description); },
                    [&](const Exception& e) { EXPECT_EQ(InfoOf<TagDetails>(e), getter.tag); });
            }
        }
    }
}

#define GETTER(Description, tag, sample, Name)                                \
    {                                                                         \
        tag, {"v", sample}, &Description::Exists##Name,                       \
            [](const Description& d) { return Property("v", d.Get##Name()); } \
    }

template <class Codec>
std::vector<Getter<Codec>> Common() {
    return {GETTER(Codec, IFormatCodec::TAG_CODEC_ID, "h264", CodecID),
            GETTER(Codec, IFormatCodec::TAG_BITRATE, 128000, Bitrate),
            GETTER(Codec, IFormatCodec::TAG_CODEC_TAG, int64_t{0xFFFFFFFF}, CodecTag),
            GETTER(Codec, IFormatCodec::TAG_LOSSLESS, false, Lossless)};
}

TEST(Descriptions, GiveWhatTheNodeHoldsAndNothingElse) {
    CheckGetters(Common<IFormatCodecSubtitle>());
    CheckGetters(Common<IFormatCodecVideo>());
    CheckGetters(Common<IFormatCodecAudio>());
    CheckGetters<IFormatFile>({GETTER(IFormatFile, IFormatFile::TAG_CONTAINER, "mp4", FormatName)});
    using Video = IFormatCodecVideo;
    CheckGetters<Video>({GETTER(Video, Video::TAG_WIDTH, 1920, Width), GETTER(Video, Video::TAG_HEIGHT, 1080, Height),
                         GETTER(Video, Video::TAG_FPS, Property::Ratio(24000, 1001), Fps),
                         GETTER(Video, Video::TAG_PIXEL_FORMAT, "yuv420p", PixelFormat)});
    using Audio = IFormatCodecAudio;
    CheckGetters<Audio>({GETTER(Audio, Audio::TAG_SAMPLE_RATE, 44100, SampleRate)});
    const auto sound = Audio::Create(TreeOf("c{Layout=5.1(side),SampleFmt=fltp}"));
    EXPECT_TRUE(sound->GetChannelLayout() == ChannelLayout::Layout5Point1 &&
                sound->GetSampleFormat() == SampleFormats::Fltp);
    const auto unknown = Audio::Create(TreeOf("c{Layout='5.1 ',SampleFmt=none}"));
    EXPECT_TRUE(unknown->GetChannelLayout() == ChannelLayout::Unknown &&
                unknown->GetSampleFormat() == SampleFormats::None);
    EXPECT_FALSE(Audio::Create(TreeOf("c{Layout=1}"))->ExistsChannelLayout());
    for (const auto& [node, isMain] : {std::pair("c", false), {"c{MainStream=1}", false}, {"c{MainStream=true}", true}})
        EXPECT_EQ(Audio::Create(TreeOf(node))->GetMainStream(), isMain) << node;
    EXPECT_EQ(sound->GetStreamType(), StreamType::Audio);
    EXPECT_EQ(Video::Create(Property())->GetStreamType(), StreamType::Video);
    EXPECT_EQ(IFormatCodecSubtitle::Create(Property())->GetStreamType(), StreamType::Subtitle);
}

}  // namespace
}  // namespace Kestro::Conf
