#include "catalogue/Proof.h"

#include <algorithm>
#include <fstream>
#include <istream>

#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"
#include "report/ReportJson.h"

namespace App::Catalogue {
namespace {

using Kestro::Planner::Printable;

/// Longer than any row; a file without line ends is none.
constexpr std::size_t kLongestLine = std::size_t{1} << 20;

[[noreturn]] void Refuse(const std::string& path, const std::string& reason) {
    throw Failure(ExitStatus::WrongUsage, "Cannot read the proof file " + Printable(path) + ": " + reason + ".");
}

std::string TextOf(const Json& row, const char* name) {
    const auto found = row.find(name);
    return found != row.end() && found->is_string() ? Printable(found->get<std::string>()) : std::string();
}

ProofRow ReadRow(const Json& json) {
    const auto set = json.find("set");
    return {.id = TextOf(json, "id"),
            .about = TextOf(json, "about"),
            .container = TextOf(json, "format"),
            .video = TextOf(json, "video"),
            .audio = TextOf(json, "audio"),
            .subtitles = TextOf(json, "subtitles"),
            .result = TextOf(json, "result"),
            .by = TextOf(json, "by"),
            .why = TextOf(json, "why"),
            .hasSettings = set != json.end() && !set->empty()};
}

void ReadLine(const std::string& line, Proof& proof, const std::string& path, std::size_t number) {
    const Json json = Json::parse(line, nullptr, false);
    const std::string where = "line " + std::to_string(number);
    if (!json.is_object()) Refuse(path, where + " is no JSON object");
    if (number == 1) {
        if (json.value("proof", Json()) != 1) Refuse(path, "it does not begin as one");
        proof.ffmpeg = TextOf(json, "ffmpeg");
        proof.system = TextOf(json, "system");
        proof.date = TextOf(json, "date");
    } else if (json.contains("end")) {
        proof.isComplete = true;
    } else {
        ProofRow row = ReadRow(json);
        const auto isThis = [&row](const auto& result) { return result.first == row.result; };
        if (row.id.empty() || std::ranges::none_of(ProofResults(), isThis)) {
            Refuse(path, where + " lacks its id, or a result that is known");
        }
        proof.rows.push_back(std::move(row));
    }
}

}  // namespace

Proof ReadProof(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) Refuse(path, "it cannot be opened");
    Proof proof;
    std::string line;
    std::size_t number = 0;
    while (std::getline(file, line)) {
        if (line.size() > kLongestLine) Refuse(path, "line " + std::to_string(number + 1) + " is too long");
        // The last line of a run that was broken off may be a part of one.
        if (file.eof() && number > 0 && !Json::accept(line)) break;
        ReadLine(line, proof, path, ++number);
    }
    if (number == 0) Refuse(path, "there is nothing in it");
    return proof;
}

const std::vector<std::pair<std::string, std::string>>& ProofResults() {
    static const std::vector<std::pair<std::string, std::string>> results = {
        {"proven", "encoded and read back as planned"},
        {"refused", "refused, as it should be"},
        {"no-encoder", "not tried: this FFmpeg lacks the encoder or the muxer"},
        {"contradicts", "came out other than planned"},
    };
    return results;
}

}  // namespace App::Catalogue
