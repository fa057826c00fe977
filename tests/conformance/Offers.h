#pragma once

#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "Kestro/Conf/DataHelpers/DataHelpers.h"
#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Core/Property.h"

#include "tests/Described.h"

namespace Kestro::Conf {

/// Values that the helper has and FFmpeg's encoder refuses or changes: they are right for the format, or for another
/// encoder.
struct EncoderException {
    const char* encoder;
    const char* setting;
    const char* values;
    const char* outcome;
    const char* why;
};

/// What a test of that encoder finds when nothing but the exceptions comes up: `setting=value: outcome`.
inline std::vector<std::string> ExpectedOf(std::span<const EncoderException> exceptions, const std::string& encoder) {
    std::vector<std::string> findings;
    for (const EncoderException& row : exceptions) {
        if (row.encoder != encoder) continue;
        std::istringstream values(row.values);
        for (std::string value; values >> value;) findings.push_back(row.setting + ("=" + value) + ": " + row.outcome);
    }
    return findings;
}

/// The codecs that have a helper of that type.
inline std::vector<std::string> CodecsOf(const std::string& type) {
    std::vector<std::string> names;
    for (const auto& [name, helper] : GetAvailableDataHelpers(type)) {
        if (name != IFormatCodec::CODEC_ID_AUTO) names.push_back(name);
    }
    return names;
}

/// Of a range: its ends and its middle.
inline std::vector<Core::Property> Values(const IPropertyConstraint& constraint) {
    const Core::Property described = Described(constraint);
    return {described.begin(), described.end()};
}

}  // namespace Kestro::Conf
