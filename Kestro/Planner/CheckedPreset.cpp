#include "Kestro/Planner/CheckedPreset.h"

#include <algorithm>
#include <utility>

#include "Kestro/Conf/IFormatCodec.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Planner/Automatic.h"
#include "Kestro/Planner/Collect.h"
#include "Kestro/Planner/KnownSettings.h"
#include "Kestro/Planner/SizeEstimate.h"
#include "Kestro/Planner/Text.h"
#include "Kestro/Planner/Tracks.h"
#include "Kestro/Planner/Tree.h"

namespace Kestro::Planner {
namespace {

using Conf::IFormatCodec;
using Conf::IFormatFile;
using Conf::IPreset;
using Conf::StreamRecord;
using Core::Property;

const std::string& Separator() { return Property::SEPARATOR; }
std::string ContainerPath() { return IPreset::KEY_FORMAT + Separator() + IFormatFile::TAG_CONTAINER; }

bool IsCopy(const std::string& codec) { return codec == Preset::kCopy; }

class Checker {
public:
    explicit Checker(const Preset& preset) : preset_(preset), tree_(preset.Settings()) {}

    CheckedPreset Check() {
        checked_.isFromText = preset_.IsFromText();
        problems_.From([&] { CheckNames(); });
        // Without a container, or streams, nothing more is known.
        if (!problems_.From([&] { FindContainer(); }) || !problems_.From([&] { FillStreams(); })) problems_.Throw();
        for (const Change& change : preset_.Changes()) problems_.From([&] { Apply(change); });
        problems_.From([&] { CheckFormat(); });
        problems_.From([&] { checked_.sizeLimit = ReadSizeLimit(tree_); });
        std::size_t number = 0;
        for (const Property& stream : tree_[IPreset::KEY_STREAMS]) {
            problems_.From([&] { AddStream(stream, number); });
            ++number;
        }
        problems_.From([&] { CompleteTracks(preset_, defaults_, checked_.streams); });
        problems_.Throw();
        return std::move(checked_);
    }

private:
    void CheckNames() {
        Property known;
        known.SetChild(IPreset::KEY_FORMAT);
        known.SetChild(IPreset::KEY_STREAMS);
        known.SetChild(Preset::KEY_SIZE);
        Property names;
        for (const Property& child : tree_) names.SetChild(child.Name());
        CheckSettings(names, known, {});
    }

    /// The container decides which settings are known, so it is changed before all others.
    void FindContainer() {
        for (const Change& change : preset_.Changes()) {
            if (change.path != ContainerPath()) continue;
            Property& format = tree_.ChildExists(IPreset::KEY_FORMAT) ? tree_[IPreset::KEY_FORMAT]
                                                                      : tree_.SetChild(IPreset::KEY_FORMAT);
            format.SetChild(IFormatFile::TAG_CONTAINER, change.value);
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
        checked_.container = TextAt(tree_, ContainerPath());
        if (checked_.container.empty()) {
            throw NotAcceptable({.code = ProblemCode::MissingSetting,
                                 .message = "The preset names no container.",
                                 .path = ContainerPath(),
                                 .allowed = HelperNames(kFormats),
                                 .changes = {{ContainerPath(), "NAME"}}});
        }
        checked_.format = FindHelper(kFormats, checked_.container);
        defaults_ = checked_.format->GetDefaultSettings();
    }

    /// A preset without a list of streams has those that the container has by default, their codecs left open.
    void FillStreams() {
        const std::string& key = IPreset::KEY_STREAMS;
        const bool own = tree_.ChildExists(key);
        if (!own) tree_.SetChild(key, defaults_[key]);
        if (tree_[key].Count() == 0) {
            throw NotAcceptable({.code = ProblemCode::NoSuchStream,
                                 .message = "The preset has no streams.",
                                 .path = key,
                                 .wayOut = "leave \"" + key + "\" out to have those of the container"});
        }
        for (const Property& stream : tree_[key]) {
            if (stream.Type() != PropertyTypes::Node) {
                throw NotAcceptable({.code = ProblemCode::WrongType,
                                     .message = "A stream must be an object with a \"" + IPreset::KEY_TYPE_ID + "\".",
                                     .path = key + Separator() + stream.Name()});
            }
        }
        for (const StreamRecord& kind : StreamRecord::All()) {
            const std::string path = key + IPreset::INDEX + kind.typeId;
            if (!own && tree_.FindByPath(kind.CodecIdPath()) != nullptr) {
                tree_.ChildByPath(Below(path, kind.codecKey)).RemoveChild(IFormatCodec::TAG_CODEC_ID);
            }
            const Preset::Choice* chosen = preset_.Chosen(kind.type);
            if (chosen == nullptr || tree_.FindByPath(path) != nullptr) continue;
            throw NotAcceptable(
                {.code = ProblemCode::NoSuchStream,
                 .message = (own ? "The preset has" : "The container " + checked_.container + " takes") + " no " +
                            kind.typeId + " stream, so there is nothing for " + chosen->by + "."});
        }
    }

    void Apply(const Change& change) {
        if (change.path == ContainerPath()) return;
        if (change.path == Preset::KEY_SIZE) {
            tree_.SetChild(change.path, change.value);
            return;
        }
        const std::string formatPrefix = IPreset::KEY_FORMAT + Separator();
        const std::string streamsPrefix = IPreset::KEY_STREAMS + Separator();
        if (change.path.starts_with(formatPrefix)) {
            SetSetting(tree_[IPreset::KEY_FORMAT], KnownFormatSettings(*checked_.format), IPreset::KEY_FORMAT,
                       change.path.substr(formatPrefix.size()), change.value);
        } else if (change.path.starts_with(streamsPrefix)) {
            const std::size_t end = change.path.find(Separator(), streamsPrefix.size());
            ApplyToStream(change.path.substr(0, end), change.path.substr(std::min(end, change.path.size())),
                          change.value);
        } else {
            throw NotAcceptable({.code = ProblemCode::UnknownSetting,
                                 .message = "Unknown setting \"" + Printable(change.path) + "\".",
                                 .path = change.path,
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
            throw NotAcceptable({.code = stream == nullptr ? ProblemCode::NoSuchStream : ProblemCode::UnknownSetting,
                                 .message = stream == nullptr
                                                ? "There is no stream \"" + Printable(streamPath) + "\"."
                                                : "\"" + Printable(streamPath) + "\" is a stream, not a setting.",
                                 .path = streamPath,
                                 .allowed = paths});
        }
        const std::string below = rest.substr(Separator().size());
        const StreamRecord* kind = StreamRecord::Find(TextAt(*stream, IPreset::KEY_TYPE_ID));
        if (kind != nullptr && below == Below(kind->codecKey, IFormatCodec::TAG_CODEC_ID)) {
            // It decides which settings are known.
            Property& codec =
                stream->ChildExists(kind->codecKey) ? (*stream)[kind->codecKey] : stream->SetChild(kind->codecKey);
            codec.SetChild(IFormatCodec::TAG_CODEC_ID, value);
            return;
        }
        const AutomaticSetting* automatic =
            value == IFormatCodec::CODEC_ID_AUTO ? FindAutomaticSetting(below) : nullptr;
        SetSetting(*stream, Known(*stream), streamPath, below,
                   automatic != nullptr ? Core::PropertyValueToString(automatic->value) : value);
    }

    void CheckFormat() {
        CheckSettings(tree_[IPreset::KEY_FORMAT], KnownFormatSettings(*checked_.format), IPreset::KEY_FORMAT);
        checked_.formatSettings = tree_[IPreset::KEY_FORMAT];
    }

    /// The first stream of a type is named by its type, the others by their number.
    std::string StreamPath(const Property& stream) const {
        const std::string byType = IPreset::KEY_STREAMS + IPreset::INDEX + TextAt(stream, IPreset::KEY_TYPE_ID);
        return tree_.FindByPath(byType) == &stream ? byType : IPreset::KEY_STREAMS + Separator() + stream.Name();
    }

    /// The codec of the stream's own settings; empty when they leave it open.
    static std::string OwnCodec(const Property& stream, const StreamRecord& kind) {
        const std::string codec = TextAt(stream, Below(kind.codecKey, IFormatCodec::TAG_CODEC_ID));
        return codec != IFormatCodec::CODEC_ID_AUTO ? codec : std::string();
    }

    /// The codec that was asked for by name beside the settings; may be empty.
    std::string ChosenCodec(const StreamRecord& kind) const {
        const Preset::Choice* chosen = preset_.Chosen(kind.type);
        const bool isName = chosen != nullptr && chosen->codec != IFormatCodec::CODEC_ID_AUTO && !IsCopy(chosen->codec);
        return isName ? chosen->codec : std::string();
    }

    /// What a stream that leaves its codec open is encoded with.
    std::string CodecInstead(const Property& stream, const StreamRecord& kind) const {
        std::string chosen = ChosenCodec(kind);
        if (!chosen.empty()) return chosen;
        const Property* standard = defaults_.FindByPath(kind.CodecIdPath());
        if (standard != nullptr) return standard->GetString();
        throw NotAcceptable({.code = ProblemCode::NoSuchStream,
                             .message = "The container " + checked_.container + " takes no " + kind.typeId + " stream.",
                             .path = StreamPath(stream)});
    }

    const StreamRecord& KindOf(const Property& stream) const {
        const std::string typeId = TextAt(stream, IPreset::KEY_TYPE_ID);
        if (const StreamRecord* kind = StreamRecord::Find(typeId)) return *kind;
        std::vector<std::string> types;
        for (const StreamRecord& kind : StreamRecord::All()) types.push_back(kind.typeId);
        const std::string path = Below(Below(IPreset::KEY_STREAMS, stream.Name()), IPreset::KEY_TYPE_ID);
        throw NotAcceptable({.code = typeId.empty() ? ProblemCode::MissingSetting : ProblemCode::UnknownName,
                             .message = (typeId.empty() ? path + " must say what the stream is."
                                                        : "\"" + Printable(typeId) + "\" is no type of stream.") +
                                        DidYouMean(typeId, types),
                             .path = path,
                             .value = typeId,
                             .allowed = types});
    }

    Property Known(const Property& stream) const {
        const StreamRecord& kind = KindOf(stream);
        const std::string own = OwnCodec(stream, kind);
        const bool isEncoded = kind.HasHelpers() && !IsCopy(own);
        Property known =
            isEncoded ? KnownStreamSettings(
                            kind, *FindHelper(CodecsOf(kind.type), own.empty() ? CodecInstead(stream, kind) : own))
                      : KnownWithoutEncoder(kind);
        known.SetChild(PresetStream::kTracks, PresetStream::kAllTracks);
        if (kind.type == Conf::StreamType::Video) known.SetChild(PresetStream::kKeepFields, true);
        return known;
    }

    void AddStream(const Property& settings, std::size_t number) {
        PresetStream stream{.kind = &KindOf(settings),
                            .path = StreamPath(settings),
                            .settings = settings,
                            .chosenBecause = {},
                            .chosen = nullptr};
        ReadAutomatic(stream.settings);
        CheckSettings(stream.settings, Known(settings), Below(IPreset::KEY_STREAMS, std::to_string(number)));
        stream.tracks = TextAt(stream.settings, PresetStream::kTracks);
        stream.keepsFields = Flag(stream.settings, PresetStream::kKeepFields);
        for (const char* name : {PresetStream::kTracks, PresetStream::kKeepFields}) stream.settings.RemoveChild(name);
        SetCodec(settings, stream);
        checked_.streams.push_back(std::move(stream));
    }

    void SetCodec(const Property& settings, PresetStream& stream) const {
        const StreamRecord& kind = *stream.kind;
        stream.chosen = preset_.Chosen(kind.type);
        stream.codecId = OwnCodec(settings, kind);
        stream.isCopy = IsCopy(stream.chosen != nullptr ? stream.chosen->codec : stream.codecId);
        if (!kind.HasHelpers() || IsCopy(stream.codecId)) return;
        const std::string chosen = ChosenCodec(kind);
        if (!stream.codecId.empty()) {
            if (!chosen.empty()) stream.codecId = chosen;  // Settings for another codec are the encoder's to refuse.
            return;
        }
        stream.codecId = CodecInstead(settings, kind);
        stream.isOpen = chosen.empty();
        const bool isAutomatic =
            (stream.chosen != nullptr && chosen.empty()) ||
            TextAt(settings, Below(kind.codecKey, IFormatCodec::TAG_CODEC_ID)) == IFormatCodec::CODEC_ID_AUTO;
        if (!stream.settings.ChildExists(kind.codecKey)) stream.settings.SetChild(kind.codecKey);
        stream.settings[kind.codecKey].SetChild(IFormatCodec::TAG_CODEC_ID, stream.codecId);
        stream.chosenBecause = stream.codecId == chosen
                                   ? "asked for by " + stream.chosen->by
                                   : std::string(isAutomatic ? "auto: " : "") + "the default of " + checked_.container;
    }

    const Preset& preset_;
    Property tree_;
    Property defaults_;
    CheckedPreset checked_;
    Collector problems_;
};

}  // namespace

CheckedPreset Checked(const Preset& preset) { return Checker(preset).Check(); }

}  // namespace Kestro::Planner
