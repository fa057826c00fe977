#include "Kestro/FFWrapper/EncoderRecord.h"

extern "C" {
#include <libavcodec/codec.h>
#include <libavcodec/codec_desc.h>
}

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"

namespace Kestro::FFWrapper {
namespace {

using Conf::IFormatCodec;
using Audio = Conf::IFormatCodecAudio;
using Video = Conf::IFormatCodecVideo;

// Rate factors: constant quality as the eye has it. 0 is lossless, which not every profile can do.
constexpr QualityScale kX26x{.option = "crf", .worst = 51, .best = 1};
constexpr QualityScale kVp8{.option = "crf", .worst = 63, .best = 4, .bitrate = "800M", .isWhole = true};
constexpr QualityScale kVp9{.option = "crf", .worst = 63, .best = 4, .bitrate = "0", .isWhole = true};
constexpr QualityScale kSvtAv1{.option = "crf", .worst = 63, .best = 4, .isWhole = true};
// Quantisers, the same for all blocks. Those of MPEG go from 1 to 31; at 1 the picture is as good as at 2.
constexpr QualityScale kMpeg{.option = "q", .worst = 31, .best = 2, .isQuantiser = true};
constexpr QualityScale kProres{.option = "q", .worst = 64, .best = 2, .isQuantiser = true};
constexpr QualityScale kJpeg2000{.option = "q", .worst = 80, .best = 0.25, .isQuantiser = true};
// As good to the eye as what the encoders of H.264 give; FFmpeg's own default, 200 kbit/s, is for a stamp.
constexpr UsualSettings kMpegUsual{.quality = 67};
// Scales that rise.
constexpr QualityScale kTheora{.option = "q", .worst = 0, .best = 10};
constexpr QualityScale kVorbis{.option = "q", .worst = -1, .best = 10};
// LAME's V9 to V0.
constexpr QualityScale kMp3{.option = "q", .worst = 9, .best = 0};

// The one pixel format that players of these codecs show.
constexpr PixelFormatOf kAlways420[] = {{.name = "yuv420p"}};
constexpr PixelFormatOf kX26xPixels[] = {
    {.profile = &Video::TAG_X264_PROFILE_HIGH10, .name = "yuv420p10le"},
    {.profile = &Video::TAG_X264_PROFILE_HIGH422, .name = "yuv422p"},
    {.profile = &Video::TAG_X264_PROFILE_HIGH444, .name = "yuv444p"},
    {.name = "yuv420p"},
};
// Each system has its own (IEC 61834, SMPTE 370M).
constexpr PixelFormatOf kDvPixels[] = {
    {.lines = 480, .name = "yuv411p"}, {.lines = 576, .name = "yuv420p"}, {.name = "yuv422p"}};

constexpr const std::string* kAacProfiles[] = {&Audio::TAG_AAC_PROFILE_LOW, &Audio::TAG_AAC_PROFILE_LTP};

/// A frame of 512 samples must hold its headers and each channel's scale factors.
BitrateLimits DtsLimits(int64_t sampleRate, const Conf::LayoutRecord& layout) {
    constexpr uint64_t kLowFrequency = 0x8;  // FFmpeg's mask of that channel
    constexpr int64_t kSamples = 512;
    constexpr int64_t kAlignment = 32;
    const int64_t lowChannels = (layout.ffmpegMask & kLowFrequency) != 0 ? 1 : 0;
    const int64_t leastBits = 132 + 1389 * (layout.channels - lowChannels) + 72 * lowChannels;
    // The bits of a frame are aligned upwards, so any above the multiple before suffice.
    const int64_t multipleBefore = (leastBits - 1) / kAlignment * kAlignment;
    return {std::max(Audio::MIN_DTS_BITRATE, multipleBefore * sampleRate / kSamples + 1), Audio::MAX_DTS_BITRATE};
}

// Each `usual` is measured by scripts/compare-quality.
constexpr EncoderRecord kRecords[] = {
    {.codecId = Video::CODEC_ID_H264,
     .name = "libx264",
     .quality = &kX26x,
     .usual = {.quality = 58, .keyInterval = 250, .bFrames = 3},  // crf 22
     .pixelFormats = kX26xPixels,
     .needsEvenSides = true},
    {.codecId = Video::CODEC_ID_H265,
     .name = "libx265",
     .quality = &kX26x,
     .usual = {.quality = 49, .keyInterval = 250, .bFrames = 4},  // crf 27
     .passes = Passes::X265Parameters,
     .pixelFormats = kX26xPixels,
     .deepPixelFormat = "yuv420p10le",
     .needsEvenSides = true,
     .profile = &Video::TAG_X265_PROFILE_MAIN,
     .profileWord = "main"},
    {.codecId = Video::CODEC_ID_VP8,
     .name = "libvpx",
     .quality = &kVp8,
     .usual = {.quality = 46},
     .alphaOption = "auto-alt-ref",
     .alphaValue = "0"},
    {.codecId = Video::CODEC_ID_VP9,
     .name = "libvpx-vp9",
     .quality = &kVp9,
     .usual = {.quality = 53},  // crf 32
     .pixelFormats = kAlways420,
     .deepPixelFormat = "yuv420p10le"},
    {.codecId = Video::CODEC_ID_AV1,
     .name = "libsvtav1",
     .quality = &kSvtAv1,
     .usual = {.quality = 48},  // crf 35
     .hasRateBuffer = false,
     .passes = Passes::None,
     .needsEvenSides = true,
     .videoLimits = BitrateLimits{1'000, 100'000'000}},  // it counts in kbit/s
    {.codecId = Video::CODEC_ID_AV1, .name = "libaom-av1", .quality = &kVp9, .usual = {.quality = 53}},
    {.codecId = Video::CODEC_ID_THEORA,
     .name = "libtheora",
     .quality = &kTheora,
     .usual = {.quality = 70},
     .pixelFormats = kAlways420},
    {.codecId = Video::CODEC_ID_MPEG4, .name = "mpeg4", .quality = &kMpeg, .usual = kMpegUsual},
    {.codecId = Video::CODEC_ID_PRORES,
     .name = "prores_ks",
     .quality = &kProres,
     .usual = {.quality = 80},
     .heedsBitrate = false,
     .passes = Passes::None},
    {.codecId = Video::CODEC_ID_JPEG2000,
     .name = "jpeg2000",
     .quality = &kJpeg2000,
     .usual = {.quality = 64},
     .heedsBitrate = false,
     .passes = Passes::None},
    {.codecId = Video::CODEC_ID_MJPEG,
     .name = "mjpeg",
     .quality = &kMpeg,
     .usual = {.quality = 85},
     .passes = Passes::None,
     .isBt601 = true},
    {.codecId = Video::CODEC_ID_MPEG1VIDEO, .name = "mpeg1video", .quality = &kMpeg, .usual = kMpegUsual},
    {.codecId = Video::CODEC_ID_MPEG2VIDEO,
     .name = "mpeg2video",
     .quality = &kMpeg,
     .usual = kMpegUsual,
     .pixelFormats = kAlways420},
    {.codecId = Video::CODEC_ID_H263, .name = "h263", .quality = &kMpeg, .usual = kMpegUsual},
    {.codecId = Video::CODEC_ID_FLV1, .name = "flv", .quality = &kMpeg, .usual = kMpegUsual},
    {.codecId = Video::CODEC_ID_WMV2, .name = "wmv2", .quality = &kMpeg, .usual = kMpegUsual, .needsEvenSides = true},
    {.codecId = Video::CODEC_ID_UTVIDEO,
     .name = "utvideo",
     .heedsBitrate = false,
     .passes = Passes::None,
     .needsEvenSides = true},
    {.codecId = Video::CODEC_ID_DVVIDEO,
     .name = "dvvideo",
     .heedsBitrate = false,
     .passes = Passes::None,
     .pixelFormats = kDvPixels,
     .needsEvenSides = true},
    {.codecId = Audio::CODEC_ID_AAC,
     .name = "aac",
     .profiles = kAacProfiles,
     .experimentalProfile = &Audio::TAG_AAC_PROFILE_LTP},
    {.codecId = Audio::CODEC_ID_AC3, .name = "ac3"},
    {.codecId = Audio::CODEC_ID_DTS, .name = "dca", .audioLimits = DtsLimits},
    {.codecId = Audio::CODEC_ID_MP2, .name = "mp2"},
    {.codecId = Audio::CODEC_ID_MP3, .name = "libmp3lame", .quality = &kMp3},
    {.codecId = Audio::CODEC_ID_VORBIS, .name = "libvorbis", .quality = &kVorbis},
    {.codecId = Audio::CODEC_ID_AMR_NB, .name = "libopencore_amrnb"},
};

template <class Matches>
const EncoderRecord* FindRow(Matches matches) {
    const auto* row = std::ranges::find_if(kRecords, matches);
    return row != std::end(kRecords) ? row : nullptr;
}

}  // namespace

const EncoderRecord* EncoderRecord::Find(const std::string& encoderName) {
    return FindRow([&](const EncoderRecord& row) { return encoderName == row.name; });
}

const EncoderRecord* EncoderRecord::OfCodec(const std::string& codecId) {
    return FindRow([&](const EncoderRecord& row) { return codecId == row.codecId; });
}

std::span<const EncoderRecord> EncoderRecord::All() { return kRecords; }

std::vector<std::pair<std::string, std::string>> EncoderRecord::QualityOptions(int64_t wanted) const {
    if (quality == nullptr) return {};
    const double part = static_cast<double>(std::clamp<int64_t>(wanted, 1, IFormatCodec::MAX_QUALITY) - 1) /
                        static_cast<double>(IFormatCodec::MAX_QUALITY - 1);
    const double value = quality->isQuantiser ? quality->worst * std::pow(quality->best / quality->worst, part)
                                              : quality->worst + part * (quality->best - quality->worst);
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", quality->isWhole ? 0 : 3, value);
    std::vector<std::pair<std::string, std::string>> options = {{quality->option, text}};
    if (quality->bitrate != nullptr) options.emplace_back("b", quality->bitrate);
    return options;
}

std::string EncoderRecord::PixelFormat(const std::string& ofProfile, int64_t lines) const {
    for (const PixelFormatOf& format : pixelFormats) {
        const bool fits =
            (format.profile == nullptr || *format.profile == ofProfile) && (format.lines == 0 || format.lines == lines);
        if (fits) return format.name;
    }
    return {};
}

bool NeedsEvenSides(const std::string& encoderName, const std::string& codecId) {
    const EncoderRecord* own = EncoderRecord::Find(encoderName);
    const EncoderRecord* record = own != nullptr ? own : EncoderRecord::OfCodec(codecId);
    return record != nullptr && record->needsEvenSides;
}

bool IsAlwaysLossless(const std::string& codecId) {
    const AVCodecDescriptor* descriptor = avcodec_descriptor_get_by_name(codecId.c_str());
    return descriptor != nullptr && (descriptor->props & AV_CODEC_PROP_LOSSLESS) != 0 &&
           (descriptor->props & AV_CODEC_PROP_LOSSY) == 0;
}

bool IsExperimental(const std::string& encoderName, const std::string& profile) {
    const EncoderRecord* record = EncoderRecord::Find(encoderName);
    if (record != nullptr && record->experimentalProfile != nullptr && *record->experimentalProfile == profile) {
        return true;
    }
    const AVCodec* encoder = avcodec_find_encoder_by_name(encoderName.c_str());
    return encoder != nullptr && (encoder->capabilities & AV_CODEC_CAP_EXPERIMENTAL) != 0;
}

}  // namespace Kestro::FFWrapper
