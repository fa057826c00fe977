#include "prove/Combination.h"

namespace App {

std::string Footage::Name() const {
    if (!codec.empty()) return std::string(KindName(type)) + "-" + codec;
    return std::string("clip") + (hasCover ? "-cover" : "") + (subtitles.empty() ? "" : "-" + subtitles);
}

std::string Combination::Id() const {
    std::string id = container.empty() ? "encoder" : "format=" + container;
    for (const auto& [type, codec] : codecs) {
        id += std::string(isCopy ? " copy=" : " ") + (isCopy ? "" : std::string(KindName(type)) + "=") + codec;
    }
    for (const Planner::Change& setting : settings) id += " " + setting.path + "=" + setting.value;
    return id;
}

const char* KindName(StreamType type) {
    switch (type) {
        case StreamType::Video:
            return "video";
        case StreamType::Audio:
            return "audio";
        case StreamType::Subtitle:
            break;
    }
    return "subtitles";
}

}  // namespace App
