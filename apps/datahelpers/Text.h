#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Texts for people.
namespace App {

/// "a b c".
std::string Join(std::span<const std::string> words, std::string_view separator = " ");

/// The words in lines of at most `width` columns; every line after the first begins with `indent` blanks. The first
/// line is taken to begin at column `start`. A word that is longer than a line stands alone.
std::string Wrapped(std::span<const std::string> words, std::size_t start, std::size_t indent, std::size_t width);
/// The same of a text: its words are what stands between blanks.
std::string Wrapped(std::string_view text, std::size_t start, std::size_t indent, std::size_t width);

/// The text with control characters written as \x1b, so that a file's name cannot steer the terminal.
std::string Printable(std::string_view text);

/// Among the candidates the one that was probably meant, or nothing.
std::string Nearest(std::string_view name, std::span<const std::string> candidates);

/// ` Did you mean "x"?`, or nothing.
std::string DidYouMean(std::string_view name, std::span<const std::string> candidates);

/// Columns of the terminal behind the descriptor; $COLUMNS or 80 when it is none.
std::size_t TerminalWidth(int descriptor);

/// "1:02:03" or "2:03".
std::string ClockTime(double seconds);

}  // namespace App
