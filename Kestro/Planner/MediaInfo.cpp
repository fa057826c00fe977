#include "Kestro/Planner/MediaInfo.h"

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
    return {"data", "data"};
}

}  // namespace

bool IsUsable(const MediaStream& stream) {
    return stream.type == StreamType::Video ? stream.width > 0 && stream.height > 0 : stream.sampleRate > 0;
}

const char* TypeName(const MediaStream& stream) { return WordsFor(stream).name; }

const char* TypeInWords(const MediaStream& stream) { return WordsFor(stream).inSentences; }

}  // namespace Kestro::Planner
