#include "Kestro/Planner/StreamFilters.h"

#include <algorithm>

#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/FFWrapper/EncoderNameFromCodecId.h"
#include "Kestro/FFWrapper/EncoderRecord.h"
#include "Kestro/Planner/NotAcceptable.h"
#include "Kestro/Planner/RateControl.h"
#include "Kestro/Planner/Tree.h"
#include "Kestro/Proc/FilterRecord.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResample.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/KeepSource.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodecAudio;
using Conf::IFormatCodecVideo;
using Conf::IPreset;
using Core::Property;
using Core::PropertyValueToString;
using Filter = StreamSettings::Filter;
using Proc::IFilterFrameRate;
using Proc::IFilterResize;
using Proc::IResample;
using Proc::IResize;

/// A filter has one implementation; a preset may name no other.
void CheckImplementation(const Filter& filter, const StreamSettings& settings) {
    ForEachValue(filter.helper->GetDefaultSettings(), {}, [&](const std::string& path, const Property& only) {
        if (LastSegment(path) != IPreset::KEY_TYPE_ID || filter.settings.ChildByPath(path) == only) return;
        const std::string userPath = settings.UserPath(Below(filter.classId, path));
        const std::string known = PropertyValueToString(only);
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted,
                             .message = userPath + " names no known implementation.",
                             .path = userPath,
                             .value = PropertyValueToString(filter.settings.ChildByPath(path)),
                             .allowed = {known},
                             .changes = {{userPath, known}}});
    });
}

void CompleteFilter(Filter& filter, const Property& asked, StreamSettings& settings) {
    Override(filter.settings, asked);
    if (filter.classId != IFilterResize::CLASS_ID) return;
    const std::string mode = Below(IResize::CLASS_ID, IResize::FRAME_SIZE_MODE);
    const bool sized = asked.FindByPath(Below(IResize::CLASS_ID, IFormatCodecVideo::TAG_WIDTH)) != nullptr ||
                       asked.FindByPath(Below(IResize::CLASS_ID, IFormatCodecVideo::TAG_HEIGHT)) != nullptr;
    if (!sized || asked.FindByPath(mode) != nullptr) return;
    filter.settings.ChildByPath(mode) = IResize::FRAME_SIZE_CUSTOM;
    settings.Note(Below(filter.classId, mode), filter.settings.ChildByPath(mode), Origin::Automatic,
                  "a width or height is given");
}

void AddFilter(const std::string& classId, const PresetStream& stream, StreamSettings& settings,
               Requirements& requirements) {
    if (std::ranges::find(settings.Filters(), classId, &Filter::classId) != settings.Filters().end()) return;
    Filter filter{.classId = classId, .helper = FindHelper(kFilters, classId), .settings = {}};
    filter.settings = filter.helper->GetDefaultSettings();
    // What is not asked for stays as it is in the source.
    Proc::KeepSource(filter.settings);
    if (stream.settings.ChildExists(classId)) CompleteFilter(filter, stream.settings[classId], settings);
    AddFilterRequirements(classId, *filter.helper, requirements);
    settings.AddFilter(std::move(filter));
}

/// Why a filter gave a setting another value than it was asked for.
std::string FilterReason(const std::string& path, const Property& asked, const Requirements& requirements,
                         const StreamSettings& settings) {
    const Property tree = settings.AskedFilters();
    std::string reason;
    for (const Requirement& requirement : requirements) {
        if (requirement.path == path && requirement.Applies(tree) && !requirement.Accepts(asked)) {
            reason = requirement.InWords();
        }
    }
    return reason;
}

/// A frame whose size nobody asks for keeps odd sides where its encoder takes them; the resizer has made them even.
void KeepSides(const PresetStream& stream, const Property& source, Property& codec) {
    const std::string encoder = FFWrapper::EncoderNameFromCodecId(stream.codecId);
    if (stream.kind->type != Conf::StreamType::Video || FFWrapper::NeedsEvenSides(encoder, stream.codecId)) return;
    for (const std::string& side : {IFormatCodecVideo::TAG_WIDTH, IFormatCodecVideo::TAG_HEIGHT}) {
        codec.SetChild(side, source[side]);
    }
}

}  // namespace

void CollectFilters(const PresetStream& stream, const Conf::IDataHelper& encoder, StreamSettings& settings,
                    Requirements& requirements) {
    Conf::FilterList required;
    encoder.GetRequiredFilters(required);
    for (const auto& [classId, implementation] : required) AddFilter(classId, stream, settings, requirements);
    for (const Proc::FilterRecord& record : Proc::FilterRecord::All()) {
        if (stream.settings.ChildExists(record.classId)) AddFilter(record.classId, stream, settings, requirements);
    }
}

void CheckFilters(const Requirements& requirements, StreamSettings& settings) {
    const Property tree = settings.AskedFilters();
    for (const Requirement& requirement : requirements) {
        if (requirement.rule || !requirement.Applies(tree)) continue;
        const Property& value = tree.ChildByPath(requirement.path);
        if (requirement.Accepts(value)) continue;
        const Property nearest = requirement.Corrected(value);
        if (!IsMovableRate(LastSegment(requirement.path), value, nearest)) {
            RefuseValue(requirement, value, settings.UserPath(requirement.path), {});
        }
        for (Filter& filter : settings.Filters()) {
            const std::string prefix = filter.classId + Property::SEPARATOR;
            if (!requirement.path.starts_with(prefix)) continue;
            filter.settings.ChildByPath(requirement.path.substr(prefix.size())).CopyDataFrom(nearest);
        }
    }
    for (const Filter& filter : settings.Filters()) CheckImplementation(filter, settings);
}

void ApplyFilters(const PresetStream& stream, const Requirements& requirements, StreamSettings& settings) {
    const std::string& sampleFormat = IFormatCodecAudio::TAG_SAMPLE_FORMAT;
    const std::string mode = Below(Below(IFilterResize::CLASS_ID, IResize::CLASS_ID), IResize::FRAME_SIZE_MODE);
    Property codec = settings.Codec();
    try {
        for (const Filter& filter : settings.Filters()) {
            const Property* wanted = filter.settings.FindByPath(Below(IResample::CLASS_ID, sampleFormat));
            if (wanted != nullptr && !Proc::IsSourceValue(sampleFormat, *wanted)) codec.SetChild(sampleFormat, *wanted);
            filter.helper->ApplyPresetSettings(filter.settings, codec);
        }
    } catch (const Exception& exception) {
        throw NotAcceptable({.code = ProblemCode::ValueNotAccepted, .message = exception.what(), .path = stream.path});
    }
    const Property asked = settings.AskedFilters();
    const bool isSized = TextAt(asked, mode) == IResize::FRAME_SIZE_CUSTOM;
    if (!isSized && !settings.IsAsked(mode)) KeepSides(stream, settings.Codec(), codec);
    ForEachValue(settings.Codec(), {}, [&, before = settings.Codec()](const std::string& place, const Property&) {
        const Property* after = codec.FindByPath(place);
        const std::string path = settings.PathOf(place);
        if (after == nullptr) return;
        const Property* wanted = settings.IsAsked(path) ? stream.settings.FindByPath(path) : nullptr;
        const bool isOther = wanted != nullptr && !(*wanted == *after);
        const std::string reason = isOther ? FilterReason(path, *wanted, requirements, settings) : std::string();
        // A value that was moved is told also where the input's is the nearest.
        if (*after == before.ChildByPath(place) && reason.empty()) return;
        const bool isSide = place == IFormatCodecVideo::TAG_WIDTH || place == IFormatCodecVideo::TAG_HEIGHT;
        if (isOther) {
            settings.Set(place, *wanted, Origin::Preset);
            settings.Set(place, *after, Origin::Filter, reason);
        } else if (wanted != nullptr || !isSide || !path.starts_with(IFilterResize::CLASS_ID)) {
            settings.Set(place, *after, Origin::Preset);
        } else if (isSized) {
            settings.Set(place, *after, Origin::Automatic, "keeps the picture's shape");
        } else if (settings.IsAsked(mode)) {
            settings.Set(place, *after, Origin::Preset);
        } else {
            // Without a size of its own the stream has the source's, made even.
            settings.Set(place, *after, Origin::Filter, "The sides of a frame must be even.");
        }
    });
    settings.Take(codec, Origin::Preset);
    const Property* fps = codec.FindByPath(IFormatCodecVideo::TAG_FPS);
    if (fps != nullptr && fps->GetRatio() == Property::Ratio(0)) {
        const Property usual = FindHelper(kFilters, IFilterFrameRate::CLASS_ID)->GetDefaultSettings();
        settings.Set(IFormatCodecVideo::TAG_FPS, usual[IFormatCodecVideo::TAG_FPS], Origin::Default,
                     "the input does not tell its frame rate");
    }
}

}  // namespace Kestro::Planner
