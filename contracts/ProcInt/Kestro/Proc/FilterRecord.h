#pragma once

#include <span>
#include <string>

#include "Kestro/Conf/StreamType.h"
#include "Kestro/Export.h"

namespace Kestro::Proc {

/// A processing filter, and the kind of stream that it works on.
struct KESTRO_PROCINT_API FilterRecord {
    const std::string& classId;  ///< its node in a stream; also the registry type of its helper
    Conf::StreamType type;

    /// The record of that class id, or null.
    static const FilterRecord* Find(const std::string& classId);
    static std::span<const FilterRecord> All();
};

}  // namespace Kestro::Proc
