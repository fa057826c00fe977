#pragma once

#include <functional>
#include <span>
#include <string>

#include "Kestro/Export.h"

namespace Kestro::Conf {

/// The codec ids of IFormatCodecAudio: `for (const std::string& id : AudioCodecIds())`.
KESTRO_CONFINT_API std::span<const std::reference_wrapper<const std::string>> AudioCodecIds();
/// The codec ids of IFormatCodecVideo, images included.
KESTRO_CONFINT_API std::span<const std::reference_wrapper<const std::string>> VideoCodecIds();
/// The codec ids of IFormatCodecSubtitle.
KESTRO_CONFINT_API std::span<const std::reference_wrapper<const std::string>> SubtitleCodecIds();

/// Whether the id is one of AudioCodecIds() (VideoCodecIds()). IFormatCodec::CODEC_ID_AUTO is neither.
KESTRO_CONFINT_API bool IsAudioCodec(const std::string& codecId);
KESTRO_CONFINT_API bool IsVideoCodec(const std::string& codecId);

}  // namespace Kestro::Conf
