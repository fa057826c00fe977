#include "Preset.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IFormatCodecSubtitle.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"

#include "Automatic.h"
#include "JsonTree.h"
#include "KnownSettings.h"
#include "Text.h"
#include "Tree.h"

namespace App {
namespace {

using Kestro::PropertyTypes;
using Kestro::Conf::IFormatCodec;
using Kestro::Conf::IFormatFile;
using Kestro::Conf::IPreset;
using Kestro::Core::Property;

constexpr std::size_t kMaxPresetBytes = 1 << 20;

const std::string& Separator() { return Property::SEPARATOR; }

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string ReadPresetFile(const std::string& path) {
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

[[noreturn]] void Refuse(Problem problem) { throw Failure(ExitStatus::NotAcceptable, std::move(problem)); }

const StreamKind* FindStreamKind(const std::string& typeId) {
    const auto kinds = StreamKinds();
    const auto found = std::ranges::find(kinds, typeId, [](const StreamKind& kind) { return kind.typeId; });
    return found != kinds.end() ? &*found : nullptr;
}

struct Assignment {
    std::string path;
    std::string value;
};

/// A path may hold a selector with "=" and no value holds one: the last "=" parts them.
std::vector<Assignment> ReadAssignments(const std::vector<std::string>& sets) {
    std::vector<Assignment> assignments;
    for (const std::string& set : sets) {
        const std::size_t equals = set.rfind('=');
        if (equals == std::string::npos || equals == 0) {
            throw Failure(ExitStatus::WrongUsage,
                          Problem{.message = "--set takes PATH=VALUE, not \"" + Printable(set) + "\".",
                                  .wayOut = "for instance --set Streams/TypeId=audio/AudioCodec/BitRate=128000"});
        }
        assignments.push_back({set.substr(0, equals), set.substr(equals + 1)});
    }
    return assignments;
}

std::string ContainerPath() { return IPreset::KEY_FORMAT + Separator() + IFormatFile::TAG_CONTAINER; }

class Loader {
public:
    explicit Loader(const PlanOptions& options) : options_(options), assignments_(ReadAssignments(options.sets)) {}

    Preset Load() {
        ReadTree();
        FindContainer();
        FillStreams();
        for (const Assignment& assignment : assignments_) Apply(assignment);
        CheckFormat();
        std::size_t number = 0;
        for (const Property& stream : tree_[IPreset::KEY_STREAMS]) AddStream(stream, number++);
        return std::move(preset_);
    }

private:
    void ReadTree() {
        preset_.isFile = !options_.presetFile.empty();
        if (preset_.isFile) {
            tree_ = ParseJsonTree(ReadPresetFile(options_.presetFile), options_.presetFile);
        } else {
            tree_.SetChild(IPreset::KEY_FORMAT).SetChild(IFormatFile::TAG_CONTAINER, options_.format);
        }
        Property known;
        known.SetChild(IPreset::KEY_FORMAT);
        known.SetChild(IPreset::KEY_STREAMS);
        Property names;
        for (const Property& child : tree_) names.SetChild(child.Name());
        CheckSettings(names, known, {});
    }

    /// The container decides which settings are known, so it is changed before all others.
    void FindContainer() {
        for (const Assignment& assignment : assignments_) {
            if (assignment.path != ContainerPath()) continue;
            Property& format = tree_.ChildExists(IPreset::KEY_FORMAT) ? tree_[IPreset::KEY_FORMAT]
                                                                      : tree_.SetChild(IPreset::KEY_FORMAT);
            format.SetChild(IFormatFile::TAG_CONTAINER, assignment.value);
        }
        // What else is wrong with the format is said when the container is known.
        Property known;
        known.SetChild(IFormatFile::TAG_CONTAINER, IFormatFile::FORMAT_MP4);
        const std::vector<std::string> names{IFormatFile::TAG_CONTAINER};
        if (tree_.ChildExists(IPreset::KEY_FORMAT)) {
            Property format = tree_[IPreset::KEY_FORMAT];
            for (const Property& child : tree_[IPreset::KEY_FORMAT]) {
                const bool isMeant = child.Name() == names.front() ||
                                     (!format.ChildExists(names.front()) && !Nearest(child.Name(), names).empty());
                if (!isMeant) format.RemoveChild(child.Name());
            }
            CheckSettings(format, known, IPreset::KEY_FORMAT);
        }
        preset_.container = TextAt(tree_, ContainerPath());
        if (preset_.container.empty()) {
            Refuse({.message = "The preset names no container.",
                    .path = ContainerPath(),
                    .allowed = HelperNames(kFormats),
                    .wayOut = "--set " + ContainerPath() + "=NAME"});
        }
        preset_.format = FindHelper(kFormats, preset_.container, ExitStatus::NotAcceptable);
        defaults_ = preset_.format->GetDefaultSettings();
    }

    /// A preset without a list of streams has those that the container has by default, their codecs left open.
    void FillStreams() {
        const std::string& key = IPreset::KEY_STREAMS;
        const bool own = tree_.ChildExists(key);
        if (!own) tree_.SetChild(key, defaults_[key]);
        const Property& streams = tree_[key];
        if (streams.Count() == 0) {
            Refuse({.message = "The preset has no streams.",
                    .path = key,
                    .wayOut = "leave \"" + key + "\" out to have those of the container"});
        }
        for (const Property& stream : streams) {
            if (stream.Type() != PropertyTypes::Node) {
                Refuse({.message = "A stream must be an object with a \"" + IPreset::KEY_TYPE_ID + "\".",
                        .path = key + Separator() + stream.Name()});
            }
        }
        for (const StreamKind& kind : StreamKinds()) {
            const std::string path = key + IPreset::INDEX + kind.typeId;
            if (!own && tree_.FindByPath(kind.CodecIdPath()) != nullptr) {
                tree_.ChildByPath(Below(path, kind.codecKey)).RemoveChild(IFormatCodec::TAG_CODEC_ID);
            }
            if (CodecOption(kind).empty()) continue;
            if (tree_.FindByPath(path) == nullptr) {
                Refuse({.message = (own ? "The preset has" : "The container " + preset_.container + " takes") + " no " +
                                   kind.typeId + " stream, so there is nothing for --" + kind.typeId + "."});
            }
        }
    }

    const std::string& CodecOption(const StreamKind& kind) const {
        return kind.typeId == IPreset::STREAM_TYPE_VIDEO ? options_.video : options_.audio;
    }

    void Apply(const Assignment& assignment) {
        if (assignment.path == ContainerPath()) return;
        const std::string formatPrefix = IPreset::KEY_FORMAT + Separator();
        const std::string streamsPrefix = IPreset::KEY_STREAMS + Separator();
        if (assignment.path.starts_with(formatPrefix)) {
            SetSetting(tree_[IPreset::KEY_FORMAT], KnownFormatSettings(*preset_.format), IPreset::KEY_FORMAT,
                       assignment.path.substr(formatPrefix.size()), assignment.value);
        } else if (assignment.path.starts_with(streamsPrefix)) {
            const std::size_t end = assignment.path.find(Separator(), streamsPrefix.size());
            ApplyToStream(assignment.path.substr(0, end), assignment.path.substr(std::min(end, assignment.path.size())),
                          assignment.value);
        } else {
            Refuse({.message = "Unknown setting \"" + Printable(assignment.path) + "\".",
                    .path = assignment.path,
                    .allowed = {formatPrefix + "...", streamsPrefix + "..."}});
        }
    }

    /// rest: empty, or the path of the setting below the stream with a leading separator.
    void ApplyToStream(const std::string& streamPath, const std::string& rest, const std::string& value) {
        Property* stream = tree_.FindByPath(streamPath) != nullptr ? &tree_.ChildByPath(streamPath) : nullptr;
        if (stream == nullptr || rest.empty()) {
            std::vector<std::string> paths;
            for (const Property& known : tree_[IPreset::KEY_STREAMS])
                paths.push_back(StreamPath(known) + Separator() + "...");
            Refuse({.message = stream == nullptr ? "There is no stream \"" + Printable(streamPath) + "\"."
                                                 : "\"" + Printable(streamPath) + "\" is a stream, not a setting.",
                    .path = streamPath,
                    .allowed = paths});
        }
        const std::string below = rest.substr(Separator().size());
        const StreamKind* kind = FindStreamKind(TextAt(*stream, IPreset::KEY_TYPE_ID));
        if (kind != nullptr && below == kind->codecKey + Separator() + IFormatCodec::TAG_CODEC_ID) {
            // It decides which settings are known.
            Property& codec =
                stream->ChildExists(kind->codecKey) ? (*stream)[kind->codecKey] : stream->SetChild(kind->codecKey);
            codec.SetChild(IFormatCodec::TAG_CODEC_ID, value);
            return;
        }
        const AutomaticSetting* automatic =
            value == IFormatCodec::CODEC_ID_AUTO ? FindAutomaticSetting(below) : nullptr;
        SetSetting(*stream, KnownSettings(*stream), streamPath, below,
                   automatic != nullptr ? Kestro::Core::PropertyValueToString(automatic->value) : value);
    }

    void CheckFormat() {
        CheckSettings(tree_[IPreset::KEY_FORMAT], KnownFormatSettings(*preset_.format), IPreset::KEY_FORMAT);
        preset_.formatSettings = tree_[IPreset::KEY_FORMAT];
    }

    /// The first stream of a type is named by its type, the others by their number.
    std::string StreamPath(const Property& stream) const {
        const std::string byType = IPreset::KEY_STREAMS + IPreset::INDEX + TextAt(stream, IPreset::KEY_TYPE_ID);
        return tree_.FindByPath(byType) == &stream ? byType : IPreset::KEY_STREAMS + Separator() + stream.Name();
    }

    /// The codec that the stream's own settings are for; the container's default when they leave it open.
    std::string OwnCodec(const Property& stream, const StreamKind& kind, bool& isOpen) const {
        std::string codec = TextAt(stream, kind.codecKey + Separator() + IFormatCodec::TAG_CODEC_ID);
        isOpen = codec.empty() || codec == IFormatCodec::CODEC_ID_AUTO;
        if (!isOpen) return codec;
        const std::string& option = CodecOption(kind);
        if (!option.empty() && option != IFormatCodec::CODEC_ID_AUTO) return option;
        const Property* standard = defaults_.FindByPath(kind.CodecIdPath());
        if (standard == nullptr) {
            Refuse({.message = "The container " + preset_.container + " takes no " + kind.typeId + " stream.",
                    .path = StreamPath(stream)});
        }
        return standard->GetString();
    }

    Property KnownSettings(const Property& stream) const {
        const std::string typeId = TextAt(stream, IPreset::KEY_TYPE_ID);
        if (const StreamKind* kind = FindStreamKind(typeId)) {
            bool isOpen = false;
            return KnownStreamSettings(
                *kind, *FindHelper(kind->codecs, OwnCodec(stream, *kind, isOpen), ExitStatus::NotAcceptable));
        }
        const std::string& subtitles = IPreset::STREAM_TYPE_SUBTITLES_TEXT;
        if (typeId == subtitles) {
            Property known;
            known.SetChild(IPreset::KEY_TYPE_ID, subtitles);
            known.SetChild(IPreset::KEY_FILTER_SUBTITLE_CODEC).SetChild(IFormatCodec::TAG_CODEC_ID, subtitles);
            return known;
        }
        std::vector<std::string> types{subtitles};
        for (const StreamKind& kind : StreamKinds()) types.push_back(kind.typeId);
        const std::string path =
            IPreset::KEY_STREAMS + Separator() + stream.Name() + Separator() + IPreset::KEY_TYPE_ID;
        Refuse({.message = (typeId.empty() ? path + " must say what the stream is."
                                           : "\"" + Printable(typeId) + "\" is no type of stream.") +
                           DidYouMean(typeId, types),
                .path = path,
                .value = typeId,
                .allowed = types});
    }

    void AddStream(const Property& settings, std::size_t number) {
        PresetStream stream{.kind = FindStreamKind(TextAt(settings, IPreset::KEY_TYPE_ID)),
                            .path = StreamPath(settings),
                            .codecId = {},
                            .settings = settings,
                            .chosenBecause = {}};
        ReadAutomatic(stream.settings);
        CheckSettings(stream.settings, KnownSettings(settings),
                      IPreset::KEY_STREAMS + Separator() + std::to_string(number));
        if (stream.kind != nullptr) {
            const std::string& option = CodecOption(*stream.kind);
            bool isOpen = false;
            stream.codecId = OwnCodec(settings, *stream.kind, isOpen);
            if (isOpen) {
                const std::string codecIdPath = Below(stream.kind->codecKey, IFormatCodec::TAG_CODEC_ID);
                const bool isAutomatic = option == IFormatCodec::CODEC_ID_AUTO ||
                                         TextAt(settings, codecIdPath) == IFormatCodec::CODEC_ID_AUTO;
                if (!stream.settings.ChildExists(stream.kind->codecKey))
                    stream.settings.SetChild(stream.kind->codecKey);
                stream.settings[stream.kind->codecKey].SetChild(IFormatCodec::TAG_CODEC_ID, stream.codecId);
                stream.chosenBecause = stream.codecId == option ? "asked for by --" + stream.kind->typeId
                                                                : std::string(isAutomatic ? "auto: " : "") +
                                                                      "the default of " + preset_.container;
            } else if (!option.empty() && option != IFormatCodec::CODEC_ID_AUTO) {
                stream.codecId = option;  // A preset for another codec is the encoder's to refuse.
            }
        }
        preset_.streams.push_back(std::move(stream));
    }

    const PlanOptions& options_;
    std::vector<Assignment> assignments_;
    Property tree_;
    Property defaults_;
    Preset preset_;
};

}  // namespace

Preset LoadPreset(const PlanOptions& options) { return Loader(options).Load(); }

}  // namespace App
