#include "Kestro/Planner/MediaInfo.h"

#include "Kestro/Planner/Text.h"

namespace Kestro::Planner {
namespace {

using Conf::StreamType;

struct Words {
    const char* name;
    const char* inSentences;
};

Words WordsFor(const MediaStream& stream) {
    if (stream.isCover) return {"cover", "cover picture"};
    if (stream.type == StreamType::Video) return {"video", "video"};
    if (stream.type == StreamType::Audio) return {"audio", "audio"};
    if (stream.type == StreamType::Subtitle) return {"subtitle", "subtitles"};
    if (stream.isAttachment) return {"attachment", "attached file"};
    return {"data", "data"};
}

}  // namespace

bool Colour::IsHdr() const { return transfer == "smpte2084" || transfer == "arib-std-b67"; }

bool IsUsable(const MediaStream& stream) {
    if (stream.type == StreamType::Video) return stream.width > 0 && stream.height > 0;
    return stream.type == StreamType::Subtitle || stream.sampleRate > 0;
}

const char* TypeName(const MediaStream& stream) { return WordsFor(stream).name; }

const char* TypeInWords(const MediaStream& stream) { return WordsFor(stream).inSentences; }

std::string InWords(const MediaStream& stream) {
    std::string words =
        "Stream " + std::to_string(stream.index) + " of the input (" + TypeInWords(stream) + ", " + stream.codec;
    if (!stream.language.empty()) words += ", " + Printable(stream.language);
    if (!stream.title.empty()) words += ", \"" + Printable(stream.title) + "\"";
    return words + ")";
}

}  // namespace Kestro::Planner
