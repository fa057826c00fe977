#pragma once

#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Planner/JsonTree.h"
#include "Kestro/Planner/SchemaDefinitions.h"

namespace Kestro::Planner {

/// The schema of a stream that holds the codec and filter nodes, and what every stream of the kind has beside them.
Json StreamObject(const Conf::StreamRecord& kind, const Json& nodes, SchemaDefinitions& definitions);

/// A stream without an encoder's settings: subtitles, or a copy.
Json UnencodedStreamSchema(const Conf::StreamRecord& kind, SchemaDefinitions& definitions);

}  // namespace Kestro::Planner
