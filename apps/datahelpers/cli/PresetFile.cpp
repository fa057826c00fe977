#include "cli/PresetFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include "Kestro/Planner/Helpers.h"
#include "Kestro/Planner/Text.h"

#include "cli/Failure.h"

namespace App {
namespace {

using Kestro::Conf::StreamType;
using Planner::Preset;
using Planner::Printable;

constexpr std::size_t kMaxTextBytes = 1 << 20;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// A path may hold a selector with "=" and no value holds one: the last "=" parts them.
std::size_t EndOfPath(const std::string& set) {
    const std::size_t equals = set.rfind('=');
    if (equals != std::string::npos && equals != 0) return equals;
    throw Failure(ExitStatus::WrongUsage,
                  Complaint{.message = "--set takes PATH=VALUE, not \"" + Printable(set) + "\".",
                            .wayOut = "for instance --set Streams/TypeId=audio/AudioCodec/BitRate=128000"});
}

/// Where presets are kept, the user's own first.
std::vector<std::filesystem::path> PresetFolders() {
    std::vector<std::filesystem::path> folders;
    const auto variable = [](const char* name) {
        const char* value = std::getenv(name);
        return std::filesystem::path(value != nullptr ? value : "");
    };
    // Relative paths in these variables are to be ignored, by the rules of XDG.
    std::filesystem::path configuration = variable("XDG_CONFIG_HOME");
    if (!configuration.is_absolute()) configuration = variable("HOME") / ".config";
    if (configuration.is_absolute()) folders.push_back(configuration / "datahelpers/presets");
    std::error_code none;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", none);
    if (!none) folders.push_back((program.parent_path() / DATAHELPERS_PRESETS).lexically_normal());
    return folders;
}

}  // namespace

std::string ReadText(const std::string& path, const std::string& what) {
    const auto fail = [&](const std::string& reason) {
        throw Failure(ExitStatus::WrongUsage, "Cannot read the " + what + " " + Printable(path) + ": " + reason + ".");
    };
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (!file) fail(std::strerror(errno));
    std::string text(kMaxTextBytes + 1, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    if (std::ferror(file.get()) != 0) fail(std::strerror(errno));
    if (text.size() > kMaxTextBytes) fail("it is larger than " + std::to_string(kMaxTextBytes) + " bytes");
    return text;
}

std::vector<KnownPreset> ListPresets() {
    std::vector<KnownPreset> presets;
    for (const std::filesystem::path& folder : PresetFolders()) {
        std::error_code none;
        std::vector<KnownPreset> found;
        for (const auto& entry : std::filesystem::directory_iterator(folder, none)) {
            if (entry.path().extension() != ".json") continue;
            KnownPreset preset{entry.path().stem().string(), entry.path().string()};
            if (std::ranges::find(presets, preset.name, &KnownPreset::name) == presets.end()) {
                found.push_back(std::move(preset));
            }
        }
        std::ranges::sort(found, {}, &KnownPreset::name);
        presets.insert(presets.end(), found.begin(), found.end());
    }
    return presets;
}

std::string FindPreset(const std::string& preset) {
    std::error_code none;
    if (preset.find('/') != std::string::npos || std::filesystem::exists(preset, none)) return preset;
    std::vector<std::string> names;
    for (const KnownPreset& known : ListPresets()) {
        if (known.name == preset) return known.file;
        names.push_back(known.name);
    }
    throw Failure(ExitStatus::WrongUsage, Complaint{.message = "There is no file and no preset \"" + Printable(preset) +
                                                               "\"." + Planner::DidYouMean(preset, names),
                                                    .value = preset,
                                                    .allowed = names});
}

Preset ReadPreset(const PlanOptions& options) {
    for (const std::string& set : options.sets) EndOfPath(set);
    const auto meant = [](const Planner::HelperKind& kind, const std::string& word) {
        return Planner::NameMeantBy(kind, word);
    };
    Preset preset = options.presetFile.empty()
                        ? Preset::OfContainer(meant(Planner::kFormats, options.format))
                        : Preset::FromJson(ReadText(options.presetFile, "preset"), options.presetFile);
    if (!options.video.empty())
        preset.Choose(StreamType::Video, meant(Planner::kVideoCodecs, options.video), "--video");
    if (!options.audio.empty())
        preset.Choose(StreamType::Audio, meant(Planner::kAudioCodecs, options.audio), "--audio");
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
