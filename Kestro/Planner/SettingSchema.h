#pragma once

#include <string>
#include <vector>

#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/JsonTree.h"
#include "Kestro/Planner/Requirement.h"

/// The pieces of a preset's schema: single settings, and where they stand.
namespace Kestro::Planner {

/// { "$ref": ... } to a definition.
Json SchemaRef(const std::string& definition);

/// The setting's schema at its path in an object; each step of the path may be missing, or must be there.
Json AtPath(const std::string& path, Json schema, bool isRequired);

/// Gives an object's schema one more step of allOf.
void AddToAll(Json& schema, Json step);

/// What the domain accepts, and no more is said of it.
Json DomainSchema(const Domain& domain, Kestro::PropertyTypes type);

/// What is required of one setting.
struct SettingRequirements {
    Requirements own;     ///< of the filter or codec that has the setting
    Requirements others;  ///< on a filter's setting, of encoder, container or disc
};

/// The values of the setting, at its path below a stream or of the format, that all requirements accept. What keeps the
/// source's value need not please the others: the planner then takes the nearest that does.
/// known: a value of the setting's type.
Json ValuesSchema(const std::string& path, const Core::Property& known, const SettingRequirements& required);

/// What the resizer's node may hold where only these frame sizes can be had.
Json FrameSizesSchema(const std::vector<Conf::FrameSize>& sizes);

}  // namespace Kestro::Planner
