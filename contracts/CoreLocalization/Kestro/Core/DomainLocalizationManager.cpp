#include "Kestro/Core/DomainLocalizationManager.h"

#include <dlfcn.h>
#include <libintl.h>

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <system_error>

#include "Kestro/UntilUnload.h"

namespace Kestro::Core {
namespace {

// The catalogues lie at a fixed place relative to this library, which is asked of the loader.
std::string InstalledLocaleDirectory() {
    Dl_info library{};
    std::error_code error;
    std::filesystem::path folder;
    if (dladdr(reinterpret_cast<const void*>(&GetLocalizationManagerForDomain), &library) != 0 &&
        library.dli_fname != nullptr) {
        folder = std::filesystem::canonical(library.dli_fname, error).parent_path();
    }
    return (folder / KESTRO_LOCALE_DIR).lexically_normal().string();
}

struct Managers {
    std::mutex mutex;
    std::string directory = InstalledLocaleDirectory();
    std::map<std::string, DomainLocalizationManager> byDomain;
};

Managers& TheManagers() {
    static Managers& managers = *UntilUnload(std::make_unique<Managers>());
    return managers;
}

}  // namespace

std::string DomainLocalizationManager::Translate(const std::string& text) const {
    // gettext answers the empty text with the catalogue's header, and the empty domain with that of the application.
    if (text.empty() || domain_.empty()) return text;
    return dgettext(domain_.c_str(), text.c_str());
}

const DomainLocalizationManager& GetLocalizationManagerForDomain(const std::string& domain) {
    Managers& managers = TheManagers();
    const std::lock_guard lock(managers.mutex);
    const auto known = managers.byDomain.find(domain);
    if (known != managers.byDomain.end()) return known->second;

    if (!domain.empty()) {
        bindtextdomain(domain.c_str(), managers.directory.c_str());
        bind_textdomain_codeset(domain.c_str(), "UTF-8");
    }
    return managers.byDomain.emplace(domain, DomainLocalizationManager(domain)).first->second;
}

void SetLocaleDirectory(const std::string& directory) {
    Managers& managers = TheManagers();
    const std::lock_guard lock(managers.mutex);
    managers.directory = directory;
    for (const auto& [domain, manager] : managers.byDomain) {
        if (!domain.empty()) bindtextdomain(domain.c_str(), directory.c_str());
    }
}

}  // namespace Kestro::Core
