#include "catalogue/Page.h"

#include <cstdio>

namespace App::Catalogue {
namespace {

using Kestro::Conf::StreamType;

constexpr const char* kGenerator = "datahelpers catalogue";
constexpr const char* kIcon =
    "data:image/svg+xml,%3Csvg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'%3E%3Crect width='8' height='8' "
    "rx='1.5' fill='%23155e75'/%3E%3Cpath d='M2 2h1v1H2zM5 2h1v1H5zM2 5h4v1H2z' fill='white'/%3E%3C/svg%3E";

std::string FileName(const std::string& name) {
    std::string safe;
    for (const char c : name) {
        const bool isPlain = (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'z') || c == '_';
        if (isPlain) {
            safe += c;
            continue;
        }
        char escaped[4];
        std::snprintf(escaped, sizeof escaped, "-%02x", static_cast<unsigned char>(c));
        safe += escaped;
    }
    return safe;
}

Markup Navigation(const Page& page, const Knowledge& knowledge) {
    const struct {
        const char* path;
        const char* words;
    } links[] = {{"index.html", "Matrix"},
                 {"plan.html", "Plan a conversion"},
                 {"lists.html", "Containers, codecs, filters"},
                 {"proof.html", "What was proven"}};
    Markup items;
    for (const auto& [path, words] : links) {
        if (!knowledge.proof && path == std::string("proof.html")) continue;
        const bool isHere = page.path == path;
        items +=
            Element("li", Element("a", {{"href", page.Base() + path}, {isHere ? "aria-current" : "", "page"}}, words));
    }
    return Element("nav", {{"aria-label", "Pages"}}, Element("ul", items));
}

}  // namespace

std::string Document(const Page& page, const Knowledge& knowledge) {
    const std::string base = page.Base();
    Markup head = Void("meta", {{"charset", "utf-8"}}) +
                  Void("meta", {{"name", "generator"}, {"content", kGenerator}}) +
                  Void("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}}) +
                  Void("meta", {{"name", "color-scheme"}, {"content", "light dark"}}) +
                  Element("title", page.title + " \u2013 DataHelpers catalogue") +
                  Void("link", {{"rel", "icon"}, {"href", kIcon}}) +
                  Void("link", {{"rel", "stylesheet"}, {"href", base + "catalogue.css"}});
    for (const std::string& script : page.scripts) {
        head += Element("script", {{"src", base + script}, {"defer", ""}}, {});
    }
    const Markup header =
        Element("a", {{"class", "skip"}, {"href", "#content"}}, "Skip to the content") +
        Element("header", Element("a", {{"class", "home"}, {"href", base + "index.html"}}, "DataHelpers catalogue") +
                              Navigation(page, knowledge));
    const Markup footer = Element(
        "footer", Element("p", "Written by datahelpers " DATAHELPERS_VERSION " beside FFmpeg " + knowledge.ffmpeg +
                                   ", whose muxers and encoders it names. It asks nothing of any network."));
    const Markup body = header + Element("main", {{"id", "content"}, {"tabindex", "-1"}}, page.content) + footer;
    return "<!DOCTYPE html>\n" +
           Element("html", {{"lang", "en"}}, Element("head", head) + Element("body", body)).Text() + "\n";
}

bool IsDocument(const std::string& beginning) {
    return beginning.find(R"(<meta name="generator" content=")" + std::string(kGenerator) + R"(">)") !=
           std::string::npos;
}

std::string AddressOf(const Codec& codec) {
    const bool hasHelpers = codec.kind->HasHelpers();
    const std::string folder = hasHelpers ? Planner::CodecsOf(codec.kind->type).plural : "subtitles";
    return folder + "/" + FileName(codec.id) + ".html";
}

std::string AddressOf(const Container& container) {
    return std::string(Planner::kFormats.plural) + "/" + FileName(container.name) + ".html";
}

std::string AddressOf(const HelperSheet& filter) {
    return std::string(filter.kind->plural) + "/" + FileName(filter.name) + ".html";
}

std::string AnchorOf(const std::string& name) { return "in-" + FileName(name); }

const char* HeadingOf(StreamType type) {
    return type == StreamType::Video ? "Video codecs" : type == StreamType::Audio ? "Audio codecs" : "Subtitle codecs";
}

const char* WordFor(StreamType type) {
    return type == StreamType::Video ? "video" : type == StreamType::Audio ? "audio" : "subtitles";
}

Markup Mark(Standing standing, const std::string& more) {
    const std::string classes = std::string("mark ") + Name(standing) + (more.empty() ? "" : " " + more);
    return Element("span", {{"class", classes}, {"aria-hidden", "true"}}, Symbol(standing));
}

std::string Counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace App::Catalogue
