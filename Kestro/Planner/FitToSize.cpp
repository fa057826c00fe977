#include "Kestro/Planner/FitToSize.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/FilmBitrate.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/SizeEstimate.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/KeepSource.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatCodecVideo;
using Conf::StreamType;
using Core::Property;
using Core::PropertyValueToString;
using FFWrapper::EncoderRecord;
using Proc::IFilterFrameRate;
using Proc::IFilterResize;
using Proc::IResize;

class Fitting {
public:
    Fitting(const Plan& plan, const Preset& preset, const std::function<Plan(const Preset&)>& settle)
        : first_(plan),
          plan_(plan),
          preset_(preset),
          asked_(Checked(preset)),
          settle_(settle),
          limit_(static_cast<double>(*plan.sizeLimit)) {}

    Plan Run() {
        Check();
        LowerSound();
        if (FilmBitrate() < LeastOfFilms()) RefuseSmall();
        LowerFrameRate(kUsualFps, false);
        LowerFrameSize();
        LowerFrameRate(kLeastFps, true);
        SetBitrates();
        KeepChoices();
        return plan_;
    }

private:
    // What films have; more frames are the first to go. Fewer than the other are no motion any more.
    static constexpr int64_t kUsualFps = 30;
    static constexpr int64_t kLeastFps = 12;
    // Lines, or columns of an upright picture, that players and people know.
    static constexpr int64_t kShortSides[] = {2160, 1440, 1080, 720, 540, 480, 360, 240, 180, 144};

    [[noreturn]] void Refuse(const std::string& message, const std::string& wayOut) const {
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted,
                             .message = message,
                             .path = Preset::KEY_SIZE,
                             .value = std::to_string(*first_.sizeLimit),
                             .wayOut = wayOut});
    }

    void Check() const {
        const std::string leaveOut = "leave out the size, or take another codec";
        if (first_.IsPicture()) Refuse("A picture has the size that it needs, and cannot be held to one.", leaveOut);
        if (!first_.input.duration || *first_.input.duration <= 0) {
            Refuse("The input does not tell how long it is, so its output cannot be held to a size.",
                   "put it into a container that tells, such as matroska, first");
        }
        for (const PlannedStream& stream : first_.streams) {
            const EncoderRecord* record = EncoderRecord::Find(stream.encoder);
            const bool heeds = record == nullptr || record->heedsBitrate;
            if (!IsFilm(stream) || (heeds && !FFWrapper::IsAlwaysLossless(stream.codecId))) continue;
            Refuse("The codec " + stream.codecId + " takes what the picture needs, and cannot be held to a size.",
                   leaveOut);
        }
    }

    std::size_t Films() const { return static_cast<std::size_t>(std::ranges::count_if(plan_.streams, IsFilm)); }

    /// Of all films together, bit/s.
    double FilmBitrate() const {
        return (kAimOfSize * limit_ - OtherBytes(plan_)) * kBitsPerByte / *plan_.input.duration;
    }

    double LeastOfFilms() const {
        // Small pictures miss a bitrate by more, and it must be possible to go lower then.
        constexpr double kReserve = 1.06;
        double sum = 0;
        for (const PlannedStream& stream : plan_.streams) sum += IsFilm(stream) ? kReserve * LeastBitrate(stream) : 0;
        return sum;
    }

    [[noreturn]] void RefuseSmall() const {
        const double bytes = (LeastOfFilms() * *plan_.input.duration / kBitsPerByte + OtherBytes(plan_)) / kAimOfSize;
        const auto least = static_cast<int64_t>(std::ceil(bytes / 1000) * 1000);
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted,
                             .message = "The output cannot be held to " + std::to_string(*first_.sizeLimit) +
                                        " bytes; the smallest that can be is " + std::to_string(least) + ".",
                             .path = Preset::KEY_SIZE,
                             .value = std::to_string(*first_.sizeLimit),
                             .allowed = {"from " + std::to_string(least)},
                             .cause = "sound and container take " +
                                      std::to_string(static_cast<int64_t>(OtherBytes(plan_))) + " bytes of it",
                             .changes = {{Preset::KEY_SIZE, std::to_string(least)}}});
    }

    /// The film's part of all films' bitrate, bit/s: more for larger frames.
    double Share(std::size_t film) const {
        double all = 0;
        for (std::size_t i = 0; i < plan_.streams.size(); ++i) {
            if (IsFilm(plan_.streams[i])) all += SensibleBitrate(plan_, i);
        }
        return FilmBitrate() * SensibleBitrate(plan_, film) / all;
    }
    bool IsStarved(std::size_t film) const {
        return IsFilm(plan_.streams[film]) && Share(film) < SensibleBitrate(plan_, film);
    }

    /// Settles with more changes; false when something of it is not accepted.
    bool Try(const std::vector<Change>& changes) {
        Preset other = preset_;
        for (const Change& change : changes) other.Set(change.path, change.value);
        try {
            Plan plan = settle_(other);
            if (plan.streams.size() != plan_.streams.size()) return false;
            plan_ = std::move(plan);
            preset_ = std::move(other);
            return true;
        } catch (const NotAcceptable&) {
            return false;
        }
    }

    void Tell(const std::string& path, const std::string& reason) {
        std::erase_if(told_, [&](const Choice& choice) { return choice.path == path; });
        told_.push_back({path, {}, reason});
    }

    /// The setting below the stream as the preset asks for it; null where it does not.
    const Property* Asked(const PlannedStream& stream, const std::string& below) const {
        const auto own = std::ranges::find(asked_.streams, stream.path, &PresetStream::path);
        const Property* value = own != asked_.streams.end() ? own->settings.FindByPath(below) : nullptr;
        return value != nullptr && !Proc::IsSourceValue(LastSegment(below), *value) ? value : nullptr;
    }

    void LowerSound() {
        constexpr double kMostOfAll = 0.2;
        double sounds = 0;
        double bitrates = 0;
        for (std::size_t i = 0; i < plan_.streams.size(); ++i) {
            if (plan_.streams[i].kind->type != StreamType::Audio) continue;
            sounds += 1;
            bitrates += BitrateOf(plan_.CodecSettings(i));
        }
        // Without a film all is theirs, but for what the container takes.
        const double part = kMostOfAll * limit_ * kBitsPerByte / *plan_.input.duration;
        const double most = (Films() == 0 ? FilmBitrate() + bitrates : part) / std::max(sounds, 1.0);
        for (std::size_t i = 0; i < plan_.streams.size(); ++i) {
            const PlannedStream& stream = plan_.streams[i];
            const std::string setting = Below(stream.kind->codecKey, IFormatCodec::TAG_BITRATE);
            const std::string path = Below(stream.path, setting);
            if (stream.kind->type != StreamType::Audio || BitrateOf(plan_.CodecSettings(i)) <= most) continue;
            if (FFWrapper::IsAlwaysLossless(stream.codecId) || Asked(stream, setting) != nullptr ||
                Asked(stream, Below(stream.kind->codecKey, IFormatCodec::TAG_QUALITY)) != nullptr) {
                continue;
            }
            const auto bitrate = BitrateUpTo(stream, static_cast<int64_t>(most));
            if (bitrate && Try({{path, std::to_string(*bitrate)}})) {
                Tell(path, "so that the sound takes no more than its part of the size");
            }
        }
    }

    /// Halves rates above the most, and then others as long as half of them is no less than it.
    void LowerFrameRate(int64_t most, bool isLast) {
        const std::string setting = Below(IFilterFrameRate::CLASS_ID, IFormatCodecVideo::TAG_FPS);
        for (std::size_t i = 0; i < plan_.streams.size(); ++i) {
            const std::string path = Below(plan_.streams[i].path, setting);
            const std::string inCodec = Below(plan_.streams[i].kind->codecKey, IFormatCodecVideo::TAG_FPS);
            if (Asked(plan_.streams[i], setting) != nullptr || Asked(plan_.streams[i], inCodec) != nullptr) continue;
            while (IsStarved(i)) {
                const auto rate = plan_.CodecSettings(i)[IFormatCodecVideo::TAG_FPS].GetRatio();
                const auto half = rate / int64_t{2};
                const bool isAllowed = isLast ? half >= Property::Ratio(most) : rate > Property::Ratio(most);
                if (!isAllowed || !Try({{path, RatioText(half)}})) break;
                Tell(path, "with all frames the bitrate would be too low for the picture");
                // Some encoders have a few rates alone.
                if (plan_.CodecSettings(i)[IFormatCodecVideo::TAG_FPS].GetRatio() != half) break;
            }
        }
    }

    void LowerFrameSize() {
        for (std::size_t i = 0; i < plan_.streams.size(); ++i) {
            if (!IsFilm(plan_.streams[i])) continue;
            const PlannedStream& stream = plan_.streams[i];
            const std::string resizer = Below(IFilterResize::CLASS_ID, IResize::CLASS_ID);
            const std::string path = Below(stream.path, resizer);
            const auto at = [&](const std::string& tag) { return Below(path, tag); };
            // A box that the frame may fill is no size that it must have.
            const Property* fit = Asked(stream, Below(resizer, IResize::MODE));
            const bool isBox = fit != nullptr && fit->GetString() == IResize::MODE_UP_TO;
            const auto isGiven = [&](const std::string& side) {
                const Property* asked = Asked(stream, Below(resizer, side));
                return asked != nullptr && asked->GetInt64() > 0;
            };
            if (!isBox && (isGiven(IFormatCodecVideo::TAG_WIDTH) || isGiven(IFormatCodecVideo::TAG_HEIGHT))) continue;
            const Property whole = plan_.CodecSettings(i);
            const int64_t width = whole[IFormatCodecVideo::TAG_WIDTH].GetInt64();
            const int64_t height = whole[IFormatCodecVideo::TAG_HEIGHT].GetInt64();
            for (const int64_t side : kShortSides) {
                if (!IsStarved(i)) break;
                if (side >= std::min(width, height)) continue;
                const auto scaled = [&](int64_t length) {
                    const double part = static_cast<double>(side) / static_cast<double>(std::min(width, height));
                    return std::to_string(2 * std::llround(static_cast<double>(length) * part / 2));
                };
                if (!Try({{at(IResize::FRAME_SIZE_MODE), IResize::FRAME_SIZE_CUSTOM},
                          {at(IResize::MODE), IResize::MODE_UP_TO},
                          {at(IFormatCodecVideo::TAG_WIDTH), scaled(width)},
                          {at(IFormatCodecVideo::TAG_HEIGHT), scaled(height)}})) {
                    break;
                }
                const std::string reason = "at " + std::to_string(width) + " x " + std::to_string(height) +
                                           " the bitrate would be too low for the picture";
                Tell(at(IFormatCodecVideo::TAG_WIDTH), reason);
                Tell(at(IFormatCodecVideo::TAG_HEIGHT), reason);
            }
        }
    }

    void SetBitrates() {
        Preset other = preset_;
        for (std::size_t i = 0; i < plan_.streams.size(); ++i) {
            if (!IsFilm(plan_.streams[i])) continue;
            for (const Choice& choice : SettingsForBitrate(plan_, i, std::llround(Share(i)))) {
                other.Set(choice.path, choice.value);
                if (!choice.reason.empty()) Tell(choice.path, choice.reason);
            }
        }
        if (Films() > 0) plan_ = settle_(other);
    }

    /// The value that the plan has at a path as the user writes it; null where there is none.
    const Property* Settled(const std::string& path) const {
        for (std::size_t i = 0; i < plan_.streams.size(); ++i) {
            const std::string& stream = plan_.streams[i].path;
            if (!path.starts_with(stream + Property::SEPARATOR)) continue;
            return plan_.StreamSettings(i).FindByPath(path.substr(stream.size() + Property::SEPARATOR.size()));
        }
        return nullptr;
    }

    /// What was chosen before the size was looked at is still chosen, where it still is so.
    void KeepChoices() {
        std::vector<Choice> choices;
        for (const std::vector<Choice>* source :
             std::initializer_list<const std::vector<Choice>*>{&told_, &plan_.choices, &first_.choices}) {
            for (const Choice& choice : *source) {
                const Property* value = Settled(choice.path);
                const bool isNew = source == &told_;
                // The size decides in its place.
                if (!isNew && Films() > 0 && LastSegment(choice.path) == IFormatCodec::TAG_QUALITY) continue;
                if (value == nullptr || std::ranges::find(choices, choice.path, &Choice::path) != choices.end())
                    continue;
                if (isNew || PropertyValueToString(*value) == choice.value) {
                    choices.push_back({choice.path, PropertyValueToString(*value), choice.reason});
                }
            }
        }
        plan_.choices = std::move(choices);
    }

    const Plan& first_;
    Plan plan_;
    Preset preset_;
    CheckedPreset asked_;
    const std::function<Plan(const Preset&)>& settle_;
    double limit_;
    std::vector<Choice> told_;  ///< their values follow from the plan
};

}  // namespace

Plan FitToSize(const Plan& plan, const Preset& preset, const std::function<Plan(const Preset&)>& settle) {
    return Fitting(plan, preset, settle).Run();
}

}  // namespace Kestro::Planner
