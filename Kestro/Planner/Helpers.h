#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <span>
#include <string>
#include <vector>

#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Conf/StreamType.h"
#include "Kestro/Planner/Export.h"

/// The library's helpers, by the words that users have for them.
namespace Kestro::Planner {

using HelperPtr = boost::intrusive_ptr<const Conf::IDataHelper>;

/// One of the library's tables of helpers.
struct HelperKind {
    const char* name;                 ///< "audio"
    const char* plural;               ///< "audio", "formats"
    const char* words;                ///< "audio codec"
    const std::string* registryType;  ///< null: filters, which the registry does not list
};

KESTRO_PLANNER_API extern const HelperKind kFormats;
KESTRO_PLANNER_API extern const HelperKind kAudioCodecs;
KESTRO_PLANNER_API extern const HelperKind kVideoCodecs;
KESTRO_PLANNER_API extern const HelperKind kFilters;
/// All four, in the order in which they are shown.
KESTRO_PLANNER_API std::span<const HelperKind* const> HelperKinds();
/// Of the encoders for a kind of stream: video or audio.
KESTRO_PLANNER_API const HelperKind& CodecsOf(Conf::StreamType type);

KESTRO_PLANNER_API std::vector<std::string> HelperNames(const HelperKind& kind);

/// The name of the helper that people mean by a word: "matroska" for "mkv", "hevc" for "H.265" and "libx265"; the word
/// itself where that is a name already, or nobody's.
KESTRO_PLANNER_API std::string NameMeantBy(const HelperKind& kind, const std::string& word);

/// Throws NotAcceptable (UnknownName) with the known names and the nearest of them for a name that there is not.
KESTRO_PLANNER_API HelperPtr FindHelper(const HelperKind& kind, const std::string& name);
/// The same helper with the library's automatic choices.
KESTRO_PLANNER_API HelperPtr FindAutomaticHelper(const HelperKind& kind, const std::string& name);

}  // namespace Kestro::Planner
