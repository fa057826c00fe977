#pragma once

#include <boost/rational.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <string>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Core/Property.h"

namespace Kestro::Conf {

/// Vocabulary of a video codec node, and the immutable description of one video stream's codec.
class KESTRO_CONFINT_API IFormatCodecVideo : public IFormatCodec {
public:
    /// Class name of video codec descriptions; the registry takes it for IPreset::KEY_FILTER_VIDEO_CODEC.
    static KESTRO_CONSTANT std::string TAG_FORMAT_CODEC_VIDEO = "CodecVideo";

    /// Frame size in pixels, integers.
    static KESTRO_CONSTANT std::string TAG_WIDTH = "Width";
    static KESTRO_CONSTANT std::string TAG_HEIGHT = "Height";
    /// Sample aspect ratio: the shape in which a pixel is shown, such as 16 and 15, integers.
    static KESTRO_CONSTANT std::string TAG_ASPECTX = "AspectX";
    static KESTRO_CONSTANT std::string TAG_ASPECTY = "AspectY";
    /// Frames per second, rational.
    static KESTRO_CONSTANT std::string TAG_FPS = "Fps";
    /// Longest run of B frames, integer.
    static KESTRO_CONSTANT std::string TAG_MAX_B_FRAME_SEQUENCE = "MaxBFrames";
    /// Greatest distance between two key frames, in frames, integer.
    static KESTRO_CONSTANT std::string TAG_MAX_I_FRAME_INTERVAL = "KeyInterval";
    /// Colour depth, integer.
    static KESTRO_CONSTANT std::string TAG_BITS_PER_PIXEL = "BitsPerPixel";
    /// Pixel format, text: FFmpeg's name.
    static KESTRO_CONSTANT std::string TAG_PIXEL_FORMAT = "PixelFmt";
    /// Whether the stream is a cover picture, boolean.
    static KESTRO_CONSTANT std::string TAG_COVER_FLAG = "Cover";
    /// In the encoder's options, boolean: a variable bitrate preset brings the bitrate that it was approved with.
    static KESTRO_CONSTANT std::string TAG_APPROVED_VBR_MODE_ONLY = "ApprovedVbrOnly";

    /// The greatest video bitrate that is offered, bit/s: MaxBR of H.264 level 6.2 (ITU-T H.264, table A-1).
    static constexpr int64_t MAX_VIDEO_BITRATE = 800'000'000;
    /// The least video bitrate that is ever chosen by default, bit/s.
    static constexpr int64_t MIN_VIDEO_BITRATE = 100'000;

    /// H.264: presets, tunes and profiles are the encoder's own words.
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_ULTRAFAST = "ultrafast";
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_SUPERFAST = "superfast";
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_VERYFAST = "veryfast";
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_FASTER = "faster";
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_FAST = "fast";
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_MEDIUM = "medium";
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_SLOW = "slow";
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_SLOWER = "slower";
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_VERYSLOW = "veryslow";
    static KESTRO_CONSTANT std::string TAG_X264_PRESET_PLACEBO = "placebo";

    static KESTRO_CONSTANT std::string TAG_X264_TUNE = "Tune";
    static KESTRO_CONSTANT std::string TAG_X264_TUNE_FILM = "film";
    static KESTRO_CONSTANT std::string TAG_X264_TUNE_ANIMATION = "animation";
    static KESTRO_CONSTANT std::string TAG_X264_TUNE_GRAIN = "grain";
    static KESTRO_CONSTANT std::string TAG_X264_TUNE_STILLIMAGE = "stillimage";
    static KESTRO_CONSTANT std::string TAG_X264_TUNE_PSNR = "psnr";
    static KESTRO_CONSTANT std::string TAG_X264_TUNE_SSIM = "ssim";
    static KESTRO_CONSTANT std::string TAG_X264_TUNE_FASTDECODE = "fastdecode";
    static KESTRO_CONSTANT std::string TAG_X264_TUNE_ZEROLATENCY = "zerolatency";

    static KESTRO_CONSTANT std::string TAG_X264_PROFILE_BASELINE = "baseline";
    static KESTRO_CONSTANT std::string TAG_X264_PROFILE_MAIN = "main";
    static KESTRO_CONSTANT std::string TAG_X264_PROFILE_HIGH = "high";
    static KESTRO_CONSTANT std::string TAG_X264_PROFILE_HIGH10 = "high10";
    static KESTRO_CONSTANT std::string TAG_X264_PROFILE_HIGH422 = "high422";
    static KESTRO_CONSTANT std::string TAG_X264_PROFILE_HIGH444 = "high444";

    /// H.265.
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_ULTRAFAST = "ultrafast";
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_SUPERFAST = "superfast";
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_VERYFAST = "veryfast";
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_FASTER = "faster";
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_FAST = "fast";
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_MEDIUM = "medium";
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_SLOW = "slow";
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_SLOWER = "slower";
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_VERYSLOW = "veryslow";
    static KESTRO_CONSTANT std::string TAG_X265_PRESET_PLACEBO = "placebo";

    /// Differs from the H.264 profile: one text names one profile.
    static KESTRO_CONSTANT std::string TAG_X265_PROFILE_MAIN = "hevc_main";

    /// MPEG-4 part 2: FFmpeg's names.
    static KESTRO_CONSTANT std::string TAG_MPEG4_PROFILE_SIMPLE = "mpeg4_sp";
    static KESTRO_CONSTANT std::string TAG_MPEG4_PROFILE_ADVANCED_SIMPLE = "mpeg4_asp";
    static KESTRO_CONSTANT std::string TAG_MPEG4_PROFILE_CORE_SCALABLE = "mpeg4_core";
    static KESTRO_CONSTANT std::string TAG_MPEG4_PROFILE_MAIN = "mpeg4_main";

    /// Codec ids; VideoCodecIds() lists them and those of the images.
    static KESTRO_CONSTANT std::string CODEC_ID_H264 = "h264";
    static KESTRO_CONSTANT std::string CODEC_ID_H265 = "hevc";
    static KESTRO_CONSTANT std::string CODEC_ID_MPEG4 = "mpeg4";
    static KESTRO_CONSTANT std::string CODEC_ID_MPEG1VIDEO = "mpeg1video";
    static KESTRO_CONSTANT std::string CODEC_ID_MPEG2VIDEO = "mpeg2video";
    static KESTRO_CONSTANT std::string CODEC_ID_H263 = "h263";
    static KESTRO_CONSTANT std::string CODEC_ID_THEORA = "theora";
    static KESTRO_CONSTANT std::string CODEC_ID_VP8 = "vp8";
    static KESTRO_CONSTANT std::string CODEC_ID_VP9 = "vp9";
    static KESTRO_CONSTANT std::string CODEC_ID_AV1 = "av1";
    static KESTRO_CONSTANT std::string CODEC_ID_PRORES = "prores";
    static KESTRO_CONSTANT std::string CODEC_ID_QTRLE = "qtrle";
    static KESTRO_CONSTANT std::string CODEC_ID_WMV2 = "wmv2";
    static KESTRO_CONSTANT std::string CODEC_ID_WMV3 = "wmv3";
    static KESTRO_CONSTANT std::string CODEC_ID_FLV1 = "flv1";
    static KESTRO_CONSTANT std::string CODEC_ID_DVVIDEO = "dvvideo";
    static KESTRO_CONSTANT std::string CODEC_ID_UTVIDEO = "utvideo";
    static KESTRO_CONSTANT std::string CODEC_ID_MJPEG = "mjpeg";

    /// Image codecs.
    static KESTRO_CONSTANT std::string CODEC_ID_BMP = "bmp";
    static KESTRO_CONSTANT std::string CODEC_ID_GIF = "gif";
    static KESTRO_CONSTANT std::string CODEC_ID_PNG = "png";
    static KESTRO_CONSTANT std::string CODEC_ID_APNG = "apng";
    static KESTRO_CONSTANT std::string CODEC_ID_TIFF = "tiff";
    static KESTRO_CONSTANT std::string CODEC_ID_DPX = "dpx";
    static KESTRO_CONSTANT std::string CODEC_ID_JPEG2000 = "jpeg2000";
    static KESTRO_CONSTANT std::string CODEC_ID_JPEGLS = "jpegls";
    static KESTRO_CONSTANT std::string CODEC_ID_PBM = "pbm";
    static KESTRO_CONSTANT std::string CODEC_ID_PCX = "pcx";
    static KESTRO_CONSTANT std::string CODEC_ID_PGM = "pgm";
    static KESTRO_CONSTANT std::string CODEC_ID_PGMYUV = "pgmyuv";
    static KESTRO_CONSTANT std::string CODEC_ID_PPM = "ppm";
    static KESTRO_CONSTANT std::string CODEC_ID_PAM = "pam";
    static KESTRO_CONSTANT std::string CODEC_ID_TARGA = "targa";
    static KESTRO_CONSTANT std::string CODEC_ID_XBM = "xbm";
    static KESTRO_CONSTANT std::string CODEC_ID_SGI = "sgi";
    static KESTRO_CONSTANT std::string CODEC_ID_XWD = "xwd";

    ~IFormatCodecVideo() override;

    /// Describes the stream of that codec node, which is copied. Any content is taken: see IFormatCodec.
    static boost::intrusive_ptr<const IFormatCodecVideo> Create(const Core::Property& codec);

    virtual bool ExistsWidth() const = 0;
    virtual int64_t GetWidth() const = 0;
    virtual bool ExistsHeight() const = 0;
    virtual int64_t GetHeight() const = 0;
    virtual bool ExistsFps() const = 0;
    virtual boost::rational<int64_t> GetFps() const = 0;
    virtual bool ExistsPixelFormat() const = 0;
    virtual const std::string& GetPixelFormat() const = 0;
};

}  // namespace Kestro::Conf
