#pragma once

#include <boost/rational.hpp>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Kestro/Planner/Export.h"

/// Texts for people.
namespace Kestro::Planner {

/// "a b c".
KESTRO_PLANNER_API std::string Join(std::span<const std::string> words, std::string_view separator = " ");

/// The text with what could steer a terminal or hide something written as `\x1b` or `\u202e`: control characters, those
/// that turn the direction of writing, bytes that are no UTF-8.
KESTRO_PLANNER_API std::string Printable(std::string_view text);

/// "30000/1001", as in settings.
KESTRO_PLANNER_API std::string RatioText(const boost::rational<int64_t>& ratio);

/// In small letters, those of ASCII.
std::string Lowered(std::string text);

/// Among the candidates the one that was probably meant, or nothing.
std::string Nearest(std::string_view name, std::span<const std::string> candidates);

/// ` Did you mean "x"?`, or nothing.
KESTRO_PLANNER_API std::string DidYouMean(std::string_view name, std::span<const std::string> candidates);

}  // namespace Kestro::Planner
