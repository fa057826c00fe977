#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <string>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Export.h"

namespace Kestro::Conf {

/// Whether the container keeps codec extradata in a global header. Throws HelperException for an empty name and, from
/// the registry, for one that it does not hold.
KESTRO_DATAHELPERS_API bool FormatHasGlobalHeader(const std::string& formatName);

/// Whether the encoder is to write its extradata into a global header. False for an id that is neither an audio nor a
/// video codec's; throws HelperException, from the registry, for a codec that has no helper.
KESTRO_DATAHELPERS_API bool CodecHasGlobalHeader(const std::string& codecId);

/// Whether FFmpeg's muxer of that container stores the codec so that FFmpeg's demuxer reads the same stream back. The
/// description needs a codec id and a codec tag (0: the muxer chooses one), else the answer is false. What it has of
/// sample rate, channel layout and, of a picture, pixel format is held to what the muxer insists on. The muxer's
/// default codecs are always supported; a lossless video stream must be the main one. Never throws: what is not known
/// is not supported.
KESTRO_DATAHELPERS_API bool CodecIsSupported(const boost::intrusive_ptr<const IFormatFile>& file,
                                             const boost::intrusive_ptr<const IFormatCodec>& codec);

}  // namespace Kestro::Conf
