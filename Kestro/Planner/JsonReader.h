#pragma once

#include <optional>
#include <string>
#include <utility>

#include "Kestro/Core/Property.h"
#include "Kestro/Core/PropertyException.h"
#include "Kestro/Planner/JsonTree.h"
#include "Kestro/Planner/NotAcceptable.h"

/// Reading a plan's JSON: what is missing or of another kind is refused (InvalidPlan).
namespace Kestro::Planner {

[[noreturn]] inline void ThrowInvalid(const std::string& what) {
    throw NotAcceptable({.code = ProblemCode::InvalidPlan, .message = "It is no plan: " + what + "."});
}

/// Reads the members of an object, each of its kind.
class JsonReader {
public:
    JsonReader(const Json& json, std::string path) : json_(json), path_(std::move(path)) {
        if (!json_.is_object()) ThrowInvalid(path_ + " is no object");
    }

    template <class Value>
    Value Read(const char* name) const {
        const Json& member = Member(name);
        try {
            return member.get<Value>();
        } catch (const Json::exception&) {
            ThrowInvalid(path_ + "/" + name + " is of another kind");
        }
    }
    template <class Value>
    std::optional<Value> ReadOptional(const char* name) const {
        if (Member(name).is_null()) return std::nullopt;
        return Read<Value>(name);
    }
    /// A member that is left out where it says nothing.
    template <class Value>
    Value ReadOr(const char* name, Value otherwise) const {
        return Has(name) ? Read<Value>(name) : otherwise;
    }
    bool Has(const char* name) const { return json_.contains(name); }
    Core::Property::Ratio ReadRatio(const char* name) const {
        try {
            return Core::Property({}, Read<std::string>(name)).GetRatio();
        } catch (const Core::PropertyException&) {
            ThrowInvalid(path_ + "/" + name + " is no ratio");
        }
    }
    Core::Property ReadTree(const char* name) const { return ParseJsonTree(Member(name).dump(), path_ + "/" + name); }
    /// null: nothing; a value or settings otherwise.
    std::optional<Core::Property> ReadValue(const char* name) const {
        if (Member(name).is_null()) return std::nullopt;
        return ParseJsonTree("{\"value\":" + Member(name).dump() + "}", path_ + "/" + name)["value"];
    }
    JsonReader Object(const char* name) const { return {Member(name), path_ + "/" + name}; }
    template <class Visit>
    void ForEach(const char* name, const Visit& visit) const {
        const Json& list = Member(name);
        if (!list.is_array()) ThrowInvalid(path_ + "/" + name + " is no list");
        for (std::size_t i = 0; i < list.size(); ++i) {
            visit(JsonReader(list[i], path_ + "/" + name + "/" + std::to_string(i)));
        }
    }

private:
    const Json& Member(const char* name) const {
        const auto found = json_.find(name);
        if (found == json_.end()) ThrowInvalid(path_ + "/" + name + " is missing");
        return *found;
    }

    const Json& json_;
    std::string path_;
};

}  // namespace Kestro::Planner
