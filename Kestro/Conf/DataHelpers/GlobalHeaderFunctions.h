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

/// Whether FFmpeg's muxer of that container stores the codec so that FFmpeg's demuxer reads the same stream back. Never
/// throws: what is not known is not supported.
///
/// The container is named as for av_guess_format. mpeg2ts is written by the muxer mpegts, mpeg1video by mpeg,
/// mpeg2video by vob, wmv and wma by asf, m4a and m4v by ipod. These have no muxer of their own, and the answer is
/// false: m4b, m4r and f4a (ask for ipod), mka (matroska), ssa (ass), and the single pictures bmp, dpx, jpeg2000,
/// jpegls, pam, pbm, pcx, pgm, pgmyuv, png, ppm, sgi, targa, tiff, xbm and xwd (image2).
///
/// The description needs a codec id and a codec tag: without a tag it is never supported, 0 leaves the choice to the
/// muxer, and so do the tags "AC-3" of AC-3 and "mp4v" and "XVID" of MPEG-4, which many sources have. What it has of
/// sample rate, channel layout and, of a picture, pixel format is held to what the muxer insists on.
///
/// The muxer's default codecs are supported whatever else is said of them, but a lossless (copied) video stream must be
/// the main one. Of another lossless stream, a muxer that has tag tables is asked for a tag alone: yes means that it
/// has one, not that the stream reads back.
KESTRO_DATAHELPERS_API bool CodecIsSupported(const boost::intrusive_ptr<const IFormatFile>& file,
                                             const boost::intrusive_ptr<const IFormatCodec>& codec);

}  // namespace Kestro::Conf
