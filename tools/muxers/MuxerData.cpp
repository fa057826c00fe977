#include "tools/muxers/MuxerData.h"

#include <cstdint>  // before FFmpeg's headers, which want its macros

extern "C" {
#include <libavformat/avformat.h>
}

#include <algorithm>
#include <istream>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace Measure {
namespace {

constexpr const char* kTried = "tried";
constexpr const char* kAll = "all";

template <class Numbers>
std::string Joined(const Numbers& numbers) {
    std::string text;
    for (const int number : numbers) text += (text.empty() ? "" : ",") + std::to_string(number);
    return text;
}

std::vector<int> Numbers(const std::string& text) {
    std::vector<int> numbers;
    std::istringstream in(text);
    for (std::string number; std::getline(in, number, ',');) numbers.push_back(std::stoi(number));
    return numbers;
}

/// Sample rates that go with the same numbers of channels stand together.
std::string ToText(const Sounds& sounds) {
    if (sounds == AllSounds()) return kAll;
    std::map<int, std::set<int>> channelsOf;
    for (const auto& [rate, channels] : sounds) channelsOf[rate].insert(channels);
    std::string text;
    while (!channelsOf.empty()) {
        const std::set<int> channels = channelsOf.begin()->second;
        std::set<int> rates;
        for (const auto& [rate, others] : channelsOf) {
            if (others == channels) rates.insert(rate);
        }
        text += (text.empty() ? "" : ";") + Joined(rates) + "/" + Joined(channels);
        for (const int rate : rates) channelsOf.erase(rate);
    }
    return text;
}

Sounds SoundsOf(const std::string& text) {
    if (text == kAll) return AllSounds();
    Sounds sounds;
    std::istringstream groups(text);
    for (std::string group; std::getline(groups, group, ';');) {
        const std::size_t slash = group.find('/');
        if (slash == std::string::npos) throw std::runtime_error("no channels in \"" + group + "\"");
        for (const int rate : Numbers(group.substr(0, slash))) {
            for (const int channels : Numbers(group.substr(slash + 1))) sounds.emplace(rate, channels);
        }
    }
    return sounds;
}

/// The sounds of a codec without brackets.
Sounds Usual(const CodecList& tried, const std::string& codec) {
    const CodecSounds* row = Find(tried, codec);
    return row != nullptr ? row->sounds : Sounds();
}

CodecSounds CodecOf(const std::string& word, const CodecList& tried) {
    const std::size_t bracket = word.find('(');
    const std::string codec = word.substr(0, bracket);
    if (bracket == std::string::npos) return {codec, Usual(tried, codec)};
    return {codec, SoundsOf(word.substr(bracket + 1, word.size() - bracket - 2))};
}

void WriteLine(std::ostream& out, const std::string& name, const CodecList& codecs, const CodecList& tried) {
    out << name;
    for (const auto& [codec, sounds] : codecs) {
        out << " " << codec;
        if (sounds != Usual(tried, codec)) out << "(" << ToText(sounds) << ")";
    }
    out << "\n";
}

}  // namespace

const Sounds& AllSounds() {
    static const Sounds all = SoundsOf("8000,11025,16000,22050,32000,44100,48000,96000/1,2,6");
    return all;
}

const CodecSounds* Find(const CodecList& codecs, const std::string& codec) {
    const auto found = std::ranges::find(codecs, codec, &CodecSounds::codec);
    return found != codecs.end() ? &*found : nullptr;
}

MuxerData MuxerData::Read(std::istream& in) {
    MuxerData data;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line.starts_with('#')) continue;
        std::istringstream words(line);
        std::string name;
        words >> name;
        CodecList& codecs = name == kTried ? data.tried : data.stored[name];
        for (std::string word; words >> word;) codecs.push_back(CodecOf(word, data.tried));
    }
    if (data.tried.empty() || data.stored.empty()) throw std::runtime_error("no measurement of muxers");
    return data;
}

void MuxerData::Write(std::ostream& out) const {
    WriteLine(out, kTried, tried, {});
    for (const auto& [muxer, codecs] : stored) WriteLine(out, muxer, codecs, tried);
}

std::string FileName() {
    // libavformat counts 54 ahead of FFmpeg.
    return "muxers-ffmpeg" + std::to_string(AV_VERSION_MAJOR(avformat_version()) - 54) + ".txt";
}

}  // namespace Measure
