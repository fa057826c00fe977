#include "Kestro/FFWrapper/FindEncoder.h"

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/FFWrapper/CodecIDFromTextID.h"

namespace Kestro::FFWrapper {
namespace {

using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;

struct Preference {
    const std::string& codecId;
    const char* encoder;
};

// Where FFmpeg has several encoders for a codec: the wanted one, best first.
constexpr Preference kPreferences[] = {
    {IFormatCodecVideo::CODEC_ID_H264, "libx264"},
    {IFormatCodecVideo::CODEC_ID_H265, "libx265"},
    {IFormatCodecVideo::CODEC_ID_VP8, "libvpx"},
    {IFormatCodecVideo::CODEC_ID_VP9, "libvpx-vp9"},
    {IFormatCodecVideo::CODEC_ID_AV1, "libsvtav1"},
    {IFormatCodecVideo::CODEC_ID_AV1, "libaom-av1"},
    {IFormatCodecVideo::CODEC_ID_THEORA, "libtheora"},
    {IFormatCodecVideo::CODEC_ID_MPEG4, "mpeg4"},
    {IFormatCodecVideo::CODEC_ID_PRORES, "prores_ks"},
    {IFormatCodecVideo::CODEC_ID_JPEG2000, "jpeg2000"},
    {IFormatCodecVideo::CODEC_ID_MJPEG, "mjpeg"},
    {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, "mpeg2video"},
    {IFormatCodecAudio::CODEC_ID_AAC, "aac"},
    {IFormatCodecAudio::CODEC_ID_AC3, "ac3"},
    {IFormatCodecAudio::CODEC_ID_DTS, "dca"},
    {IFormatCodecAudio::CODEC_ID_MP2, "mp2"},
    {IFormatCodecAudio::CODEC_ID_MP3, "libmp3lame"},
    {IFormatCodecAudio::CODEC_ID_VORBIS, "libvorbis"},
    {IFormatCodecAudio::CODEC_ID_AMR_NB, "libopencore_amrnb"},
};

}  // namespace

const AVCodec* FindEncoder(const std::string& codecId) {
    for (const Preference& preference : kPreferences) {
        if (preference.codecId != codecId) continue;
        if (const AVCodec* encoder = avcodec_find_encoder_by_name(preference.encoder)) return encoder;
    }
    return avcodec_find_encoder(CodecIDFromTextID(codecId));
}

}  // namespace Kestro::FFWrapper
