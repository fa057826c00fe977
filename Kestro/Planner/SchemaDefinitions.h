#pragma once

#include <functional>
#include <string>
#include <utility>

#include "Kestro/Planner/JsonTree.h"

namespace Kestro::Planner {

/// The definitions ($defs) of a schema, each made when it is first referred to.
class SchemaDefinitions {
public:
    /// { "$ref": ... } to the definition of that name.
    Json Ref(const std::string& name, const std::function<Json()>& make);
    /// The same, or to an earlier definition of the same content.
    Json SharedRef(const std::string& name, const Json& definition);
    /// The label and the help of a setting, by the last name of its path; nothing for one that has none.
    Json LabelRef(const std::string& path);

    Json Take() { return std::move(definitions_); }

private:
    Json definitions_ = Json::object();
};

}  // namespace Kestro::Planner
