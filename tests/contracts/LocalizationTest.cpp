#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "Kestro/Conf/SettingRecord.h"
#include "Kestro/Core/DomainLocalizationManager.h"

namespace Kestro::Core {
namespace {

const std::string kMessage = "Parameter %1 must be one of the following values: %2";
const std::string kDomain = "core";

// The catalogues of the build folder: its programs are in bin.
std::string BuiltCatalogues() {
    return (std::filesystem::canonical("/proc/self/exe").parent_path().parent_path() / "locale").string();
}

class Localization : public testing::Test {
protected:
    void SetUp() override {
        // gettext translates for no user of the C locale, not even of C.UTF-8; under another name it lets LANGUAGE
        // choose.
        std::filesystem::create_directory(locales_);
        std::filesystem::create_directory_symlink("/usr/lib/locale/C.utf8", locales_ / "en_US.UTF-8");
        setenv("LOCPATH", locales_.c_str(), 1);
        ASSERT_NE(setlocale(LC_ALL, "en_US.UTF-8"), nullptr);
    }
    void TearDown() override {
        unsetenv("LANGUAGE");
        unsetenv("LOCPATH");
        setlocale(LC_ALL, "C");
        std::filesystem::remove_all(locales_);
    }

    // gettext looks at LANGUAGE anew once its catalogues have changed their place.
    static void SetLanguage(const char* language) {
        setenv("LANGUAGE", language, 1);
        SetLocaleDirectory("/nonexistent");
        SetLocaleDirectory(BuiltCatalogues());
    }

    const std::filesystem::path locales_ = testing::TempDir() + "locales-" + std::to_string(getpid());
};

TEST_F(Localization, TranslatesIntoEveryLanguageOfTheCatalogues) {
    const DomainLocalizationManager& core = GetLocalizationManagerForDomain(kDomain);
    EXPECT_EQ(&GetLocalizationManagerForDomain(kDomain), &core);
    for (const auto& [language, part] : {std::pair("de", "muss einer der folgenden Werte sein"),
                                         std::pair("fr", "doit \xC3\xAAtre l\xE2\x80\x99une des valeurs suivantes")}) {
        SetLanguage(language);
        const std::string translated = core.Translate(kMessage);
        EXPECT_NE(translated.find(part), std::string::npos) << language << ": " << translated;
        EXPECT_NE(translated.find("%1"), std::string::npos) << language;
        EXPECT_NE(translated.find("%2"), std::string::npos) << language;
        const Conf::SettingRecord& rate = *Conf::SettingRecord::Find("VideoFrameRate/Fps");
        EXPECT_NE(rate.Label(), rate.label);
        EXPECT_NE(rate.Unit(), rate.unit);
        EXPECT_NE(rate.Help(), rate.help);
    }
}

TEST_F(Localization, WithoutACatalogueTheTextItselfIsTheAnswer) {
    SetLanguage("de");
    const DomainLocalizationManager& core = GetLocalizationManagerForDomain(kDomain);
    EXPECT_EQ(core.Translate(""), "");
    EXPECT_EQ(core.Translate("No such message"), "No such message");
    for (const char* domain : {"", "no-such-domain", "../core"}) {
        EXPECT_EQ(GetLocalizationManagerForDomain(domain).Translate(kMessage), kMessage) << domain;
    }
    SetLanguage("xx");
    EXPECT_EQ(core.Translate(kMessage), kMessage);
    SetLanguage("de");
    SetLocaleDirectory("/nonexistent");
    EXPECT_EQ(core.Translate(kMessage), kMessage);
}

TEST_F(Localization, ThreadsShareTheDomains) {
    SetLanguage("de");
    const std::string expected = GetLocalizationManagerForDomain(kDomain).Translate(kMessage);
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads(4);
    for (std::thread& thread : threads) {
        thread = std::thread([&] {
            for (int i = 0; i < 200; ++i) {
                const std::string other = "domain" + std::to_string(i);
                if (GetLocalizationManagerForDomain(kDomain).Translate(kMessage) != expected) ++wrong;
                if (GetLocalizationManagerForDomain(other).Translate(kMessage) != kMessage) ++wrong;
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace Kestro::Core
