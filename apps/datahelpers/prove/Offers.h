#pragma once

#include <string>
#include <vector>

#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Conf/StreamType.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Fits.h"
#include "Kestro/Planner/Helpers.h"

/// What the helpers offer, as lists to combine.
namespace App {

namespace Planner = Kestro::Planner;
using Kestro::Conf::StreamType;

/// All codecs of the vocabulary.
std::vector<std::string> KnownCodecs(StreamType type);

/// Whether the container's video stream is an attached picture.
bool HasCoverOnly(const std::string& container);

/// The containers that offer the codec, those that offer most codecs first.
std::vector<std::string> Carriers(StreamType type, const std::string& codec);

/// The container that offers most codecs.
std::string RoomiestContainer();

/// A setting and the values of it that are tried: all of a list, the ends of a range. A size is "720x576".
struct OfferedValues {
    std::string path;
    std::vector<std::string> values;
};

/// Empty where the constraint has nothing but a description.
std::vector<std::string> ValuesToTry(const Kestro::Conf::IPropertyConstraint& constraint);

/// What a helper's constraints offer.
std::vector<OfferedValues> ConstraintValues(const Kestro::Conf::IDataHelper& helper);

/// A rule that ties a filter's setting to a codec.
struct CodecRuleValues {
    std::vector<std::string> codecs;
    OfferedValues filter;  ///< path: below the stream
    StreamType type;
};
std::vector<CodecRuleValues> CodecRules(const Kestro::Conf::IDataHelper& helper);

/// The filter to whose settings a path leads; empty for another path.
std::string FilterOf(const std::string& path);

}  // namespace App
