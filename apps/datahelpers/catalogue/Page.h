#pragma once

#include <string>
#include <vector>

#include "catalogue/Knowledge.h"
#include "catalogue/Markup.h"

namespace App::Catalogue {

/// One page, without what all pages have in common.
struct Page {
    std::string path;  ///< in the folder: "formats/mp4.html"
    std::string title;
    Markup content;
    std::vector<std::string> scripts = {};  ///< files of the folder

    /// What leads from the page to the top of the folder: "../" or nothing.
    std::string Base() const { return BaseOf(path); }
    static std::string BaseOf(const std::string& path) { return path.find('/') == std::string::npos ? "" : "../"; }
};

/// The whole document.
std::string Document(const Page& page, const Knowledge& knowledge);
/// Whether a document is one that Document made.
bool IsDocument(const std::string& beginning);

/// The page of a helper, from the top of the folder. Its name is made of characters that every file system takes.
std::string AddressOf(const Codec& codec);
std::string AddressOf(const Container& container);
std::string AddressOf(const HelperSheet& filter);
/// Where a container's page tells how it takes a codec, and the codec's page how the container takes it.
std::string AnchorOf(const std::string& name);

/// "Video codecs": a kind's helpers as a heading, and the words for one.
const char* HeadingOf(Kestro::Conf::StreamType type);
const char* WordFor(Kestro::Conf::StreamType type);

/// The symbol of a standing, for the eye alone: beside it stands what it is. more: classes.
Markup Mark(Standing standing, const std::string& more = {});

/// "1 container", "2 containers".
std::string Counted(std::size_t count, const std::string& what);

}  // namespace App::Catalogue
