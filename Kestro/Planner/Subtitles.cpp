#include "Kestro/Planner/Subtitles.h"

#include <algorithm>
#include <vector>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/SubtitleKinds.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Fits.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using FFWrapper::DescriptorName;
using FFWrapper::IsTextSubtitle;

bool IsStored(const std::string& muxer, const std::string& codecId) {
    Core::Property codec;
    codec.SetChild(IFormatCodec::TAG_CODEC_ID, codecId);
    return MuxerTakes(muxer, codec);
}

/// The subtitles that the container offers, the one that the preset names first.
std::vector<std::string> Offered(const CheckedPreset& preset, const PresetStream& wanted) {
    Conf::ConstraintMap constraints;
    preset.format->FillConstraints(constraints);
    const auto found = constraints.find(wanted.kind->CodecIdPath());
    if (found == constraints.end()) return {};
    std::vector<std::string> offered = AllowedValues(DescribeDomain(*found->second));
    if (wanted.codecId.empty()) return offered;
    std::erase_if(offered, [&](const std::string& codec) { return codec != wanted.codecId; });
    return offered;
}

}  // namespace

SubtitleWay FindSubtitleWay(const CheckedPreset& preset, const PresetStream& wanted, const MediaStream& source,
                            const std::string& muxer) {
    std::vector<std::string> offered = Offered(preset, wanted);
    const auto same =
        std::ranges::find_if(offered, [&](const std::string& codec) { return DescriptorName(codec) == source.codec; });
    if (same != offered.end() && IsStored(muxer, *same)) return {.codecId = *same, .obstacle = {}};
    const bool isText = IsTextSubtitle(source.codec);
    std::erase_if(offered, [](const std::string& codec) { return !IsTextSubtitle(codec); });
    for (const std::string& codec : offered) {
        if (!isText || !IsStored(muxer, codec) || FFWrapper::EncoderNameFromCodecId(codec).empty()) continue;
        return {.codecId = codec, .isCopied = false, .obstacle = {}};
    }
    const std::string what = isText ? "subtitles that are texts" : source.codec;
    return {.codecId = {}, .obstacle = "the container " + preset.container + " takes no " + what};
}

}  // namespace Kestro::Planner
