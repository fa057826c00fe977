#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Planner/FfmpegCommands.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Problem.h"

#include "prove/ProveOptions.h"

namespace App {

namespace Planner = Kestro::Planner;

enum class Command { List, Show, Fits, Schema, Check, Plan, Convert, Prove, Catalogue };

/// In place of a file's name: standard input or output.
inline constexpr const char* kStandardStream = "-";

/// What to make of an input.
struct PlanOptions {
    std::string input;
    std::string presetFile;  ///< or empty: `format` is given
    std::string format;
    std::string planFile;           ///< or empty: a plan to carry out, in place of all that makes one
    std::string video;              ///< codec, or empty
    std::string audio;              ///< codec, or empty
    std::string audioTracks;        ///< as Preset::ChooseTracks has them, or empty
    std::string subtitleTracks;     ///< likewise
    bool keepsFields = false;       ///< of interlaced video
    std::string size;               ///< or empty
    std::vector<std::string> sets;  ///< PATH=VALUE
    Planner::Excerpt excerpt;
    std::optional<boost::rational<int64_t>> fps;  ///< the input is a sequence of pictures
    bool followReferences = false;                ///< files that the input names are read, too
};

/// The command line, understood.
struct Arguments {
    Command command = Command::List;
    std::string commandName;
    bool json = false;
    const Planner::HelperKind* kind = nullptr;  ///< list: null for all, or for the presets alone; show
    bool listsHelpers = true;                   ///< list
    std::string name;                           ///< show
    bool isAutomatic = false;                   ///< show
    std::string codec;                          ///< fits: empty for all
    std::string container;                      ///< fits, schema: empty for all
    PlanOptions plan;                           ///< plan, convert
    std::string output;                         ///< convert, catalogue; plan, or empty
    bool showsCommands = false;                 ///< plan
    bool isFull = false;                        ///< plan
    bool isStrict = false;                      ///< plan: refuses instead of correcting
    std::vector<std::string> inputs;            ///< convert, many
    std::string into;                           ///< convert, many: the folder; else empty
    std::size_t jobs = 1;                       ///< convert, many: at once
    bool tellsParts = false;                    ///< convert: progress is for this program itself
    bool overwrite = false;                     ///< convert, catalogue
    bool isQuiet = false;                       ///< convert
    bool listsPresets = false;                  ///< list: the presets, too
    bool isSequence = false;                    ///< convert
    ProveOptions prove;                         ///< prove
    std::string proofFile;                      ///< catalogue, or empty
};

/// Whether the command line asks for JSON; also of one that cannot be understood.
bool AsksForJson(int count, const char* const* values);

/// Throws Failure (WrongUsage). For --help and --version prints and returns false: nothing is left to do.
bool ParseArguments(int count, const char* const* values, Arguments& arguments);

}  // namespace App
