#include "cli/PresetFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"

namespace App {
namespace {

using Kestro::Conf::StreamType;
using Planner::Preset;
using Planner::Printable;

constexpr std::size_t kMaxPresetBytes = 1 << 20;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string ReadText(const std::string& path) {
    const auto fail = [&path](const std::string& reason) {
        throw Failure(ExitStatus::WrongUsage, "Cannot read the preset " + Printable(path) + ": " + reason + ".");
    };
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (!file) fail(std::strerror(errno));
    std::string text(kMaxPresetBytes + 1, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    if (std::ferror(file.get()) != 0) fail(std::strerror(errno));
    if (text.size() > kMaxPresetBytes) fail("it is larger than " + std::to_string(kMaxPresetBytes) + " bytes");
    return text;
}

/// A path may hold a selector with "=" and no value holds one: the last "=" parts them.
std::size_t EndOfPath(const std::string& set) {
    const std::size_t equals = set.rfind('=');
    if (equals != std::string::npos && equals != 0) return equals;
    throw Failure(ExitStatus::WrongUsage,
                  Complaint{.message = "--set takes PATH=VALUE, not \"" + Printable(set) + "\".",
                            .wayOut = "for instance --set Streams/TypeId=audio/AudioCodec/BitRate=128000"});
}

}  // namespace

Preset ReadPreset(const PlanOptions& options) {
    for (const std::string& set : options.sets) EndOfPath(set);
    Preset preset = options.presetFile.empty() ? Preset::OfContainer(options.format)
                                               : Preset::FromJson(ReadText(options.presetFile), options.presetFile);
    if (!options.video.empty()) preset.Choose(StreamType::Video, options.video, "--video");
    if (!options.audio.empty()) preset.Choose(StreamType::Audio, options.audio, "--audio");
    if (!options.audioTracks.empty()) preset.ChooseTracks(StreamType::Audio, options.audioTracks);
    if (!options.subtitleTracks.empty()) preset.ChooseTracks(StreamType::Subtitle, options.subtitleTracks);
    if (options.keepsFields) preset.Set("Streams/TypeId=video/KeepFields", "true");
    if (!options.size.empty()) preset.Set(Preset::KEY_SIZE, options.size);
    for (const std::string& set : options.sets) {
        const std::size_t end = EndOfPath(set);
        preset.Set(set.substr(0, end), set.substr(end + 1));
    }
    return preset;
}

}  // namespace App
