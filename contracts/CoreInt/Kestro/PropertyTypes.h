#pragma once

#include <cstdint>

namespace Kestro {

/// Kind of what a Property holds.
enum class PropertyTypes : int32_t {
    Empty = 0,   ///< neither a value nor children
    Bool = 1,    ///< boolean
    Double = 2,  ///< IEEE 754 double
    Int64 = 3,   ///< 64-bit signed integer
    String = 4,  ///< text, UTF-8
    Ratio = 5,   ///< boost::rational<int64_t>: frame rates and other ratios
    Node = 6,    ///< an ordered list of named children
};

}  // namespace Kestro
