#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Preset.h"

namespace Kestro::Planner {

/// One output stream that a preset asks for.
struct PresetStream {
    // Beside the codec node and the filters: which of the input's streams it is made of.
    static constexpr const char* kTracks = "Tracks";
    static constexpr const char* kAllTracks = "all";
    static constexpr const char* kNoTracks = "none";
    // Of video: whether an interlaced source stays so.
    static constexpr const char* kKeepFields = "KeepFields";

    const Conf::StreamRecord* kind;
    std::string path;              ///< as the user writes it: "Streams/TypeId=audio"
    std::string codecId = {};      ///< the codec to encode with, of the registry
    Core::Property settings;       ///< as the preset has them: TypeId, codec node, filter nodes
    std::string chosenBecause;     ///< why that codec, when the preset leaves it open
    const Preset::Choice* chosen;  ///< the codec that was asked for beside the settings; may be null
    bool isOpen = false;           ///< nobody names the codec
    bool isCopy = false;           ///< the source's packets are asked for as they are
    bool isImplied = false;        ///< the preset does not list it: it goes with what the preset lists
    bool keepsFields = false;      ///< as kKeepFields has it
    std::string tracks = {};       ///< as kTracks has it; empty: nothing is said
};

/// A preset with its changes: every setting is known to the helpers and of the right type.
struct CheckedPreset {
    bool isFromText = false;
    std::string container;
    HelperPtr format;
    Core::Property formatSettings;  ///< the format's node as the preset has it, without streams
    std::vector<PresetStream> streams;
    std::optional<int64_t> sizeLimit;  ///< bytes
};

/// Throws NotAcceptable with all problems. The result refers to the preset.
CheckedPreset Checked(const Preset& preset);

}  // namespace Kestro::Planner
