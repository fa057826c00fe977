#include "catalogue/Pages.h"

namespace App::Catalogue {
namespace {

Markup Choice(const char* id, const char* label) {
    return Element("div", {{"class", "field"}},
                   Element("label", {{"for", id}}, label) + Element("select", {{"id", id}}, {}));
}

}  // namespace

Page PlanPage(const Knowledge& knowledge) {
    Markup names;
    for (const Container& container : knowledge.containers)
        names += Element("li", Link(AddressOf(container), container.name));
    const Markup form =
        Element("form", {{"class", "filters"}, {"id", "choose"}, {"aria-label", "What to make"}},
                Choice("container", "Container") + Choice("video", "Video codec") + Choice("audio", "Audio codec"));
    const Markup content =
        Element("h1", "Plan a conversion") +
        Element("p", {{"class", "lead"}},
                "What the planner makes of one film: every setting, what it chose and what it corrected, with the "
                "reason.") +
        Element("noscript", Element("p", {{"class", "notice"}},
                                    Markup("Choosing here needs scripts. The program does the same: ") +
                                        Code("datahelpers plan feature.mkv feature.mp4 --video h264") +
                                        ". The sheets of the containers are pages of their own:") +
                                Element("ul", {{"class", "names"}}, names)) +
        Element("div", {{"id", "planner"}, {"hidden", ""}},
                Element("div", {{"class", "film"}},
                        Element("h2", "The film") + Element("pre", {{"id", "film"}, {"tabindex", "0"}}, {})) +
                    form + Element("p", {{"id", "summary"}, {"role", "status"}}, {}) +
                    Element("div", {{"id", "plan"}}, {}));
    return {.path = "plan.html", .title = "Plan a conversion", .content = content, .scripts = {"plans.js", "plan.js"}};
}

}  // namespace App::Catalogue
