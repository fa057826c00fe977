#include "catalogue/Proof.h"

#include "Kestro/Planner/Text.h"

#include "prove/ProofFile.h"

namespace App::Catalogue {
namespace {

using Kestro::Planner::Printable;

ProofRow RowOf(const App::Proof& proof) {
    const auto codec = [&proof](StreamType type) {
        const auto found = proof.codecs.find(type);
        return found != proof.codecs.end() ? Printable(found->second) : std::string();
    };
    return {.id = Printable(proof.id),
            .about = Printable(proof.about),
            .container = Printable(proof.format),
            .video = codec(StreamType::Video),
            .audio = codec(StreamType::Audio),
            .subtitles = codec(StreamType::Subtitle),
            .result = VerdictName(proof.verdict),
            .by = Printable(proof.by),
            .why = Printable(proof.why),
            .hasSettings = !proof.settings.empty()};
}

}  // namespace

Proof ReadProof(const std::string& path) {
    const ProofRecord record = App::ReadProof(path);
    Proof proof{.ffmpeg = Printable(record.made.ffmpeg),
                .system = Printable(record.made.system),
                .date = Printable(record.made.date),
                .isComplete = record.isComplete,
                .rows = {}};
    for (const App::Proof& row : record.rows) proof.rows.push_back(RowOf(row));
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
