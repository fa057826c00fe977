#include "Kestro/Planner/RateControl.h"

#include <algorithm>

#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/Planner/EncoderOptions.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecVideo;
using Core::Property;
using FFWrapper::EncoderRecord;

/// What encoder and container require of one setting of the codec node, as far as it applies to the tree.
Requirements On(const std::string& path, const Requirements& requirements, const Property& tree) {
    Requirements found;
    std::ranges::copy_if(requirements, std::back_inserter(found), [&](const Requirement& requirement) {
        return requirement.path == path && requirement.Applies(tree);
    });
    return found;
}

/// Whether a number, moved to the nearest that can be had, is still about what was asked for.
bool IsSameMagnitude(const Property& asked, const Property& nearest) {
    // Bits for kilobits, and Hz for kHz, are a thousand times off; a slip of the hand is not.
    constexpr double kMost = 4;
    const double from = asked.GetDouble();
    const double to = nearest.GetDouble();
    return from > 0 && to > 0 && from <= to * kMost && to <= from * kMost;
}

/// Fills in what one stream leaves open.
class Completion {
public:
    Completion(const PresetStream& stream, const Conf::IDataHelper& encoder, const Requirements& requirements,
               StreamSettings& settings, Property& preset)
        : kind_(*stream.kind),
          node_(stream.kind->codecKey),
          codecId_(stream.codecId),
          encoder_(FFWrapper::EncoderNameFromCodecId(codecId_)),
          defaults_(encoder.GetDefaultSettings()),
          requirements_(requirements),
          settings_(settings),
          preset_(preset),
          tree_(settings.RuleTree()),
          disc_(Conf::DiscRecord::Find(tree_[Conf::IPreset::KEY_FORMAT])) {}

    bool Run() {
        const bool hasMode = preset_.ChildExists(IFormatCodec::TAG_BITRATE_MODE);
        const bool hasBitrate = preset_.ChildExists(IFormatCodec::TAG_BITRATE);
        const bool hasQuality = preset_.ChildExists(IFormatCodec::TAG_QUALITY);
        if (FFWrapper::IsAlwaysLossless(codecId_)) return false;
        if (hasMode) {
            const bool isConstant =
                TextAt(preset_, IFormatCodec::TAG_BITRATE_MODE) == IFormatCodec::TAG_BITRATE_MODE_CBR;
            if (!isConstant || hasBitrate) return false;
            preset_.SetChild(IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO);
            return true;
        }
        if (hasQuality && Takes(IFormatCodec::TAG_BITRATE_MODE_VBR)) {
            ChooseMode(IFormatCodec::TAG_BITRATE_MODE_VBR, "a quality is given");
        } else if (hasBitrate) {
            KeepBitrate(hasQuality);
        } else if (const EncoderRecord* record = EncoderRecord::Find(encoder_); HasQuality(record)) {
            ChooseQuality(*record);
        } else if (disc_ != nullptr && disc_->videoBitrate > 0 && kind_.type == Conf::StreamType::Video) {
            const std::string reason = "what discs of this kind have";
            ChooseMode(IFormatCodec::TAG_BITRATE_MODE_CBR, reason);
            Choose(IFormatCodec::TAG_BITRATE, Property({}, disc_->videoBitrate), reason);
        } else {
            preset_.SetChild(IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO);
        }
        return true;
    }

private:
    bool Takes(const std::string& mode) const {
        const Requirements modes = On(Below(node_, IFormatCodec::TAG_BITRATE_MODE), requirements_, tree_);
        return std::ranges::all_of(modes, [&](const Requirement& one) { return one.Accepts(Property({}, mode)); });
    }

    /// A disc's player reads no faster than its standard says, which no quality heeds; nor do two passes.
    bool HasQuality(const EncoderRecord* record) const {
        return record != nullptr && record->usual.quality > 0 && !IsTwoPass(preset_) &&
               Takes(IFormatCodec::TAG_BITRATE_MODE_VBR) && disc_ == nullptr;
    }

    void Choose(const std::string& tag, const Property& value, const std::string& reason) {
        preset_.SetChild(tag, value);
        settings_.Set(tag, value, Origin::Automatic, reason);
    }
    void ChooseMode(const std::string& mode, const std::string& reason) {
        Choose(IFormatCodec::TAG_BITRATE_MODE, Property({}, mode), reason);
    }

    void KeepBitrate(bool hasQuality) {
        if (Takes(IFormatCodec::TAG_BITRATE_MODE_CBR)) {
            ChooseMode(IFormatCodec::TAG_BITRATE_MODE_CBR, "a bitrate is given");
            return;
        }
        // The one mode is variable; it is told to heed the bitrate.
        ChooseMode(IFormatCodec::TAG_BITRATE_MODE_VBR, "the only one of " + codecId_);
        if (!hasQuality) preset_.SetChild(IFormatCodec::TAG_QUALITY, defaults_[IFormatCodec::TAG_QUALITY]);
        Property options = defaults_[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE];
        if (const Property* own = preset_.FindByPath(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE)) options = *own;
        options.SetChild(IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY, true);
        preset_.SetChild(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE, options);
    }

    /// Whether the stream will be of a profile without B-frames, once its container has had its say.
    bool IsBaseline() const {
        const std::string path = Below(Below(node_, IFormatCodec::TAG_CODEC_OPTIONS_ENCODE), IFormatCodec::TAG_PROFILE);
        const Property* asked = preset_.FindByPath(path.substr(node_.size() + Property::SEPARATOR.size()));
        const Property* profile = asked != nullptr ? asked : tree_.FindByPath(path);
        if (profile == nullptr) return false;
        Property settled = *profile;
        for (const Requirement& one : On(path, requirements_, tree_)) settled = one.Corrected(settled);
        return settled.GetString() == IFormatCodecVideo::TAG_X264_PROFILE_BASELINE;
    }

    void ChooseQuality(const EncoderRecord& record) {
        const auto options = record.QualityOptions(record.usual.quality);
        ChooseMode(IFormatCodec::TAG_BITRATE_MODE_VBR, "no bitrate is asked for, so the quality decides");
        Choose(IFormatCodec::TAG_QUALITY, Property({}, record.usual.quality),
               "the usual one, " + options.front().first + " " + options.front().second + " of " + record.name);
        const auto chooseUnlessGiven = [&](const std::string& tag, const std::optional<int64_t>& frames) {
            if (!frames || preset_.ChildExists(tag)) return;
            Choose(tag, Property({}, *frames), "what " + std::string(record.name) + " does best with");
        };
        chooseUnlessGiven(IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL, record.usual.keyInterval);
        if (!IsBaseline()) chooseUnlessGiven(IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, record.usual.bFrames);
    }

    const Conf::StreamRecord& kind_;
    const std::string& node_;
    const std::string& codecId_;
    std::string encoder_;  ///< FFmpeg's name
    Property defaults_;
    const Requirements& requirements_;
    StreamSettings& settings_;
    Property& preset_;
    Property tree_;
    const Conf::DiscRecord* disc_;  ///< the one that is made, or null
};

}  // namespace

bool CompleteRateControl(const PresetStream& stream, const Conf::IDataHelper& encoder, const Requirements& requirements,
                         StreamSettings& settings, Property& preset) {
    return Completion(stream, encoder, requirements, settings, preset).Run();
}

bool IsMovableRate(const std::string& tag, const Property& asked, const Property& nearest) {
    const bool isRate = tag == Conf::IFormatCodecAudio::TAG_SAMPLE_RATE || tag == IFormatCodecVideo::TAG_FPS;
    return isRate && !(nearest == asked) && IsSameMagnitude(asked, nearest);
}

void MoveAskedToNearest(const std::string& codecKey, const Requirements& requirements, StreamSettings& settings) {
    const Property tree = settings.RuleTree();
    for (const std::string& tag : {IFormatCodec::TAG_BITRATE, IFormatCodec::TAG_QUALITY}) {
        const std::string path = Below(codecKey, tag);
        if (!settings.IsAsked(path)) continue;
        for (const Requirement& requirement : On(path, requirements, tree)) {
            const Property value = settings.Codec()[tag];
            if (requirement.Accepts(value)) continue;
            const Property nearest = requirement.Corrected(value);
            if (nearest == value) continue;
            if (!IsSameMagnitude(value, nearest)) RefuseValue(requirement, value, settings.UserPath(path), {});
            settings.Set(tag, nearest, Origin::Encoder, "The nearest that can be had. " + requirement.InWords());
        }
    }
}

}  // namespace Kestro::Planner
