#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <span>
#include <string>
#include <vector>

#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Conf/StreamType.h"

#include "Failure.h"

/// The library's helpers, by the words that the command line uses for them.
namespace App {

using HelperPtr = boost::intrusive_ptr<const Kestro::Conf::IDataHelper>;

/// One of the library's tables of helpers.
struct HelperKind {
    const char* name;                 ///< "audio"
    const char* plural;               ///< what `list` takes: "audio", "formats"
    const char* words;                ///< "audio codec"
    const std::string* registryType;  ///< null: filters, which the registry does not list
};

extern const HelperKind kFormats;
extern const HelperKind kAudioCodecs;
extern const HelperKind kVideoCodecs;
extern const HelperKind kFilters;
/// All four, in the order in which they are shown.
std::span<const HelperKind* const> HelperKinds();

/// A kind of stream that can be converted: where a preset and the library keep its codec.
struct StreamKind {
    Kestro::Conf::StreamType type;
    const std::string& typeId;          ///< IPreset::KEY_TYPE_ID of such a stream
    const std::string& codecKey;        ///< its codec node
    const std::string& formatCodecTag;  ///< the name that a container's helper expects of the codec node
    const HelperKind& codecs;

    /// The path of its codec's id, from a preset's root: the key of the container's constraint on codecs.
    std::string CodecIdPath() const;
};

/// Video, audio.
std::span<const StreamKind> StreamKinds();

/// A processing filter and the kind of stream that it works on.
struct FilterKind {
    const std::string& classId;
    Kestro::Conf::StreamType type;
};
std::span<const FilterKind> FilterKinds();

std::vector<std::string> HelperNames(const HelperKind& kind);

/// Throws Failure with that status, the known names and the nearest of them, for a name that there is not.
HelperPtr FindHelper(const HelperKind& kind, const std::string& name, ExitStatus status);
/// The same helper with the library's automatic choices.
HelperPtr FindAutomaticHelper(const HelperKind& kind, const std::string& name, ExitStatus status);

}  // namespace App
