#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Kestro/Conf/StreamRecord.h"
#include "Kestro/Core/Property.h"
#include "Kestro/Planner/Domain.h"
#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/JsonTree.h"
#include "Kestro/Planner/Requirement.h"
#include "Kestro/Planner/SchemaDefinitions.h"
#include "Kestro/Planner/SettingSchema.h"

namespace Kestro::Planner {

/// What a preset may hold of a stream with one encoder.
class StreamSchema {
public:
    StreamSchema(const Conf::StreamRecord& kind, const std::string& codecId);

    /// The whole stream.
    Json Whole(SchemaDefinitions& definitions) const;
    /// What requirements of a container or a disc take from it; empty where they take nothing.
    Json Restrictions(const Requirements& requirements) const;

private:
    using Condition = std::pair<std::string, boost::intrusive_ptr<Conf::IPropertyConstraint>>;
    /// A requirement on the setting at the path below the stream, while all conditions on others hold.
    struct Rule {
        std::string path;
        Requirement requirement;
        std::vector<Condition> conditions;
    };
    using Rules = std::vector<Rule>;

    std::string CodecIdPath() const;
    void AddRules(const Requirements& requirements, bool isOfFilter, Rules& rules) const;
    /// Those that always hold.
    static Requirements On(const std::string& path, const Rules& rules);
    Json Values(const std::string& path, const Rules& others) const;
    Json NodeOf(const std::string& path, const Core::Property& known, const Rules& others,
                SchemaDefinitions& definitions) const;
    Json LeafOf(const std::string& path, const Core::Property& known, const Rules& others,
                SchemaDefinitions& definitions) const;
    /// Whether the encoder takes a variable bitrate, but not without the quality that it follows.
    bool NeedsQuality() const;
    Json FilterOf(const Core::Property& known, SchemaDefinitions& definitions) const;
    /// Whether a filter demands as much already, and under no more conditions.
    bool IsImplied(const Rule& rule) const;
    /// below: how many names of the paths the schema lies below the stream.
    Json ConditionalOn(const Rule& rule, std::size_t below) const;
    /// Adds to the stream's schema what cannot be said setting by setting.
    void AddTies(const Rules& rules, Json& schema) const;

    const Conf::StreamRecord& kind_;
    std::string codecId_;
    HelperPtr encoder_;
    Core::Property known_;
    Core::Property usual_;  ///< what holds where nothing is said
    Rules own_;             ///< the filters'
    Rules others_;          ///< the encoder's
};

}  // namespace Kestro::Planner
