#include "Kestro/Conf/CodecKinds.h"

#include <algorithm>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {
namespace {

using CodecIds = std::span<const std::reference_wrapper<const std::string>>;

constexpr std::reference_wrapper<const std::string> kAudioCodecIds[] = {
    IFormatCodecAudio::CODEC_ID_AAC,       IFormatCodecAudio::CODEC_ID_AC3,       IFormatCodecAudio::CODEC_ID_DTS,
    IFormatCodecAudio::CODEC_ID_MP3,       IFormatCodecAudio::CODEC_ID_MP2,       IFormatCodecAudio::CODEC_ID_FLAC,
    IFormatCodecAudio::CODEC_ID_ALAC,      IFormatCodecAudio::CODEC_ID_AMR_NB,    IFormatCodecAudio::CODEC_ID_WMAV2,
    IFormatCodecAudio::CODEC_ID_VORBIS,    IFormatCodecAudio::CODEC_ID_PCM_S8,    IFormatCodecAudio::CODEC_ID_PCM_U8,
    IFormatCodecAudio::CODEC_ID_PCM_S16LE, IFormatCodecAudio::CODEC_ID_PCM_S16BE, IFormatCodecAudio::CODEC_ID_PCM_U16LE,
    IFormatCodecAudio::CODEC_ID_PCM_U16BE, IFormatCodecAudio::CODEC_ID_PCM_S24LE, IFormatCodecAudio::CODEC_ID_PCM_S24BE,
    IFormatCodecAudio::CODEC_ID_PCM_U24LE, IFormatCodecAudio::CODEC_ID_PCM_U24BE, IFormatCodecAudio::CODEC_ID_PCM_S32LE,
    IFormatCodecAudio::CODEC_ID_PCM_S32BE, IFormatCodecAudio::CODEC_ID_PCM_U32LE, IFormatCodecAudio::CODEC_ID_PCM_U32BE,
};

constexpr std::reference_wrapper<const std::string> kVideoCodecIds[] = {
    IFormatCodecVideo::CODEC_ID_H264,       IFormatCodecVideo::CODEC_ID_H265,       IFormatCodecVideo::CODEC_ID_MPEG4,
    IFormatCodecVideo::CODEC_ID_MPEG1VIDEO, IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, IFormatCodecVideo::CODEC_ID_H263,
    IFormatCodecVideo::CODEC_ID_THEORA,     IFormatCodecVideo::CODEC_ID_VP8,        IFormatCodecVideo::CODEC_ID_VP9,
    IFormatCodecVideo::CODEC_ID_AV1,        IFormatCodecVideo::CODEC_ID_PRORES,     IFormatCodecVideo::CODEC_ID_QTRLE,
    IFormatCodecVideo::CODEC_ID_WMV2,       IFormatCodecVideo::CODEC_ID_WMV3,       IFormatCodecVideo::CODEC_ID_FLV1,
    IFormatCodecVideo::CODEC_ID_DVVIDEO,    IFormatCodecVideo::CODEC_ID_UTVIDEO,    IFormatCodecVideo::CODEC_ID_MJPEG,
    IFormatCodecVideo::CODEC_ID_BMP,        IFormatCodecVideo::CODEC_ID_GIF,        IFormatCodecVideo::CODEC_ID_PNG,
    IFormatCodecVideo::CODEC_ID_APNG,       IFormatCodecVideo::CODEC_ID_TIFF,       IFormatCodecVideo::CODEC_ID_DPX,
    IFormatCodecVideo::CODEC_ID_JPEG2000,   IFormatCodecVideo::CODEC_ID_JPEGLS,     IFormatCodecVideo::CODEC_ID_PBM,
    IFormatCodecVideo::CODEC_ID_PCX,        IFormatCodecVideo::CODEC_ID_PGM,        IFormatCodecVideo::CODEC_ID_PGMYUV,
    IFormatCodecVideo::CODEC_ID_PPM,        IFormatCodecVideo::CODEC_ID_PAM,        IFormatCodecVideo::CODEC_ID_TARGA,
    IFormatCodecVideo::CODEC_ID_XBM,        IFormatCodecVideo::CODEC_ID_SGI,        IFormatCodecVideo::CODEC_ID_XWD,
};

constexpr std::reference_wrapper<const std::string> kSubtitleCodecIds[] = {
    IFormatCodecSubtitle::CODEC_ID_SRT,
    IFormatCodecSubtitle::CODEC_ID_SUBRIP,
    IFormatCodecSubtitle::CODEC_ID_SSA,
    IFormatCodecSubtitle::CODEC_ID_ASS,
    IFormatCodecSubtitle::CODEC_ID_TEXT,
    IFormatCodecSubtitle::CODEC_ID_MOV_TEXT,
    IFormatCodecSubtitle::CODEC_ID_XSUB,
    IFormatCodecSubtitle::CODEC_ID_DVB_TELETEXT,
    IFormatCodecSubtitle::CODEC_ID_DVB_SUBTITLE,
    IFormatCodecSubtitle::CODEC_ID_DVD_SUBTITLE,
    IFormatCodecSubtitle::CODEC_ID_HDMV_PGS_SUBTITLE,
};

bool Contains(CodecIds ids, const std::string& codecId) {
    return std::ranges::any_of(ids, [&codecId](const std::string& id) { return id == codecId; });
}

}  // namespace

CodecIds AudioCodecIds() { return kAudioCodecIds; }

CodecIds VideoCodecIds() { return kVideoCodecIds; }

CodecIds SubtitleCodecIds() { return kSubtitleCodecIds; }

bool IsAudioCodec(const std::string& codecId) { return Contains(kAudioCodecIds, codecId); }

bool IsVideoCodec(const std::string& codecId) { return Contains(kVideoCodecIds, codecId); }

}  // namespace Kestro::Conf
