#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// Texts on a terminal.
namespace App {

/// The words in lines of at most `width` columns; every line after the first begins with `indent` blanks. The first
/// line is taken to begin at column `start`. A word that is longer than a line stands alone.
std::string Wrapped(std::span<const std::string> words, std::size_t start, std::size_t indent, std::size_t width);
/// The same of a text: its words are what stands between blanks.
std::string Wrapped(std::string_view text, std::size_t start, std::size_t indent, std::size_t width);

/// Columns of the terminal behind the descriptor; $COLUMNS or 80 when it is none.
std::size_t TerminalWidth(int descriptor);

/// A command as a shell reads it; what a terminal would not show stands in escapes.
std::string ShellLine(std::span<const std::string> words);

/// "1.5 MB".
std::string SizeText(int64_t bytes);

/// "1:02:03" or "2:03".
std::string ClockTime(double seconds);

}  // namespace App
