#include "Kestro/Planner/SchemaDefinitions.h"

#include "Kestro/Planner/SettingSchema.h"
#include "Kestro/Proc/FindSetting.h"

namespace Kestro::Planner {

Json SchemaDefinitions::Ref(const std::string& name, const std::function<Json()>& make) {
    if (!definitions_.contains(name)) {
        definitions_[name] = nullptr;  // keeps the place before what it refers to itself
        Json definition = make();
        definitions_[name] = std::move(definition);
    }
    return SchemaRef(name);
}

Json SchemaDefinitions::SharedRef(const std::string& name, const Json& definition) {
    for (const auto& [other, content] : definitions_.items()) {
        if (content == definition) return SchemaRef(other);
    }
    return Ref(name, [&definition] { return definition; });
}

Json SchemaDefinitions::LabelRef(const std::string& path) {
    const Conf::SettingRecord* record = Proc::FindSetting(path);
    if (record == nullptr) return Json::object();
    return Ref("setting-" + record->tag, [record]() -> Json {
        const std::string unit = record->unit;
        return {{"title", record->label}, {"description", record->help + (unit.empty() ? "" : " In " + unit + ".")}};
    });
}

}  // namespace Kestro::Planner
