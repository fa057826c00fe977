#pragma once

#include <optional>
#include <string_view>

#include "Kestro/Core/Property.h"

/// Conversions between the kinds of value; nullopt where the target cannot keep the value. Used inside CoreInt alone.
namespace Kestro::Core::Conversions {

std::optional<int64_t> ToInt64(double value);
std::optional<Property::Ratio> ToRatio(double value);

/// Of a whole text: a boolean, an integer, a decimal number or numerator/denominator.
std::optional<bool> ParseBool(std::string_view text);
std::optional<int64_t> ParseInt64(std::string_view text);
std::optional<double> ParseDouble(std::string_view text);
std::optional<Property::Ratio> ParseRatio(std::string_view text);

/// The shortest decimal that reads back as the same number.
std::string Print(double value);

}  // namespace Kestro::Core::Conversions
