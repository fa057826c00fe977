#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Kestro/Planner/Export.h"

namespace Kestro::Planner {

/// Why something is not acceptable. The texts that ProblemText gives stay the same from version to version.
enum class ProblemCode {
    UnreadableInput,   ///< "unreadable-input": no file, no media file, no permission
    OpensOtherFiles,   ///< "opens-other-files": the input is a playlist or the like, and nobody asked to follow it
    InvalidJson,       ///< "invalid-json": the text is no JSON, or none of settings
    InvalidPlan,       ///< "invalid-plan": the text is JSON, but no plan
    UnknownName,       ///< "unknown-name": of a container, codec, filter or type of stream
    UnknownSetting,    ///< "unknown-setting"
    WrongType,         ///< "wrong-type": a text where a number is wanted, and the like
    MissingSetting,    ///< "missing-setting": one that must be given is not
    NoSuchStream,      ///< "no-such-stream": the preset, or the container, has none of that kind or number
    CodecNotTaken,     ///< "codec-not-taken": by the container
    ValueNotAccepted,  ///< "value-not-accepted": by a helper, and it cannot be corrected
    TooManyStreams,    ///< "too-many-streams"
    NothingToConvert,  ///< "nothing-to-convert": the input has none of the wanted streams
    ValueCorrected,    ///< "value-corrected": where corrections are not wanted
    NotInstalled,      ///< "not-installed": the installed FFmpeg lacks the muxer or the encoder
};
KESTRO_PLANNER_API std::string_view ProblemText(ProblemCode code);

/// A change of one setting, as Preset::Set takes it.
struct Change {
    std::string path;
    std::string value;
};

/// What is not acceptable, in parts. Those that do not apply are empty.
struct Problem {
    ProblemCode code;
    std::string message = {};               ///< one sentence, English
    std::string path = {};                  ///< the setting that it is about, as the user writes it
    std::string value = {};                 ///< the value that was refused
    std::vector<std::string> allowed = {};  ///< what would be accepted
    std::string cause = {};                 ///< which helper wants what, and by which rule
    std::string wayOut = {};                ///< what the user can do, where it is no change of a setting
    std::vector<Change> changes = {};       ///< what the user can set; VALUE and NAME stand for what only they know
};

}  // namespace Kestro::Planner
