#include "Kestro/Planner/FilmBitrate.h"

#include <algorithm>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <string>

#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/GetDefaultVideoBitrate.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {

using Conf::IFormatCodec;
using Conf::IFormatCodecVideo;
using Core::Property;
using Core::PropertyValueToString;
using FFWrapper::EncoderRecord;

namespace {

/// A setting of the stream's encoder as its helper constrains it; null where it does not.
boost::intrusive_ptr<Conf::IPropertyConstraint> EncoderConstraint(const PlannedStream& stream, const std::string& tag) {
    Conf::ConstraintMap constraints;
    FindHelper(CodecsOf(stream.kind->type), stream.codecId)->FillConstraints(constraints);
    const auto found = constraints.find(tag);
    return found != constraints.end() ? found->second : nullptr;
}

}  // namespace

std::optional<int64_t> BitrateUpTo(const PlannedStream& stream, int64_t most) {
    const auto constraint = EncoderConstraint(stream, IFormatCodec::TAG_BITRATE);
    if (!constraint) return std::nullopt;
    std::vector<int64_t> bitrates;
    for (const Domain::Entry& entry : DescribeDomain(*constraint).entries) bitrates.push_back(entry.value.GetInt64());
    if (bitrates.empty()) return std::nullopt;
    std::ranges::sort(bitrates);
    const auto above = std::ranges::upper_bound(bitrates, most);
    return above == bitrates.begin() ? bitrates.front() : *std::prev(above);
}

double LeastBitrate(const PlannedStream& film) {
    const auto constraint = EncoderConstraint(film, IFormatCodec::TAG_BITRATE);
    const auto least = constraint ? DescribeDomain(*constraint).min : std::nullopt;
    return least ? least->GetDouble() : static_cast<double>(IFormatCodecVideo::MIN_VIDEO_BITRATE);
}

double SensibleBitrate(const Plan& plan, std::size_t film) {
    constexpr int kCoarsest = 1;
    const Property& codec = plan.CodecSettings(film);
    const auto fps = boost::rational_cast<double>(codec[IFormatCodecVideo::TAG_FPS].GetRatio());
    return static_cast<double>(
        Conf::GetDefaultVideoBitrate(plan.streams[film].codecId, codec[IFormatCodecVideo::TAG_WIDTH].GetInt64(),
                                     codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64(), fps, kCoarsest));
}

std::vector<Choice> SettingsForBitrate(const Plan& plan, std::size_t film, int64_t bitrate) {
    const PlannedStream& stream = plan.streams[film];
    const Property& codec = plan.CodecSettings(film);
    const std::string& options = IFormatCodec::TAG_CODEC_OPTIONS_ENCODE;
    std::vector<Choice> settings;
    const auto set = [&](const std::string& tag, const std::string& value, const std::string& reason = {}) {
        settings.push_back({Below(Below(stream.path, stream.kind->codecKey), tag), value, reason});
    };
    // A preset that has options of its own is taken to have all of them.
    ForEachValue(codec[options], options,
                 [&](const std::string& tag, const Property& value) { set(tag, PropertyValueToString(value)); });
    for (const std::string& tag :
         {IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE}) {
        if (const auto frames = Integer(codec, tag)) set(tag, std::to_string(*frames));
    }
    // The player of a disc takes no peaks.
    const auto modes = EncoderConstraint(stream, IFormatCodec::TAG_BITRATE_MODE);
    if (Conf::DiscRecord::Find(plan.FormatSettings()) == nullptr && modes &&
        modes->IsValid({{}, IFormatCodec::TAG_BITRATE_MODE_VBR})) {
        set(IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE_MODE_VBR,
            "the bits go where the picture needs them, within the size");
        set(IFormatCodec::TAG_QUALITY,
            std::to_string(Integer(codec, IFormatCodec::TAG_QUALITY).value_or(IFormatCodec::MAX_QUALITY)));
        set(Below(options, IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY), "true");
    } else {
        set(IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE_MODE_CBR);
    }
    const EncoderRecord* record = EncoderRecord::Find(stream.encoder);
    if (record != nullptr && record->passes != FFWrapper::Passes::None) {
        set(IFormatCodec::TAG_MULTIPASS_ENCODING, IFormatCodec::TAG_TWO_PASS_MODE, "two passes meet a size best");
    }
    const auto least = static_cast<int64_t>(LeastBitrate(stream));
    set(IFormatCodec::TAG_BITRATE,
        std::to_string(std::clamp(bitrate, least, std::max(least, IFormatCodecVideo::MAX_VIDEO_BITRATE))),
        "what sound and container leave of the size");
    return settings;
}

}  // namespace Kestro::Planner
