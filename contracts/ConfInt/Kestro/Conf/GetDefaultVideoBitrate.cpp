#include "Kestro/Conf/GetDefaultVideoBitrate.h"

#include <algorithm>
#include <cmath>

#include "Kestro/Conf/FindRecord.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::Conf {
namespace {

// A fit to YouTube Help, "Recommended upload encoding settings", H.264, SDR, 360p to 2160p at 30 and 60 frames per
// second; nowhere off by more than a factor of 1.4.
constexpr double kBitsPerPixelAndSecond = 4.7;
constexpr double kReferenceFps = 30;
constexpr double kFpsExponent = 0.585;  // twice the frames take 1.5 times the bits

constexpr double kMeanQuality = 50;
constexpr double kQualityStepsToDouble = 25;

struct CodecFactor {
    const std::string& codecId;
    double factor;
};

// Bits for the same picture, H.264 being 1. HEVC, MPEG-4, H.263 and MPEG-2 are measured: Ohm et al., "Comparison of the
// Coding Efficiency of Video Coding Standards", IEEE TCSVT 22(12), 2012. ProRes and DV run at their format's own
// rate for 1080p and 480 lines (147 and 25 Mbit/s at 30 frames per second). The others are set by their generation.
constexpr double kLossless = 75;  // half of 24 bits a pixel
constexpr CodecFactor kFactors[] = {
    {IFormatCodecVideo::CODEC_ID_AV1, 0.5},
    {IFormatCodecVideo::CODEC_ID_H265, 0.65},
    {IFormatCodecVideo::CODEC_ID_VP9, 0.65},
    {IFormatCodecVideo::CODEC_ID_H264, 1},
    {IFormatCodecVideo::CODEC_ID_VP8, 1.2},
    {IFormatCodecVideo::CODEC_ID_WMV3, 1.3},
    {IFormatCodecVideo::CODEC_ID_MPEG4, 1.8},
    {IFormatCodecVideo::CODEC_ID_WMV2, 1.8},
    {IFormatCodecVideo::CODEC_ID_THEORA, 1.8},
    {IFormatCodecVideo::CODEC_ID_H263, 1.9},
    {IFormatCodecVideo::CODEC_ID_FLV1, 1.9},
    {IFormatCodecVideo::CODEC_ID_MPEG2VIDEO, 2.25},
    {IFormatCodecVideo::CODEC_ID_MPEG1VIDEO, 2.5},
    {IFormatCodecVideo::CODEC_ID_MJPEG, 5},
    {IFormatCodecVideo::CODEC_ID_PRORES, 15},
    {IFormatCodecVideo::CODEC_ID_DVVIDEO, 15},
    {IFormatCodecVideo::CODEC_ID_UTVIDEO, kLossless},
    {IFormatCodecVideo::CODEC_ID_QTRLE, kLossless},
    {IFormatCodecVideo::CODEC_ID_BMP, kLossless},
    {IFormatCodecVideo::CODEC_ID_GIF, kLossless},
    {IFormatCodecVideo::CODEC_ID_PNG, kLossless},
    {IFormatCodecVideo::CODEC_ID_APNG, kLossless},
    {IFormatCodecVideo::CODEC_ID_TIFF, kLossless},
    {IFormatCodecVideo::CODEC_ID_DPX, kLossless},
    {IFormatCodecVideo::CODEC_ID_JPEG2000, kLossless},
    {IFormatCodecVideo::CODEC_ID_JPEGLS, kLossless},
    {IFormatCodecVideo::CODEC_ID_PBM, kLossless},
    {IFormatCodecVideo::CODEC_ID_PCX, kLossless},
    {IFormatCodecVideo::CODEC_ID_PGM, kLossless},
    {IFormatCodecVideo::CODEC_ID_PGMYUV, kLossless},
    {IFormatCodecVideo::CODEC_ID_PPM, kLossless},
    {IFormatCodecVideo::CODEC_ID_PAM, kLossless},
    {IFormatCodecVideo::CODEC_ID_TARGA, kLossless},
    {IFormatCodecVideo::CODEC_ID_XBM, kLossless},
    {IFormatCodecVideo::CODEC_ID_SGI, kLossless},
    {IFormatCodecVideo::CODEC_ID_XWD, kLossless},
};

double FactorOfCodec(const std::string& codecId) {
    const CodecFactor* row = FindRecord(kFactors, [&](const CodecFactor& factor) { return factor.codecId == codecId; });
    return row != nullptr ? row->factor : 1;
}

double FactorOfQuality(int quality) {
    if (quality <= 0) return 1;
    const double given = std::min<double>(quality, IFormatCodec::MAX_QUALITY);
    return std::exp2((given - kMeanQuality) / kQualityStepsToDouble);
}

}  // namespace

int64_t GetDefaultVideoBitrate(const std::string& codecId, int64_t width, int64_t height, double framesPerSecond,
                               int quality) {
    const double area =
        static_cast<double>(std::max<int64_t>(width, 1)) * static_cast<double>(std::max<int64_t>(height, 1));
    const double fps = framesPerSecond > 0 ? framesPerSecond : kReferenceFps;
    const double bitrate = kBitsPerPixelAndSecond * area * std::pow(fps / kReferenceFps, kFpsExponent) *
                           FactorOfCodec(codecId) * FactorOfQuality(quality);
    return std::llround(
        std::clamp<double>(bitrate, IFormatCodecVideo::MIN_VIDEO_BITRATE, IFormatCodecVideo::MAX_VIDEO_BITRATE));
}

}  // namespace Kestro::Conf
