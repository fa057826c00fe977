#include "report/FitReport.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace App {

using Kestro::Planner::Fit;

Json ToJson(const std::vector<Fit>& fits) {
    Json entries = Json::array();
    for (const Fit& fit : fits) {
        entries.push_back({{"codec", fit.codec},
                           {"container", fit.container},
                           {"muxer", fit.muxer.empty() ? Json() : Json(fit.muxer)},
                           {"ownMuxer", fit.ownMuxer},
                           {"fits", fit.fits},
                           {"offered", fit.isOffered},
                           {"reason", fit.reason.empty() ? Json() : Json(fit.reason)}});
    }
    return entries;
}

void Print(std::ostream& out, const std::vector<Fit>& fits) {
    const auto containerOf = [](const Fit& fit) {
        return fit.container + (fit.muxer.empty() || fit.ownMuxer ? "" : " (written by " + fit.muxer + ")");
    };
    std::size_t codecs = 0;
    std::size_t containers = 0;
    for (const Fit& fit : fits) {
        codecs = std::max(codecs, fit.codec.size());
        containers = std::max(containers, containerOf(fit).size());
    }
    for (const Fit& fit : fits) {
        const std::string container = containerOf(fit);
        const std::string yes = fit.isOffered ? "yes" : "yes, as a copy; it is not offered to encode with";
        out << fit.codec << std::string(codecs - fit.codec.size(), ' ') << "  " << container
            << std::string(containers - container.size(), ' ') << "  " << (fit.fits ? yes : "no, " + fit.reason)
            << "\n";
    }
}

}  // namespace App
