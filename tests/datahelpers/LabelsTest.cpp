#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "Kestro/Proc/FindSetting.h"

#include "tests/datahelpers/Laws.h"

// What a form shows beside the settings of every helper, and its translations.

namespace Kestro::Conf {
namespace {

using Core::Property;
using Proc::FindSetting;

void AddLeaves(const Property& node, const std::string& path,
               std::set<std::string>& paths) {  // NOLINT(misc-no-recursion)
    if (node.Type() != PropertyTypes::Node) paths.insert(path);
    for (const Property& child : node) AddLeaves(child, path + Property::SEPARATOR + child.Name(), paths);
}

TEST(Labels, EverySettingOfEveryHelperHasItsOwn) {
    for (const auto& [type, name] : AllKeys()) {
        SCOPED_TRACE(type + " " + name);
        const Subject subject(type, name);
        std::set<std::string> paths;
        AddLeaves(subject.helper->GetDefaultSettings(), type, paths);
        for (const auto& [path, constraint] : subject.constraints) paths.insert(path);
        for (const auto& [path, rule] : subject.rules) paths.insert({rule->GetFirstName(), rule->GetSecondName()});
        for (const std::string& path : paths) {
            const SettingRecord* record = FindSetting(path);
            ASSERT_NE(record, nullptr) << path;
            EXPECT_EQ(record->tag, Laws::TagOf(path));
        }
    }
    for (const char* other : {"", "/", "BitRate/", "bitrate", "Rate", "no such setting"})
        EXPECT_EQ(FindSetting(other), nullptr) << other;
}

/// The messages of a catalogue and their translations, every text in one line.
std::map<std::string, std::string> Messages(const std::string& catalogue) {
    std::map<std::string, std::string> messages;
    std::ifstream file(std::string(KESTRO_TEST_DATA) + "/../../po/" + catalogue);
    std::string id;
    for (std::string line; std::getline(file, line);) {
        const auto text = [&line](std::size_t start) { return line.substr(start, line.size() - start - 1); };
        if (line.starts_with("msgid \"")) id = text(7);
        if (line.starts_with("msgstr \"")) messages[id] = text(8);
    }
    return messages;
}

TEST(Labels, AreInTheCataloguesAndTellApart) {
    std::vector<SettingRecord> records(SettingRecord::All().begin(), SettingRecord::All().end());
    std::ranges::copy(Proc::FilterSettings(), std::back_inserter(records));
    const auto english = Messages("core.pot");
    for (const char* catalogue : {"core.pot", "de.po", "fr.po"}) {
        const auto messages = Messages(catalogue);
        std::set<std::string> labels;
        std::set<std::string> tags;
        for (const SettingRecord& record : records) {
            for (const std::string text : {record.label, record.unit, record.help}) {
                if (text == record.unit && text.empty()) continue;
                ASSERT_TRUE(messages.contains(text)) << catalogue << ": " << text << " of " << record.tag;
                EXPECT_EQ(messages.at(text).empty(), messages == english) << catalogue << ": " << text;
            }
            EXPECT_TRUE(tags.insert(record.tag).second) << record.tag;
            const std::string& label = messages.at(record.label);
            EXPECT_TRUE(labels.insert(label.empty() ? record.label : label).second) << catalogue << ": " << label;
        }
        EXPECT_EQ(messages.size(), english.size()) << catalogue;
    }
}

}  // namespace
}  // namespace Kestro::Conf
