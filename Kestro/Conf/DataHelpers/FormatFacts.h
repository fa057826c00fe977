#pragma once

#include "Kestro/Conf/DataHelpers/FormatSheet.h"
#include "Kestro/Conf/DataHelpers/SharedRows.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"

/// What the sheets of many containers share.
namespace Kestro::Conf {

inline constexpr SettingRow kNotForPsp{.tag = IFormatFile::TAG_PSP_MODE, .initial = false};
inline constexpr SettingRow kNotProgressive{.tag = IFormatFile::TAG_PROGRESSIVE_READ, .initial = false};

/// The codecs of Matroska's sound.
inline constexpr Text kMatroskaAudio[] = {
    IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_AC3,  IFormatCodecAudio::CODEC_ID_DTS,
    IFormatCodecAudio::CODEC_ID_MP3, IFormatCodecAudio::CODEC_ID_ALAC, IFormatCodecAudio::CODEC_ID_VORBIS,
};

/// A container of one picture and many sound and subtitle tracks.
inline constexpr StreamLimits kOneVideoAndMany{.video = 1, .audio = 16, .subtitle = 16, .other = 16};

/// The cover picture of an audio file: its stream, and that it is nothing else.
inline constexpr Text kCoverCodecs[] = {IFormatCodecVideo::CODEC_ID_MJPEG, IFormatCodecVideo::CODEC_ID_PNG,
                                        IFormatCodecVideo::CODEC_ID_BMP};
inline constexpr StreamRow kCover{.type = StreamType::Video,
                                  .codecs = kCoverCodecs,
                                  .defaultCodec = IFormatCodecVideo::CODEC_ID_MJPEG,
                                  .isCover = true};
inline constexpr FormatRuleRow kCoverRules[] = {
    {.type = StreamType::Video,
     .tag = IFormatCodecVideo::TAG_COVER_FLAG,
     .node = Node::InFormat,
     .allowed = Flag{true}},
};

/// The sample rates of sound, of every codec that the container takes.
constexpr FormatRuleRow AudioRate(std::span<const int64_t> rates) {
    return {.type = StreamType::Audio,
            .tag = IFormatCodecAudio::TAG_SAMPLE_RATE,
            .node = Node::Resampler,
            .allowed = Integers{rates}};
}
/// The frame rates of those video codecs; none: of all that the container takes.
constexpr FormatRuleRow VideoRate(std::span<const Text> codecs, std::span<const FrameRate> rates) {
    return {.type = StreamType::Video,
            .codecs = codecs,
            .tag = IFormatCodecVideo::TAG_FPS,
            .node = Node::FrameRate,
            .allowed = Rates{rates}};
}

/// The rates that Flash plays.
inline constexpr int64_t kFlashSampleRates[] = {11'025, 22'050, 44'100};
inline constexpr FormatRuleRow kFlashRules[] = {AudioRate(kFlashSampleRates)};

inline constexpr Text kMpegVideo[] = {IFormatCodecVideo::CODEC_ID_MPEG1VIDEO, IFormatCodecVideo::CODEC_ID_MPEG2VIDEO};

inline constexpr StreamRow kMpegVideoStream{
    .type = StreamType::Video, .codecs = kMpegVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO};

/// The codecs of a transport stream, and its streams.
inline constexpr Text kTransportVideo[] = {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, IFormatCodecVideo::CODEC_ID_H264,
                                           IFormatCodecVideo::CODEC_ID_H265};
inline constexpr Text kTransportAudio[] = {IFormatCodecAudio::CODEC_ID_MP2, IFormatCodecAudio::CODEC_ID_MP3,
                                           IFormatCodecAudio::CODEC_ID_AAC, IFormatCodecAudio::CODEC_ID_AC3};
inline constexpr Text kTransportSubtitles[] = {IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE,
                                               IFormatCodecSubtitle::CODEC_ID_DVB_TELETEXT};

inline constexpr StreamRow kTransportVideoStream{
    .type = StreamType::Video, .codecs = kTransportVideo, .defaultCodec = IFormatCodecVideo::CODEC_ID_MPEG2VIDEO};
constexpr StreamRow TransportAudioStream(Text defaultCodec) {
    return {.type = StreamType::Audio, .codecs = kTransportAudio, .defaultCodec = defaultCodec};
}
inline constexpr StreamRow kTransportSubtitleStream{.type = StreamType::Subtitle,
                                                    .codecs = kTransportSubtitles,
                                                    .defaultCodec = IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE};

inline constexpr SettingRow kNoGlobalHeader{.tag = IFormatCodec::TAG_GLOBAL_HEADER, .initial = false};

/// A file of one stream, whose codec goes by the file's name.
struct OneStreamSheet {
    Text codecs[1];
    StreamRow streams[1];
    FormatSheet sheet;

    OneStreamSheet(StreamType type, const std::string& codecId, std::span<const SettingRow> settings,
                   const StreamLimits& limits)
        : codecs{codecId},
          streams{{.type = type, .codecs = codecs, .defaultCodec = codecId}},
          sheet{.container = IFormatFile::FORMAT_IMAGE2, .settings = settings, .limits = limits, .streams = streams} {}
    OneStreamSheet(const OneStreamSheet&) = delete;
    OneStreamSheet& operator=(const OneStreamSheet&) = delete;
};

}  // namespace Kestro::Conf
