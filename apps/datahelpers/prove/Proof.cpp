#include "prove/Proof.h"

#include <algorithm>

namespace App {
namespace {

constexpr StreamType kTypes[] = {StreamType::Video, StreamType::Audio, StreamType::Subtitle};

}  // namespace

const char* VerdictName(Verdict verdict) {
    switch (verdict) {
        case Verdict::Proven:
            return "proven";
        case Verdict::Refused:
            return "refused";
        case Verdict::NoEncoder:
            return "no-encoder";
        case Verdict::Contradicts:
            break;
    }
    return "contradicts";
}

Proof ProofOf(const Combination& combination) {
    Proof proof;
    proof.id = combination.Id();
    proof.about = combination.about;
    proof.format = combination.container;
    proof.codecs = combination.codecs;
    if (combination.isCopy) proof.copied = {combination.footage.type};
    proof.settings = combination.settings;
    return proof;
}

Json ToJson(const Proof& proof) {
    Json json{{"id", proof.id}, {"about", proof.about}, {"format", proof.format}};
    for (const auto& [type, codec] : proof.codecs) json[KindName(type)] = codec;
    for (const StreamType type : proof.copied) json["copied"].push_back(KindName(type));
    for (const Planner::Change& setting : proof.settings) json["set"][setting.path] = setting.value;
    json["result"] = VerdictName(proof.verdict);
    json["by"] = proof.by;
    json["why"] = proof.why;
    json["seconds"] = proof.seconds;
    return json;
}

std::optional<Proof> ProofFromJson(const Json& json) {
    try {
        Proof proof;
        proof.id = json.at("id").get<std::string>();
        proof.about = json.at("about").get<std::string>();
        proof.format = json.at("format").get<std::string>();
        for (const StreamType type : kTypes) {
            if (json.contains(KindName(type))) proof.codecs[type] = json[KindName(type)].get<std::string>();
        }
        const Json copied = json.value("copied", Json::array());
        for (const Json& kind : copied) {
            const auto type = std::ranges::find_if(kTypes, [&kind](StreamType one) { return kind == KindName(one); });
            if (type == std::end(kTypes)) return std::nullopt;
            proof.copied.push_back(*type);
        }
        const Json settings = json.value("set", Json::object());
        for (const auto& [path, value] : settings.items()) {
            proof.settings.push_back({path, value.get<std::string>()});
        }
        const std::string result = json.at("result").get<std::string>();
        const auto verdict =
            std::ranges::find_if(kVerdicts, [&result](Verdict one) { return result == VerdictName(one); });
        if (verdict == std::end(kVerdicts)) return std::nullopt;
        proof.verdict = *verdict;
        proof.by = json.value("by", "");
        proof.why = json.value("why", "");
        proof.seconds = json.value("seconds", 0.0);
        return proof;
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

}  // namespace App
