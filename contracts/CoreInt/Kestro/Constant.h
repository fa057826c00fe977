#pragma once

#include <string>

/// How a text constant of the vocabulary is declared inside its class:
/// `static KESTRO_CONSTANT std::string TAG_WIDTH = "Width";`
///
/// Up to 15 characters live inside the std::string itself, so the constant is part of the program's image: no
/// constructor runs, and it may be used before `main` in any order. Clang before 16 cannot evaluate libstdc++'s
/// std::string at compile time; there the constructor runs when the library is loaded, ahead of all its others.
#if defined(__clang__) && __clang_major__ < 16
#define KESTRO_CONSTANT inline __attribute__((init_priority(101))) const
#else
#define KESTRO_CONSTANT constexpr
#endif
