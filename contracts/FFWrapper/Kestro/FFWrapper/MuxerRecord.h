#pragma once

#include <string>

#include "Kestro/Export.h"

namespace Kestro::FFWrapper {

/// What a muxer of FFmpeg keeps of a file beside its streams, as reading its files back shows.
struct KESTRO_FFWRAPPER_API MuxerRecord {
    const char* name;
    bool hasChapters = false;
    bool hasLanguages = false;     ///< of each stream
    bool hasAttachments = false;   ///< files in the file, such as fonts
    bool hasCovers = false;        ///< an attached picture beside the streams
    bool attachesCovers = false;   ///< a cover picture is one of its attachments, by its name
    bool hasForcedMarks = false;   ///< of subtitles that are always shown
    bool hasRotation = false;      ///< a picture that players turn before they show it
    bool namesTracks = false;      ///< a stream's title goes by "handler_name"
    bool hasMovableIndex = false;  ///< the index can be moved to the front
    bool namesCodecs = false;      ///< by names of its own, also those that have no tag
    bool hasTimestamps = true;     ///< false: a stream begins with the file and has no holes

    /// The muxer's row; that of a muxer that keeps nothing where there is none.
    static const MuxerRecord& Find(const std::string& muxer);
};

/// The code of a language (ISO 639-2) in the form that the muxer keeps: some languages have two.
KESTRO_FFWRAPPER_API std::string LanguageFor(const std::string& muxer, const std::string& language);

/// FFmpeg's filter that brings a copied stream of the codec into the form that the muxer writes, where the muxer does
/// not call it itself; empty: none is needed. It leaves alone what has that form already.
KESTRO_FFWRAPPER_API std::string BitstreamFilter(const std::string& muxer, const std::string& codecId);

}  // namespace Kestro::FFWrapper
