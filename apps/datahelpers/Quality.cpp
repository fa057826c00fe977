#include "Quality.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>

#include "Kestro/Conf/IFormatCodec.h"

namespace App {
namespace {

using Kestro::Conf::IFormatCodec;

/// An encoder's own scale of quality.
struct Scale {
    const char* encoder;
    const char* option;
    double worst;
    double best;
    const char* bitrate = nullptr;  ///< the bitrate that leaves the choice to the quality, where one must be given
    bool isWhole = false;           ///< the option takes whole numbers alone
    bool isQuantiser = false;       ///< a step's size: equal steps of quality are equal parts of it
};

constexpr Scale kScales[] = {
    // Rate factors: constant quality as the eye has it. 0 is lossless, which not every profile can do.
    {.encoder = "libx264", .option = "crf", .worst = 51, .best = 1},
    {.encoder = "libx265", .option = "crf", .worst = 51, .best = 1},
    {.encoder = "libvpx", .option = "crf", .worst = 63, .best = 4, .bitrate = "800M", .isWhole = true},
    {.encoder = "libvpx-vp9", .option = "crf", .worst = 63, .best = 4, .bitrate = "0", .isWhole = true},
    {.encoder = "libaom-av1", .option = "crf", .worst = 63, .best = 4, .bitrate = "0", .isWhole = true},
    {.encoder = "libsvtav1", .option = "crf", .worst = 63, .best = 4, .isWhole = true},
    // Quantisers, the same for all blocks. Those of MPEG go from 1 to 31; at 1 the picture is as good as at 2.
    {.encoder = "mpeg1video", .option = "q", .worst = 31, .best = 2, .isQuantiser = true},
    {.encoder = "mpeg2video", .option = "q", .worst = 31, .best = 2, .isQuantiser = true},
    {.encoder = "mpeg4", .option = "q", .worst = 31, .best = 2, .isQuantiser = true},
    {.encoder = "h263", .option = "q", .worst = 31, .best = 2, .isQuantiser = true},
    {.encoder = "flv", .option = "q", .worst = 31, .best = 2, .isQuantiser = true},
    {.encoder = "wmv2", .option = "q", .worst = 31, .best = 2, .isQuantiser = true},
    {.encoder = "mjpeg", .option = "q", .worst = 31, .best = 2, .isQuantiser = true},
    {.encoder = "prores_ks", .option = "q", .worst = 64, .best = 2, .isQuantiser = true},
    {.encoder = "jpeg2000", .option = "q", .worst = 80, .best = 0.25, .isQuantiser = true},
    // Scales that rise.
    {.encoder = "libtheora", .option = "q", .worst = 0, .best = 10},
    {.encoder = "libvorbis", .option = "q", .worst = -1, .best = 10},
    // LAME's V9 to V0.
    {.encoder = "libmp3lame", .option = "q", .worst = 9, .best = 0},
};

std::string Text(double value, bool isWhole) {
    char text[32];
    std::snprintf(text, sizeof text, isWhole ? "%.0f" : "%.3f", value);
    return text;
}

}  // namespace

std::vector<std::pair<std::string, std::string>> QualityOptions(const std::string& encoder, int64_t quality) {
    const auto* scale = std::ranges::find_if(kScales, [&](const Scale& row) { return encoder == row.encoder; });
    if (scale == std::end(kScales)) return {};
    const double part = static_cast<double>(std::clamp<int64_t>(quality, 1, IFormatCodec::MAX_QUALITY) - 1) /
                        static_cast<double>(IFormatCodec::MAX_QUALITY - 1);
    const double value = scale->isQuantiser ? scale->worst * std::pow(scale->best / scale->worst, part)
                                            : scale->worst + part * (scale->best - scale->worst);
    std::vector<std::pair<std::string, std::string>> options = {{scale->option, Text(value, scale->isWhole)}};
    if (scale->bitrate != nullptr) options.emplace_back("b", scale->bitrate);
    return options;
}

}  // namespace App
