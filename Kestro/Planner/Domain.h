#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Conf/IValidationRule.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Export.h"

namespace Kestro::Planner {

/// What a constraint accepts, as it describes itself: a list, a range, or a rule that has only a description.
struct Domain {
    struct Entry {
        std::string name;  ///< as it is shown
        Kestro::Core::Property value;
    };
    bool isList = false;
    std::vector<Entry> entries;
    std::optional<Kestro::Core::Property> min;
    std::optional<Kestro::Core::Property> max;
    std::optional<Kestro::Core::Property> step;
    std::string description;
};

KESTRO_PLANNER_API Domain DescribeDomain(const Kestro::Conf::IPropertyConstraint& constraint);

/// One text for each value of a list ("29.97 = 30000/1001" where name and value differ), one for a range or a rule.
KESTRO_PLANNER_API std::vector<std::string> AllowedValues(const Domain& domain);

/// The same as one text; commas part them where blanks would not.
KESTRO_PLANNER_API std::string ListInWords(const std::vector<std::string>& values);

/// What may follow "must be": "44100", "one of 44100 48000", "from 1 to 100", "even".
KESTRO_PLANNER_API std::string InWords(const Domain& domain);
inline std::string InWords(const Kestro::Conf::IPropertyConstraint& constraint) {
    return InWords(DescribeDomain(constraint));
}

/// "When … is mp3, … must be one of 44100 48000."
KESTRO_PLANNER_API std::string InWords(const Kestro::Conf::IValidationRule& rule);

}  // namespace Kestro::Planner
