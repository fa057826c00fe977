#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <string>

#include "Kestro/Constant.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Export.h"
#include "Kestro/IRefCountable.h"

namespace Kestro::Conf {

/// Vocabulary of a preset's format node, and an immutable description of one output file.
///
/// Exists... and Get... are as IFormatCodec has them. Safe to use from any number of threads.
class KESTRO_CONFINT_API IFormatFile : public virtual IRefCountable {
public:
    /// Format name, text: a FORMAT_ constant.
    static KESTRO_CONSTANT std::string TAG_CONTAINER = "Container";

    /// Node: how many streams of each kind the file may have, integers.
    static KESTRO_CONSTANT std::string TAG_LIMITS = "Limits";
    static KESTRO_CONSTANT std::string TAG_LIMITS_AUDIO = "MaxAudio";
    static KESTRO_CONSTANT std::string TAG_LIMITS_VIDEO = "MaxVideo";
    static KESTRO_CONSTANT std::string TAG_LIMITS_SUBTITLE = "MaxSubtitle";
    static KESTRO_CONSTANT std::string TAG_LIMITS_OTHER = "MaxOther";

    /// Whether the file can be played while it is still being loaded, boolean.
    static KESTRO_CONSTANT std::string TAG_PROGRESSIVE_READ = "Progressive";
    /// Whether the file is written for the handheld console's player (FFmpeg's muxer psp), boolean.
    static KESTRO_CONSTANT std::string TAG_PSP_MODE = "PspMode";

    /// Capacity of the disk that the file is made for, integer, bytes: its user sectors of 2048 bytes.
    static KESTRO_CONSTANT std::string TAG_DISK_SIZE = "DiskSize";
    static constexpr int64_t DISK_SIZE_DVD_MINI = 1'459'978'240;
    static constexpr int64_t DISK_SIZE_DVD_STANDARD = 4'700'372'992;
    static constexpr int64_t DISK_SIZE_DVD_DOUBLE_LAYER = 8'543'666'176;
    /// The same disks by name.
    static KESTRO_CONSTANT std::string DISK_TYPE_DVD_MINI = "dvd-mini";
    static KESTRO_CONSTANT std::string DISK_TYPE_DVD_STANDARD = "dvd-standard";
    static KESTRO_CONSTANT std::string DISK_TYPE_DVD_DOUBLE_LAYER = "dvd-double";
    /// Television system of a DVD, text.
    static KESTRO_CONSTANT std::string TAG_DVD_STANDARD = "DvdStandard";
    static KESTRO_CONSTANT std::string DVD_STANDARD_PAL = "pal";
    static KESTRO_CONSTANT std::string DVD_STANDARD_NTSC = "ntsc";

    /// Format names: FFmpeg's muxer short name where there is a muxer.
    static KESTRO_CONSTANT std::string FORMAT_MP4 = "mp4";
    static KESTRO_CONSTANT std::string FORMAT_M4A = "m4a";
    static KESTRO_CONSTANT std::string FORMAT_M4B = "m4b";
    static KESTRO_CONSTANT std::string FORMAT_M4R = "m4r";
    static KESTRO_CONSTANT std::string FORMAT_M4V = "m4v";
    static KESTRO_CONSTANT std::string FORMAT_F4A = "f4a";
    static KESTRO_CONSTANT std::string FORMAT_IPOD = "ipod";
    static KESTRO_CONSTANT std::string FORMAT_MOV = "mov";
    static KESTRO_CONSTANT std::string FORMAT_MATROSKA = "matroska";
    static KESTRO_CONSTANT std::string FORMAT_MKA = "mka";
    static KESTRO_CONSTANT std::string FORMAT_WEBM = "webm";
    static KESTRO_CONSTANT std::string FORMAT_MPEG = "mpeg";
    static KESTRO_CONSTANT std::string FORMAT_MPEG1VIDEO = "mpeg1video";
    static KESTRO_CONSTANT std::string FORMAT_MPEG2VIDEO = "mpeg2video";
    static KESTRO_CONSTANT std::string FORMAT_MPEGTS = "mpegts";
    static KESTRO_CONSTANT std::string FORMAT_MPEG2TS = "mpeg2ts";
    static KESTRO_CONSTANT std::string FORMAT_VOB = "vob";
    static KESTRO_CONSTANT std::string FORMAT_DVD = "dvd";
    static KESTRO_CONSTANT std::string FORMAT_VCD = "vcd";
    static KESTRO_CONSTANT std::string FORMAT_SVCD = "svcd";
    static KESTRO_CONSTANT std::string FORMAT_MXF = "mxf";
    static KESTRO_CONSTANT std::string FORMAT_AVI = "avi";
    static KESTRO_CONSTANT std::string FORMAT_FLV = "flv";
    static KESTRO_CONSTANT std::string FORMAT_SWF = "swf";
    static KESTRO_CONSTANT std::string FORMAT_3GP = "3gp";
    static KESTRO_CONSTANT std::string FORMAT_3G2 = "3g2";
    static KESTRO_CONSTANT std::string FORMAT_MP3 = "mp3";
    static KESTRO_CONSTANT std::string FORMAT_AAC = "adts";
    static KESTRO_CONSTANT std::string FORMAT_AC3 = "ac3";
    static KESTRO_CONSTANT std::string FORMAT_AU = "au";
    static KESTRO_CONSTANT std::string FORMAT_OGG = "ogg";
    static KESTRO_CONSTANT std::string FORMAT_OGV = "ogv";
    static KESTRO_CONSTANT std::string FORMAT_FLAC = "flac";
    static KESTRO_CONSTANT std::string FORMAT_WAV = "wav";
    static KESTRO_CONSTANT std::string FORMAT_AIFF = "aiff";
    static KESTRO_CONSTANT std::string FORMAT_WMA = "wma";
    static KESTRO_CONSTANT std::string FORMAT_WMV = "wmv";
    static KESTRO_CONSTANT std::string FORMAT_ASF = "asf";
    static KESTRO_CONSTANT std::string FORMAT_IMAGE2 = "image2";
    static KESTRO_CONSTANT std::string FORMAT_GIF = "gif";

    /// Single images: named as their codec.
    static KESTRO_CONSTANT std::string FORMAT_BMP = "bmp";
    static KESTRO_CONSTANT std::string FORMAT_PNG = "png";
    static KESTRO_CONSTANT std::string FORMAT_APNG = "apng";
    static KESTRO_CONSTANT std::string FORMAT_TIFF = "tiff";
    static KESTRO_CONSTANT std::string FORMAT_DPX = "dpx";
    static KESTRO_CONSTANT std::string FORMAT_JPEG2000 = "jpeg2000";
    static KESTRO_CONSTANT std::string FORMAT_JPEGLS = "jpegls";
    static KESTRO_CONSTANT std::string FORMAT_PBM = "pbm";
    static KESTRO_CONSTANT std::string FORMAT_PCX = "pcx";
    static KESTRO_CONSTANT std::string FORMAT_PGM = "pgm";
    static KESTRO_CONSTANT std::string FORMAT_PGMYUV = "pgmyuv";
    static KESTRO_CONSTANT std::string FORMAT_PPM = "ppm";
    static KESTRO_CONSTANT std::string FORMAT_PAM = "pam";
    static KESTRO_CONSTANT std::string FORMAT_TARGA = "targa";
    static KESTRO_CONSTANT std::string FORMAT_XBM = "xbm";
    static KESTRO_CONSTANT std::string FORMAT_SGI = "sgi";
    static KESTRO_CONSTANT std::string FORMAT_XWD = "xwd";

    /// Subtitles.
    static KESTRO_CONSTANT std::string FORMAT_SRT = "srt";
    static KESTRO_CONSTANT std::string FORMAT_SSA = "ssa";
    static KESTRO_CONSTANT std::string FORMAT_ASS = "ass";

    ~IFormatFile() override;

    /// Describes the file of that format node, which is copied. Any content is taken.
    static boost::intrusive_ptr<const IFormatFile> Create(const Core::Property& format);

    virtual bool ExistsFormatName() const = 0;
    virtual const std::string& GetFormatName() const = 0;
};

}  // namespace Kestro::Conf
