#include "Kestro/Planner/FileNames.h"

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/FFWrapper/MuxerNames.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {

std::string ContainerOfFileName(const std::string& path) {
    const std::string file = path.substr(path.rfind('/') + 1);
    const std::size_t dot = file.rfind('.');
    if (dot == std::string::npos) return {};
    std::string name = NameMeantBy(kFormats, file.substr(dot + 1));
    return GetAvailableDataHelpers(*kFormats.registryType).contains(name) ? name : std::string();
}

std::string FileExtension(const std::string& container) { return FFWrapper::FileExtension(container); }

std::string NoteOnFileName(const Plan& plan, const std::string& output) {
    const std::string named = ContainerOfFileName(output);
    if (named.empty() || named == plan.container) return {};
    if (!plan.IsPicture() && FFWrapper::MuxerName(named) == plan.muxer) return {};
    return "The name " + Printable(output) + " is that of " + named + "; what it gets is " + plan.container +
           ", as was asked for.";
}

}  // namespace Kestro::Planner
