#pragma once

#include "Kestro/Conf/DataHelpers/FormatSheet.h"
#include "Kestro/Conf/DataHelpers/SharedRows.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
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
    {.type = StreamType::Video, .tag = IFormatCodecVideo::TAG_COVER_FLAG, .node = Node::Own, .allowed = Flag{true}},
};

inline constexpr SettingRow kNoGlobalHeader{.tag = IFormatCodec::TAG_GLOBAL_HEADER, .initial = false};

}  // namespace Kestro::Conf
