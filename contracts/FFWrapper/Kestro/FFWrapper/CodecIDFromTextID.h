#pragma once

#include <cstdint>  // FFmpeg's headers insist on its macros
#include <string>

extern "C" {
#include <libavcodec/codec_id.h>
}

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// FFmpeg's id of a codec that is named by a codec id of Conf::IFormatCodecAudio, Video or Subtitle, or by any name of
/// FFmpeg's codec descriptors. AV_CODEC_ID_NONE for any other text, Conf::IFormatCodec::CODEC_ID_AUTO included.
///
/// FFmpeg writes nothing under its own ids srt and ssa: they lead to AV_CODEC_ID_SUBRIP and AV_CODEC_ID_ASS.
KESTRO_FFWRAPPER_API AVCodecID CodecIDFromTextID(const std::string& codecId);

}  // namespace Kestro::FFWrapper
