#include "Kestro/Planner/SizeLimit.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Planner/SizeEstimate.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {

using Conf::IFormatCodec;
using Conf::IFormatCodecVideo;
using Core::Property;

std::optional<int64_t> ParseSize(std::string_view text) {
    if (text.ends_with('B')) text.remove_suffix(1);
    double unit = 1;
    constexpr struct {
        char letter;
        double bytes;
    } kUnits[] = {{'k', 1e3}, {'K', 1e3}, {'M', 1e6}, {'G', 1e9}};
    for (const auto& [letter, bytes] : kUnits) {
        if (!text.ends_with(letter)) continue;
        unit = bytes;
        text.remove_suffix(1);
        break;
    }
    double number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    constexpr double kMost = 1e15;
    const double bytes = std::floor(number * unit);
    if (read.ec != std::errc() || read.ptr != text.data() + text.size() || !(bytes >= 1) || bytes > kMost) return {};
    return static_cast<int64_t>(bytes);
}

std::optional<Plan> CorrectedForSize(const Plan& plan, int64_t written) {
    if (!plan.sizeLimit || !plan.input.duration) return std::nullopt;
    const auto limit = static_cast<double>(*plan.sizeLimit);
    const auto size = static_cast<double>(written);
    if (size <= limit && size >= kLeastOfSize * limit) return std::nullopt;
    // What is no film stays as large as it is.
    const double other = std::min(OtherBytes(plan), 0.9 * size);
    const double factor = (kAimOfSize * limit - other) / (size - other);
    Plan corrected = plan;
    bool isOther = false;
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        if (!IsFilm(plan.streams[i])) continue;
        Property& codec = corrected.settings[Conf::IPreset::KEY_STREAMS][i][plan.streams[i].kind->codecKey];
        const int64_t before = codec[IFormatCodec::TAG_BITRATE].GetInt64();
        const int64_t after =
            std::clamp<int64_t>(std::llround(static_cast<double>(before) * factor),
                                IFormatCodecVideo::MIN_VIDEO_BITRATE, IFormatCodecVideo::MAX_VIDEO_BITRATE);
        codec.SetChild(IFormatCodec::TAG_BITRATE, after);
        isOther = isOther || after != before;
    }
    return isOther ? std::optional(corrected) : std::nullopt;
}

std::vector<std::string> OtherBitrates(const Plan& plan, const Plan& corrected) {
    std::vector<std::string> sentences;
    for (std::size_t i = 0; i < plan.streams.size(); ++i) {
        const auto planned = Integer(plan.CodecSettings(i), IFormatCodec::TAG_BITRATE);
        const auto given = Integer(corrected.CodecSettings(i), IFormatCodec::TAG_BITRATE);
        if (planned == given) continue;
        sentences.push_back("Stream " + std::to_string(i) + ": the bitrate is " + std::to_string(*given) + ", not " +
                            std::to_string(*planned) + " as planned, to meet the size.");
    }
    return sentences;
}

}  // namespace Kestro::Planner
