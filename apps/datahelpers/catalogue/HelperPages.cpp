#include <algorithm>

#include "Kestro/Planner/Text.h"
#include "Kestro/Proc/FilterRecord.h"
#include "Kestro/Proc/FindSetting.h"

#include "catalogue/Pages.h"
#include "catalogue/Plot.h"
#include "catalogue/ProofSummary.h"
#include "catalogue/Sheet.h"

namespace App::Catalogue {
namespace {

using Kestro::Conf::StreamRecord;

/// One line of a list of codecs in a container, or of containers for a codec.
struct Entry {
    std::string name;
    std::string address;  ///< of its page
    std::string about;    ///< "libx264"
    const Cell* cell;
};

Markup Taken(const Entry& entry) {
    const Cell& cell = *entry.cell;
    std::string words = Name(cell.standing);
    if (!entry.about.empty()) words += ", " + entry.about;
    if (!cell.reason.empty()) words += ", " + cell.reason;
    if (!cell.proof.empty()) words += ", " + cell.proof;
    if (!cell.proofReason.empty()) words += ": " + cell.proofReason;
    return Element("li", {{"id", AnchorOf(entry.name)}},
                   Mark(cell.standing) + " " + Link(entry.address, entry.name) + " " +
                       Element("span", {{"class", "about"}}, words));
}

/// What is taken, best first; what is refused in a list that unfolds, with the reasons.
Markup Takes(std::vector<Entry> entries) {
    std::ranges::stable_sort(entries, {}, [](const Entry& entry) { return entry.cell->standing; });
    Markup taken;
    Markup refused;
    std::size_t count = 0;
    for (const Entry& entry : entries) {
        if (IsTaken(entry.cell->standing)) {
            taken += Taken(entry);
            continue;
        }
        ++count;
        refused +=
            Element("li", {{"id", AnchorOf(entry.name)}},
                    Link(entry.address, entry.name) + " " + Element("span", {{"class", "about"}}, entry.cell->reason));
    }
    Markup content =
        taken.IsEmpty() ? Element("p", "None is taken.") : Element("ul", {{"class", "taken columns"}}, taken);
    if (count > 0) {
        content += Element("details", {{"class", "refused"}},
                           Element("summary", std::to_string(count) + " refused, and why") +
                               Element("ul", {{"class", "columns"}}, refused));
    }
    return content;
}

Markup Fact(const std::string& name, const Markup& value) {
    return Element("div", Element("dt", name) + Element("dd", value));
}

Markup Facts(const Markup& facts) { return Element("dl", {{"class", "facts"}}, facts); }

Markup Title(const std::string& kind, const std::string& name) {
    return Element("p", {{"class", "kicker"}}, kind) + Element("h1", name);
}

Markup AlsoCalled(const std::vector<std::string>& also) {
    return also.empty() ? Markup() : Fact("Also called", Planner::Join(also, ", "));
}

Section CodecsOfKind(const Container& container, const StreamRecord& kind, const Knowledge& knowledge) {
    std::vector<Entry> entries;
    for (std::size_t i = 0; i < knowledge.codecs.size(); ++i) {
        const Codec& codec = knowledge.codecs[i];
        if (codec.kind != &kind || codec.isLeftToProgram) continue;
        const bool lacksEncoder = codec.encoder.empty() && IsOffered(container.cells[i].standing);
        entries.push_back({codec.id, "../" + AddressOf(codec),
                           lacksEncoder ? "no encoder in this FFmpeg" : codec.encoder, &container.cells[i]});
    }
    const auto isTaken = [](const Entry& entry) { return IsTaken(entry.cell->standing); };
    const std::optional<int64_t> limit = container.Limit(kind.type);
    Markup content;
    if (limit && *limit > 0 && std::ranges::any_of(entries, isTaken)) {
        content += Element("p", "At most " + Counted(static_cast<std::size_t>(*limit), "stream") + ".");
    }
    return {WordFor(kind.type), HeadingOf(kind.type), content + Takes(std::move(entries))};
}

std::string Kicker(const Codec& codec) {
    return codec.kind->type == Kestro::Conf::StreamType::Subtitle ? "Subtitle codec"
                                                                  : Planner::CodecsOf(codec.kind->type).words;
}

std::vector<Entry> ContainersFor(std::size_t place, const Knowledge& knowledge) {
    std::vector<Entry> entries;
    for (const Container& container : knowledge.containers) {
        const std::string about = container.muxer.empty() ? "no muxer" : "muxer " + container.muxer;
        entries.push_back({container.name, "../" + AddressOf(container), container.muxer == container.name ? "" : about,
                           &container.cells[place]});
    }
    return entries;
}

Section BitrateSection(const Codec& codec) {
    Section section{"bitrates", "Bitrates", {}};
    const std::optional<Curve> curve = BitrateCurve(codec);
    if (!curve) return section;
    const bool isVideo = codec.kind->type == Kestro::Conf::StreamType::Video;
    section.content =
        Element("p", isVideo ? "What the helper answers where no bitrate is asked for: by itself, and for a quality."
                             : "What the helper comes to for the sound that is encoded.");
    section.content += Plot(*curve, codec.id);
    return section;
}

}  // namespace

Page ContainerPage(const Container& container, const Knowledge& knowledge) {
    Markup facts =
        Fact("FFmpeg\u2019s muxer", container.muxer.empty() ? Markup("none in this FFmpeg") : Code(container.muxer)) +
        Fact("Files end in", Code("." + container.extension)) + AlsoCalled(container.also);
    if (container.isPicture) facts += Fact("Holds", "one picture");
    facts += Fact("Try it", Link("../plan.html#" + container.name, "Plan a conversion"));
    std::vector<Section> sections;
    for (const StreamRecord& kind : StreamRecord::All()) sections.push_back(CodecsOfKind(container, kind, knowledge));
    sections.push_back(SettingsSection(container.sheet));
    sections.push_back(RulesSection(container.sheet));
    if (knowledge.proof) {
        const auto isOfIt = [&](const ProofRow& row) { return row.container == container.name; };
        sections.push_back({"proof", "What was proven", ProofOf(*knowledge.proof, isOfIt)});
    }
    return {.path = AddressOf(container),
            .title = container.name + ", container",
            .content = Title("Container", container.name) + Facts(facts) + WithContents(sections),
            .scripts = {"pages.js"}};
}

Page CodecPage(std::size_t place, const Knowledge& knowledge) {
    const Codec& codec = knowledge.codecs[place];
    Markup facts =
        Fact("FFmpeg\u2019s encoder", codec.encoder.empty() ? Markup("none in this FFmpeg") : Code(codec.encoder)) +
        AlsoCalled(codec.also);
    const auto isDefault = [place](const Container& one) { return one.cells[place].standing == Standing::Default; };
    const auto defaults = static_cast<std::size_t>(std::ranges::count_if(knowledge.containers, isDefault));
    if (defaults > 0) facts += Fact("Default of", Counted(defaults, "container"));
    Markup content = Title(Kicker(codec), codec.id);
    std::vector<Section> sections;
    if (codec.isLeftToProgram) {
        content +=
            Element("p", {{"class", "lead"}},
                    "No codec: the choice is left to the program, which copies the input\u2019s stream where the "
                    "container takes it, or encodes the container\u2019s default.");
    } else {
        content += Facts(facts);
        sections.push_back({"containers", "Containers", Takes(ContainersFor(place, knowledge))});
    }
    if (codec.sheet) {
        sections.push_back(SettingsSection(*codec.sheet));
        sections.push_back(RulesSection(*codec.sheet));
        sections.push_back(FiltersSection(*codec.sheet, knowledge, "../"));
        sections.push_back(BitrateSection(codec));
    } else {
        const char* none = "It has none: streams of it are copied, or converted between kinds of text.";
        sections.push_back({"settings", "Settings", Element("p", none)});
    }
    if (knowledge.proof) {
        const auto isOfIt = [&](const ProofRow& row) {
            return row.video == codec.id || row.audio == codec.id || row.subtitles == codec.id;
        };
        sections.push_back({"proof", "What was proven", ProofOf(*knowledge.proof, isOfIt)});
    }
    return {.path = AddressOf(codec),
            .title = codec.id + ", " + Kicker(codec),
            .content = content + WithContents(sections),
            .scripts = {"pages.js"}};
}

Page FilterPage(const HelperSheet& filter, const Knowledge& knowledge) {
    const Kestro::Conf::SettingRecord* record = Kestro::Proc::FindSetting(filter.name);
    const Kestro::Conf::StreamType type = Kestro::Proc::FilterRecord::Find(filter.name)->type;
    Markup content = Title("Filter", filter.name);
    if (record != nullptr) content += Element("p", {{"class", "lead"}}, record->help);
    content += Facts(Fact("Works on", WordFor(type)));
    Markup users;
    for (const Codec& codec : knowledge.codecs) {
        const auto isThis = [&](const auto& one) { return one.first == filter.name; };
        const bool isUser = codec.sheet && std::ranges::any_of(codec.sheet->filters, isThis);
        if (isUser) users += Element("li", Link("../" + AddressOf(codec), codec.id));
    }
    if (!users.IsEmpty()) users = Element("ul", {{"class", "names"}}, users);
    content += WithContents({SettingsSection(filter), RulesSection(filter), {"users", "Stands before", users}});
    return {.path = AddressOf(filter), .title = filter.name + ", filter", .content = content, .scripts = {"pages.js"}};
}

}  // namespace App::Catalogue
