#include "cli/CatalogueCommand.h"

#include <iostream>

#include "Kestro/Planner/Text.h"

#include "catalogue/SiteFolder.h"
#include "report/Text.h"

namespace App {

Outcome WriteCatalogue(const Arguments& arguments) {
    Catalogue::CheckSiteFolder(arguments.output, arguments.overwrite);
    const auto files = Catalogue::MakeSite(Catalogue::GatherKnowledge(arguments.proofFile));
    Catalogue::WriteSite(arguments.output, files);
    int64_t size = 0;
    for (const Catalogue::SiteFile& file : files) size += static_cast<int64_t>(file.content.size());
    const std::string first = arguments.output + (arguments.output.ends_with('/') ? "" : "/") + "index.html";
    if (!arguments.json) {
        std::cout << "Wrote " << files.size() << " files, " << SizeText(size) << ": open " << Planner::Printable(first)
                  << "\n";
    }
    return {{{"folder", arguments.output}, {"index", first}, {"files", files.size()}, {"size", size}}};
}

}  // namespace App
