#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Planner/CheckedPreset.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Plan.h"

namespace Kestro::Planner {

/// Where a setting's value comes from.
enum class Origin {
    Input,
    Default,    ///< the encoder's or a filter's
    Preset,     ///< asked for
    Automatic,  ///< the planner's choice where the preset leaves one
    Filter,     ///< a filter's rule
    Container,  ///< a rule of the container
    Encoder,    ///< a rule of the encoder, or of the one that is installed
};

/// The settings of one output stream, and how each came to its value: a ledger.
///
/// A setting is known by its path below the stream, as the user writes it: `AudioResample/Resampler/SampleRate`,
/// `VideoCodec/BitRate`. What a filter and the encoder both have (a rate, a size) is one setting, with the filter's
/// path where the stream has the filter; its value stands in the codec node, which helpers read and write.
class StreamSettings {
public:
    struct Filter {
        std::string classId;
        HelperPtr helper;
        Core::Property settings;  ///< as asked for: values that keep the source's still stand in them
    };
    /// Why the setting at a path was moved from a value; absent before: it is new.
    using Reason = std::function<std::string(const std::string& path, const Core::Property* before)>;

    /// format: the plan's format node. Both must outlive the settings.
    StreamSettings(const PresetStream& stream, const Core::Property& format);

    void AddFilter(Filter filter) { filters_.push_back(std::move(filter)); }
    std::vector<Filter>& Filters() { return filters_; }
    const std::vector<Filter>& Filters() const { return filters_; }

    /// The codec node: the values that the stream has.
    const Core::Property& Codec() const { return codec_; }
    /// The setting's path, by its place in the codec node.
    std::string PathOf(const std::string& inCodec) const;
    /// Its place in the codec node, by a path in the rules' tree; empty for what a codec node does not hold.
    std::string InCodec(const std::string& path) const;
    /// The path as the user writes it from a preset's root; paths that begin there stay as they are.
    std::string UserPath(const std::string& path) const;

    /// Whether the preset gives the setting a value of its own.
    bool IsAsked(const std::string& path) const;
    /// Whether the preset leaves it to the planner by an automatic value.
    bool IsOpen(const std::string& path) const;
    /// The value that the input has; null for what it does not tell.
    const Core::Property* OfInput(const std::string& path) const;

    /// Gives a setting of the codec node a value.
    void Set(const std::string& inCodec, const Core::Property& value, Origin origin, const std::string& reason = {});
    /// Takes a codec node that a helper has changed. Settings that are new in it are the planner's to tell, if
    /// reasonOfNew is given.
    void Take(const Core::Property& codec, Origin origin, const Reason& reason = {}, const Reason& reasonOfNew = {});
    /// Notes the value of a setting that only a filter has.
    void Note(const std::string& path, const Core::Property& value, Origin origin, const std::string& reason);

    /// { TypeId, codec node, filter nodes }, the filters with the values that the stream has.
    Core::Property Node() const;
    /// The filters' settings as they are asked for, each under the filter's name.
    Core::Property AskedFilters() const;
    Core::Property RuleTree() const;
    /// The filter's settings with the values that the stream has.
    Core::Property Aligned(const Filter& filter) const;

    /// Reads choices, corrections and notes off the ledger:
    /// - what is left open, or has a default or automatic value with a reason, is a choice;
    /// - a value that filter, container or encoder replaced is a correction, from the first to the last, with all
    /// reasons;
    /// - a value of the preset that ended otherwise and is told by neither has no effect, or comes to another.
    Account Tell() const;

private:
    struct Step {
        std::string path;
        std::optional<Core::Property> before;
        std::optional<Core::Property> after;
        Origin origin;
        std::string reason;
    };

    void Add(Step step);
    void TellOpen(Account& account, const Core::Property& settled) const;
    void TellUnused(Account& account, const Core::Property& settled) const;

    const PresetStream& stream_;
    const Core::Property& format_;
    Core::Property codec_;
    std::vector<Filter> filters_;
    std::vector<Step> steps_;
};

}  // namespace Kestro::Planner
