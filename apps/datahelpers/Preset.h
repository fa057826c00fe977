#pragma once

#include <span>
#include <string>
#include <vector>

#include "Kestro/Core/Property.h"

#include "Arguments.h"
#include "Registry.h"

namespace App {

/// One output stream that a preset asks for.
struct PresetStream {
    const StreamKind* kind;           ///< null: subtitles, which are not converted
    std::string path;                 ///< as the user writes it: "Streams/TypeId=audio"
    std::string codecId;              ///< the codec to encode with, of the registry
    Kestro::Core::Property settings;  ///< as the preset has them: TypeId, codec node, filter nodes
    std::string chosenBecause;        ///< why that codec, when the preset leaves it to the program
};

/// What is to be made: a preset file or a container's defaults, with the user's changes. Every setting is known to the
/// helpers and of the right type; whether its value is accepted is for the plan to find out.
struct Preset {
    bool isFile = false;  ///< it was read from a file, and is expected to say everything
    std::string container;
    HelperPtr format;
    Kestro::Core::Property formatSettings;  ///< the format's node as the preset has it, without streams
    std::vector<PresetStream> streams;
};

/// Throws Failure: WrongUsage for a file that cannot be read, NotAcceptable for what cannot be used.
Preset LoadPreset(const PlanOptions& options);

}  // namespace App
