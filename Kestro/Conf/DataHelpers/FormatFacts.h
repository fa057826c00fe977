#pragma once

#include "Kestro/Conf/DataHelpers/FormatSheet.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"

/// What the sheets of many containers share.
namespace Kestro::Conf {

/// Settings of a file that is made neither for a PSP nor to be played while it is downloaded.
inline constexpr SettingRow kNotForPsp{.tag = IFormatFile::TAG_PSP_MODE, .initial = false};
inline constexpr SettingRow kNotProgressive{.tag = IFormatFile::TAG_PROGRESSIVE_READ, .initial = false};

/// The audio codecs of Matroska.
inline constexpr Codecs kMatroskaAudio = {
    IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_AC3,  IFormatCodecAudio::CODEC_ID_DTS,
    IFormatCodecAudio::CODEC_ID_MP3, IFormatCodecAudio::CODEC_ID_ALAC, IFormatCodecAudio::CODEC_ID_VORBIS,
};

/// Of a container of one video stream and many audio and subtitle streams.
inline constexpr StreamLimits kOneVideoAndMany{.video = 1, .audio = 16, .subtitle = 16, .other = 16};

/// The cover picture of an audio file, and the rule that the video stream is nothing else.
inline constexpr StreamRow kCover{
    .type = StreamType::Video,
    .codecs = {IFormatCodecVideo::CODEC_ID_MJPEG, IFormatCodecVideo::CODEC_ID_PNG, IFormatCodecVideo::CODEC_ID_BMP},
    .defaultCodec = IFormatCodecVideo::CODEC_ID_MJPEG,
    .isCover = true};
inline constexpr FormatRuleRow kCoverRule{
    .type = StreamType::Video, .tag = IFormatCodecVideo::TAG_COVER_FLAG, .node = Node::InFormat, .allowed = Flag{true}};

/// Limits the sample rates, or the frame rates, of those codecs; without codecs, of all that the container takes.
constexpr FormatRuleRow AudioRate(std::span<const int64_t> rates, const Codecs& codecs = {}) {
    return {.type = StreamType::Audio,
            .codecs = codecs,
            .tag = IFormatCodecAudio::TAG_SAMPLE_RATE,
            .node = Node::Resampler,
            .allowed = Integers{rates}};
}
constexpr FormatRuleRow VideoRate(std::span<const FrameRate> rates, const Codecs& codecs = {}) {
    return {.type = StreamType::Video,
            .codecs = codecs,
            .tag = IFormatCodecVideo::TAG_FPS,
            .node = Node::FrameRate,
            .allowed = Rates{rates}};
}

inline constexpr int64_t kFlashSampleRates[] = {11'025, 22'050, 44'100};
/// Of MP3 in MP4 files.
inline constexpr int64_t kMp4Mp3SampleRates[] = {44'100, 48'000, 32'000, 22'050, 24'000, 16'000};
/// Of discs and of professional video.
inline constexpr int64_t k48kHz[] = {48'000};

inline constexpr Codecs kMpegVideo = {IFormatCodecVideo::CODEC_ID_MPEG1VIDEO, IFormatCodecVideo::CODEC_ID_MPEG2VIDEO};

inline constexpr StreamRow kMpegVideoStream{
    .type = StreamType::Video, .codecs = kMpegVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO};

/// The streams of a transport stream.
inline constexpr StreamRow kTransportVideoStream{
    .type = StreamType::Video,
    .codecs = {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, IFormatCodecVideo::CODEC_ID_H264,
               IFormatCodecVideo::CODEC_ID_H265},
    .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO};
constexpr StreamRow TransportAudioStream(Text defaultCodec) {
    return {.type = StreamType::Audio,
            .codecs = {IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_MP3,
                       IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_AC3},
            .defaultCodec = defaultCodec};
}
inline constexpr StreamRow kTransportSubtitleStream{
    .type = StreamType::Subtitle,
    .codecs = {IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE, IFormatCodecSubtitle::CODEC_ID_DVB_TELETEXT},
    .defaultCodec = IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE};

}  // namespace Kestro::Conf
