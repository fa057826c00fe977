#pragma once

#include <string>

#include "Kestro/Export.h"

namespace Kestro::Core {

/// Translates the messages of one domain by its gettext catalogues: LOCALE_DIRECTORY/LANGUAGE/LC_MESSAGES/DOMAIN.mo.
///
/// The language is that of the process: what the application has set with `setlocale(LC_ALL, "")` or for LC_MESSAGES,
/// and the user's LANGUAGE. Nothing here sets it. Safe to use from any number of threads.
class KESTRO_CORELOCALIZATION_API DomainLocalizationManager {
public:
    /// The translation, UTF-8; the text itself when its domain, language or message has no catalogue entry.
    std::string Translate(const std::string& text) const;

private:
    friend KESTRO_CORELOCALIZATION_API const DomainLocalizationManager& GetLocalizationManagerForDomain(
        const std::string& domain);
    explicit DomainLocalizationManager(const std::string& domain) : domain_(domain) {}

    std::string domain_;
};

/// The manager of a domain, such as "core". It is made at its first use and lives until the library is unloaded.
KESTRO_CORELOCALIZATION_API const DomainLocalizationManager& GetLocalizationManagerForDomain(const std::string& domain);

/// Looks for the catalogues of every domain in that directory, instead of where they are installed with this library
/// (share/kestro-datahelpers/locale beside its lib folder). For applications that bring their own catalogues along, and
/// for running from a build folder. May be called at any time; it counts for every translation after it.
KESTRO_CORELOCALIZATION_API void SetLocaleDirectory(const std::string& directory);

}  // namespace Kestro::Core
