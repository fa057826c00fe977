#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/channel_layout.h>
#include <libavutil/pixdesc.h>
}

#include "Kestro/Conf/CodecKinds.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/LayoutRecord.h"
#include "Kestro/FFWrapper/ChannelLayoutMapping.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"
#include "Kestro/FFWrapper/EncoderCapabilities.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/EncoderTakesPixelFormat.h"
#include "Kestro/FFWrapper/SampleFormatMapping.h"

namespace Kestro::FFWrapper {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecAudio;
using Conf::IFormatCodecSubtitle;
using Conf::IFormatCodecVideo;
using testing::Contains;

std::vector<std::string> AllCodecIds() {
    std::vector<std::string> ids(Conf::AudioCodecIds().begin(), Conf::AudioCodecIds().end());
    ids.insert(ids.end(), Conf::VideoCodecIds().begin(), Conf::VideoCodecIds().end());
    return ids;
}

TEST(CodecIds, NameFfmpegsCodecs) {
    for (const std::string& id : AllCodecIds()) {
        const AVCodecDescriptor* descriptor = avcodec_descriptor_get(CodecIDFromTextID(id));
        ASSERT_NE(descriptor, nullptr) << id;
        EXPECT_EQ(descriptor->name, id);
        EXPECT_EQ(descriptor->type == AVMEDIA_TYPE_AUDIO, Conf::IsAudioCodec(id)) << id;
        EXPECT_EQ(descriptor->type == AVMEDIA_TYPE_VIDEO, Conf::IsVideoCodec(id)) << id;
    }
    const std::pair<const std::string&, AVCodecID> others[] = {
        {IFormatCodecSubtitle::CODEC_ID_SRT, AV_CODEC_ID_SUBRIP},
        {IFormatCodecSubtitle::CODEC_ID_SUBRIP, AV_CODEC_ID_SUBRIP},
        {IFormatCodecSubtitle::CODEC_ID_SSA, AV_CODEC_ID_ASS},
        {IFormatCodecSubtitle::CODEC_ID_ASS, AV_CODEC_ID_ASS},
        {IFormatCodecSubtitle::CODEC_ID_TEXT, AV_CODEC_ID_TEXT},
        {IFormatCodecSubtitle::CODEC_ID_MOV_TEXT, AV_CODEC_ID_MOV_TEXT},
        {IFormatCodecSubtitle::CODEC_ID_XSUB, AV_CODEC_ID_XSUB},
        {IFormatCodecSubtitle::CODEC_ID_DVB_TELETEXT, AV_CODEC_ID_DVB_TELETEXT},
        {IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE, AV_CODEC_ID_DVB_SUBTITLE},
        {IFormatCodecSubtitle::CODEC_ID_DVD_SUBTITLE, AV_CODEC_ID_DVD_SUBTITLE},
        {IFormatCodecSubtitle::CODEC_ID_HDMV_PGS_SUBTITLE, AV_CODEC_ID_HDMV_PGS_SUBTITLE},
        {IFormatCodec::CODEC_ID_AUTO, AV_CODEC_ID_NONE},
    };
    for (const auto& [text, id] : others) EXPECT_EQ(CodecIDFromTextID(text), id) << text;
    for (const std::string& text :
         {std::string(), std::string("H264"), std::string("h264 "), std::string("h264\0x", 6)}) {
        EXPECT_EQ(CodecIDFromTextID(text), AV_CODEC_ID_NONE) << text;
    }
}

TEST(Encoders, AreFoundWhereverFfmpegHasOne) {
    for (const std::string& id : AllCodecIds()) {
        const std::string name = EncoderNameFromCodecId(id);
        EXPECT_EQ(name.empty(), avcodec_find_encoder(CodecIDFromTextID(id)) == nullptr) << id;
        if (name.empty()) continue;
        const AVCodec* encoder = avcodec_find_encoder_by_name(name.c_str());
        ASSERT_NE(encoder, nullptr) << id;
        EXPECT_EQ(encoder->id, CodecIDFromTextID(id)) << name;
    }
    for (const auto& [id, preferred] : {std::pair(IFormatCodecVideo::CODEC_ID_H264, "libx264"),
                                        {IFormatCodecVideo::CODEC_ID_AV1, "libsvtav1"},
                                        {IFormatCodecVideo::CODEC_ID_PRORES, "prores_ks"},
                                        {IFormatCodecAudio::CODEC_ID_VORBIS, "libvorbis"}}) {
        if (avcodec_find_encoder_by_name(preferred) != nullptr) {
            EXPECT_EQ(EncoderNameFromCodecId(id), preferred);
        }
    }
    EXPECT_NE(EncoderNameFromCodecId(IFormatCodecSubtitle::CODEC_ID_SRT), "");
    EXPECT_EQ(EncoderNameFromCodecId(IFormatCodec::CODEC_ID_AUTO), "");
    EXPECT_EQ(EncoderNameFromCodecId(""), "");
}

TEST(Mappings, GoBackToTheRecords) {
    for (const Conf::LayoutRecord& record : Conf::LayoutRecord::All()) {
        EXPECT_TRUE(ChannelLayoutFFMPEGIsSupported(record.ffmpegMask)) << record.name;
        EXPECT_EQ(ChannelLayoutKestroFromFFMPEG(record.ffmpegMask), record.code) << record.name;
    }
    for (const uint64_t mask : {uint64_t{0}, uint64_t{AV_CH_BACK_LEFT}, UINT64_MAX}) {
        EXPECT_FALSE(ChannelLayoutFFMPEGIsSupported(mask)) << mask;
        EXPECT_EQ(ChannelLayoutKestroFromFFMPEG(mask), Conf::ChannelLayout::Unknown) << mask;
    }
    EXPECT_EQ(SampleFormatKestroFromFFMPEG(AV_SAMPLE_FMT_FLTP), Conf::SampleFormats::Fltp);
    EXPECT_EQ(SampleFormatKestroFromFFMPEG(AV_SAMPLE_FMT_S64P), Conf::SampleFormats::S64p);
    EXPECT_EQ(SampleFormatKestroFromFFMPEG(AV_SAMPLE_FMT_NONE), Conf::SampleFormats::None);
    EXPECT_EQ(SampleFormatKestroFromFFMPEG(AV_SAMPLE_FMT_NB), Conf::SampleFormats::None);
}

TEST(Encoders, TakeThePixelFormatsOfTheirLists) {
    for (const std::string& id : Conf::VideoCodecIds()) {
        const auto encoder = EncoderCapabilities::Find(EncoderNameFromCodecId(id));
        const auto formats = encoder ? encoder->pixelFormats : std::vector<std::string>();
        for (int format = 0; av_get_pix_fmt_name(static_cast<AVPixelFormat>(format)) != nullptr; ++format) {
            const std::string name = av_get_pix_fmt_name(static_cast<AVPixelFormat>(format));
            const bool isListed = formats.empty() || std::ranges::find(formats, name) != formats.end();
            EXPECT_EQ(EncoderTakesPixelFormat(id, name), isListed) << id << " " << name;
        }
        EXPECT_FALSE(EncoderTakesPixelFormat(id, "no such format"));
    }
}

TEST(Capabilities, OfEveryEncoderAreWellFormed) {
    for (const std::string& id : AllCodecIds()) {
        const std::string name = EncoderNameFromCodecId(id);
        if (name.empty()) continue;
        SCOPED_TRACE(name);
        const auto capabilities = EncoderCapabilities::Find(name);
        ASSERT_TRUE(capabilities.has_value());
        EXPECT_THAT(capabilities->sampleRates, testing::Each(testing::Gt(0)));
        EXPECT_THAT(capabilities->sampleFormats, testing::Not(Contains(Conf::SampleFormats::None)));
        EXPECT_THAT(capabilities->channelLayouts, testing::Each(testing::Gt(0u)));
        for (const std::string& format : capabilities->pixelFormats) {
            EXPECT_NE(av_get_pix_fmt(format.c_str()), AV_PIX_FMT_NONE) << format;
        }
        if (Conf::IsAudioCodec(id)) {
            EXPECT_FALSE(capabilities->sampleFormats.empty());
            EXPECT_TRUE(capabilities->pixelFormats.empty() && capabilities->frameRates.empty());
        } else {
            EXPECT_TRUE(capabilities->sampleFormats.empty() && capabilities->channelLayouts.empty());
        }
    }
}

TEST(Capabilities, HaveNoListWhereTheEncoderDoesNotMind) {
    const auto pcm = EncoderCapabilities::Find("pcm_s16le").value();
    EXPECT_TRUE(pcm.sampleRates.empty() && pcm.channelLayouts.empty());
    EXPECT_THAT(pcm.sampleFormats, testing::ElementsAre(Conf::SampleFormats::S16));
    EXPECT_FALSE(EncoderCapabilities::Find("no encoder").has_value());
    EXPECT_FALSE(EncoderCapabilities::Find("").has_value());
}

}  // namespace
}  // namespace Kestro::FFWrapper
