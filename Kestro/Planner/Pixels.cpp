#include "Kestro/Planner/Pixels.h"

#include <algorithm>

#include "Kestro/Conf/DiscRecord.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/FFWrapper/EncoderCapabilities.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/FFWrapper/PixelFormats.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecVideo;
using Core::Property;
using FFWrapper::EncoderRecord;

constexpr int64_t kUsualDepth = 8;

std::string ProfilePath() { return Below(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE, IFormatCodec::TAG_PROFILE); }

/// Whether the fields of the source are kept without being asked for: the output is a picture for television, of as
/// many lines and at the same rate.
bool HasFields(const PresetStream& wanted, const MediaStream& source, const Property& format, const Property& codec) {
    const bool isDisc = Conf::DiscRecord::Find(format) != nullptr;
    const bool isTelevision = (isDisc && wanted.codecId == IFormatCodecVideo::CODEC_ID_MPEG2VIDEO) ||
                              wanted.codecId == IFormatCodecVideo::CODEC_ID_DVVIDEO;
    return isTelevision && codec[IFormatCodecVideo::TAG_HEIGHT].GetInt64() == source.height &&
           codec[IFormatCodecVideo::TAG_FPS].GetRatio() == source.fps;
}

class PixelPlanner {
public:
    PixelPlanner(const PresetStream& wanted, const MediaStream& source, Property& codec, Account& account)
        : wanted_(wanted), source_(source), codec_(codec), account_(account) {
        const std::string encoder = FFWrapper::EncoderNameFromCodecId(wanted.codecId);
        if (const auto capabilities = FFWrapper::EncoderCapabilities::Find(encoder))
            taken_ = capabilities->pixelFormats;
        record_ = EncoderRecord::Find(encoder);
        if (record_ == nullptr) record_ = EncoderRecord::OfCodec(wanted.codecId);
    }

    void SetDepth() {
        const std::string profile = TextAt(codec_, ProfilePath());
        if (record_ != nullptr) {
            pixels_.format = record_->PixelFormat(profile, codec_[IFormatCodecVideo::TAG_HEIGHT].GetInt64());
        }
        const bool isAsked = wanted_.settings.FindByPath(Below(wanted_.kind->codecKey, ProfilePath())) != nullptr;
        const char* deep = record_ != nullptr && !isAsked ? record_->deepPixelFormat : nullptr;
        if (source_.bitDepth > kUsualDepth && deep != nullptr && IsTaken(deep)) {
            pixels_.format = deep;
            if (!profile.empty()) {
                codec_[IFormatCodec::TAG_CODEC_OPTIONS_ENCODE].RemoveChild(IFormatCodec::TAG_PROFILE);
                Choose(ProfilePath(), "auto", "the one for the input's " + std::to_string(source_.bitDepth) + " bits");
            }
        }
        pixels_.bitDepth = std::min(source_.bitDepth, MostBits());
        if (pixels_.bitDepth < source_.bitDepth) {
            Note("The input's " + std::to_string(source_.bitDepth) + " bits of each colour become " +
                 std::to_string(pixels_.bitDepth) + ", which is what " + wanted_.codecId + " has here.");
        }
        if (source_.hasAlpha && !KeepsAlpha())
            Note("The transparency of the input is lost: " + wanted_.codecId + " has none here.");
    }

    void MapTones() {
        if (!source_.colour.IsHdr() || pixels_.bitDepth > kUsualDepth) return;
        pixels_.isToneMapped = true;
        Note("The high dynamic range of the input (" + source_.colour.transfer +
             ") is brought to that of BT.709, since " + std::to_string(pixels_.bitDepth) + " bits do not hold it.");
    }

    void SetFields(const Property& format) {
        if (!source_.isInterlaced) return;
        pixels_.isInterlaced = wanted_.keepsFields || HasFields(wanted_, source_, format, codec_);
        pixels_.isDeinterlaced = !pixels_.isInterlaced;
        Note(pixels_.isInterlaced ? "The input is interlaced, and so is the output."
                                  : "The input is interlaced; its fields become whole frames.");
    }

    Pixels Take() { return std::move(pixels_); }

private:
    bool IsTaken(const std::string& format) const { return std::ranges::find(taken_, format) != taken_.end(); }

    int64_t MostBits() const {
        if (!pixels_.format.empty()) return FFWrapper::BitDepth(pixels_.format);
        int64_t most = taken_.empty() ? source_.bitDepth : kUsualDepth;
        for (const std::string& format : taken_) most = std::max<int64_t>(most, FFWrapper::BitDepth(format));
        return most;
    }
    bool KeepsAlpha() const {
        if (!pixels_.format.empty()) return FFWrapper::HasAlpha(pixels_.format);
        return taken_.empty() || std::ranges::any_of(taken_, FFWrapper::HasAlpha);
    }

    void Choose(const std::string& path, const std::string& value, const std::string& reason) {
        account_.choices.push_back({Below(Below(wanted_.path, wanted_.kind->codecKey), path), value, reason});
    }
    void Note(const std::string& text) { account_.notes.push_back(text); }

    const PresetStream& wanted_;
    const MediaStream& source_;
    Property& codec_;
    Account& account_;
    std::vector<std::string> taken_;
    const EncoderRecord* record_ = nullptr;
    Pixels pixels_;
};

}  // namespace

Pixels PlanPixels(const PresetStream& wanted, const MediaStream& source, const Property& format, Property& codec,
                  Account& account) {
    PixelPlanner planner(wanted, source, codec, account);
    planner.SetDepth();
    planner.MapTones();
    planner.SetFields(format);
    return planner.Take();
}

}  // namespace Kestro::Planner
