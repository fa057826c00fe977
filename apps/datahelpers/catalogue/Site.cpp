#include "catalogue/Site.h"

#include "catalogue/Assets.h"
#include "catalogue/ExamplePlans.h"
#include "catalogue/Pages.h"

namespace App::Catalogue {

std::vector<SiteFile> MakeSite(const Knowledge& knowledge) {
    std::vector<SiteFile> files;
    const auto add = [&](const Page& page) { files.push_back({page.path, Document(page, knowledge)}); };
    add(MatrixPage(knowledge));
    add(ListsPage(knowledge));
    add(PlanPage(knowledge));
    if (knowledge.proof) add(ProofPage(knowledge));
    for (const Container& container : knowledge.containers) add(ContainerPage(container, knowledge));
    for (std::size_t i = 0; i < knowledge.codecs.size(); ++i) add(CodecPage(i, knowledge));
    for (const HelperSheet& filter : knowledge.filters) add(FilterPage(filter, knowledge));
    // A script, because a page that was opened from a disk may load no other file.
    files.push_back({"plans.js", "window.examplePlans = " + ExamplePlans(knowledge).dump() + ";\n"});
    for (const Asset& asset : kAssets) files.push_back({asset.name, std::string(asset.content)});
    return files;
}

}  // namespace App::Catalogue
