#pragma once

#include "catalogue/Knowledge.h"
#include "catalogue/Markup.h"

/// The parts of a page that a helper's sheet fills.
namespace App::Catalogue {

/// One with nothing in it is left out of the page.
struct Section {
    std::string id;
    std::string heading;
    Markup content;
};

/// Every setting with its default, what it may be, and what it does, and the defaults as a preset has them. What is
/// told in other places (a container's codecs) is left out.
Section SettingsSection(const HelperSheet& sheet);
/// A sentence for every rule.
Section RulesSection(const HelperSheet& sheet);
/// The filters before the encoder.
Section FiltersSection(const HelperSheet& sheet, const Knowledge& knowledge, const std::string& base);

Markup ToMarkup(const Section& section);
/// The sections, and before them links to each.
Markup WithContents(const std::vector<Section>& sections);
struct Column {
    Column(std::string words, bool areNumbers = false)  // NOLINT(google-explicit-constructor)
        : head(std::move(words)), isNumber(areNumbers) {}
    Column(const char* words, bool areNumbers = false)  // NOLINT(google-explicit-constructor)
        : Column(std::string(words), areNumbers) {}

    std::string head;
    bool isNumber;
};

/// A table that scrolls in itself where the page is narrow. The first column names the row. caption: or empty.
Markup ScrollingTable(const std::string& name, const std::vector<Column>& columns, const Markup& rows,
                      const Markup& caption = {});

}  // namespace App::Catalogue
