#pragma once

#include <map>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamType.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Export.h"
#include "Kestro/Planner/Problem.h"

namespace Kestro::Planner {

/// What is to be made: settings from a JSON text or a container's defaults, with changes. A value: what is wrong in it
/// is told by Check and MakePlan, all at once, so changes may come in any order.
///
///     Format { Container, ... }
///     Streams { 0 { TypeId, codec node, filter nodes, Tracks }, 1 { ... } }
///     Size
///
/// Without Streams the container's default ones are meant, without Size there is no limit.
///
/// Paths are those of the tree, `/` between the names; a stream is named by its number or, the first of its type, as
/// `TypeId=video`: `Streams/TypeId=video/VideoCodec/BitRate`.
class KESTRO_PLANNER_API Preset {
public:
    /// In place of a codec's id: the input's stream as it is, without encoding it again.
    static constexpr const char* kCopy = "copy";
    /// The name of the size's setting, beside the format and the streams: bytes, or a text as ParseSize reads it.
    static constexpr const char* KEY_SIZE = "Size";

    /// A codec that is asked for beside the settings.
    struct Choice {
        Conf::StreamType type;
        std::string codec;
        std::string by;
    };

    /// name: what messages call the text, such as a file's name. Throws NotAcceptable (InvalidJson) with line and
    /// column.
    static Preset FromJson(const std::string& text, const std::string& name);
    /// The container with its default settings.
    static Preset OfContainer(const std::string& container);

    /// The codec of the streams of that type that leave theirs open: a name, kCopy, or "auto": the input's stream is
    /// copied where the container takes it, or else the container's default encodes it. Without a word it is "auto".
    /// by: what messages and reasons call this wish ("asked for by ...").
    Preset& Choose(Conf::StreamType type, std::string codec, std::string by = "the application");

    /// Which of the input's streams of that type are converted: "all", "none", or their places among those of the type
    /// and languages: "1,3", "eng". Without a word the preset's streams decide: one stands for all of its type.
    Preset& ChooseTracks(Conf::StreamType type, std::string tracks);

    /// Changes or adds one setting. The value is read as the type that the setting has; "auto" leaves it to the
    /// planner.
    Preset& Set(std::string path, std::string value);

    /// The output must not be larger than so many bytes, and is to be little smaller.
    Preset& LimitSize(int64_t bytes);

    /// Whether it comes from a text, and is expected to say everything; else defaults are what was asked for.
    bool IsFromText() const { return isFromText_; }
    const Core::Property& Settings() const { return settings_; }
    const std::vector<Change>& Changes() const { return changes_; }
    /// The name of its container; empty where there is none.
    std::string Container() const;
    /// Null when none was chosen.
    const Choice* Chosen(Conf::StreamType type) const;
    const std::map<Conf::StreamType, std::string>& ChosenTracks() const { return tracks_; }

private:
    Preset() = default;

    bool isFromText_ = false;
    Core::Property settings_;  ///< without the changes
    std::vector<Change> changes_;
    std::vector<Choice> choices_;
    std::map<Conf::StreamType, std::string> tracks_;
};

/// All that is wrong with a preset whatever it is used for: unknown settings and names, values of another type, for
/// every stream. Empty: it can be planned with; whether its values are accepted is for the plan to find out.
KESTRO_PLANNER_API std::vector<Problem> Check(const Preset& preset);

}  // namespace Kestro::Planner
