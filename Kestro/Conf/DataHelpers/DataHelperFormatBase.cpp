#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/HelperErrors.h"
#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"

namespace Kestro::Conf {

namespace {

constexpr const char* kSource = "Kestro/Conf/DataHelpers/DataHelperFormatBase";

/// How a preset speaks of the streams of one kind.
struct StreamKind {
    Text typeId;
    Text codecKey;
    const char* notSet;
};

constexpr StreamKind kKinds[] = {
    {IPreset::STREAM_TYPE_VIDEO, IPreset::KEY_FILTER_VIDEO_CODEC, "Video codecs constraint is not set"},
    {IPreset::STREAM_TYPE_AUDIO, IPreset::KEY_FILTER_AUDIO_CODEC, "Audio codecs constraint is not set"},
    {IPreset::STREAM_TYPE_SUBTITLES_TEXT, IPreset::KEY_FILTER_SUBTITLE_CODEC, "Subtitle codecs constraint is not set"},
};

/// Place of a kind in lists that hold one entry a kind.
constexpr size_t IndexOf(StreamType type) { return static_cast<size_t>(type) - 1; }

const StreamKind& Kind(StreamType type) { return kKinds[IndexOf(type)]; }

}  // namespace

std::string DataHelperFormatBase::CodecIdPath(StreamType type) {
    const StreamKind& kind = Kind(type);
    return IPreset::KEY_STREAMS + IPreset::INDEX + kind.typeId.get() + Core::Property::SEPARATOR + kind.codecKey.get() +
           Core::Property::SEPARATOR + IFormatCodec::TAG_CODEC_ID;
}

DataHelperFormatBase::DataHelperFormatBase(const FormatSheet& sheet) : DataHelperFormatBase(sheet, sheet.container) {}

DataHelperFormatBase::DataHelperFormatBase(const FormatSheet& sheet, const std::string& container)
    : container_(container), defaults_(IPreset::KEY_FORMAT) {
    defaults_.SetChild(IFormatFile::TAG_CONTAINER, container_);
    for (const SettingRow& row : sheet.settings) {
        WriteDefault(defaults_, row);
        if (const auto constraint = MakeConstraint(row.allowed))
            constraints_[SettingKey(row.node, row.tag)] = constraint;
    }
    Core::Property& limits = defaults_.SetChild(IFormatFile::TAG_LIMITS);
    limits.SetChild(IFormatFile::TAG_LIMITS_VIDEO, sheet.limits.video);
    limits.SetChild(IFormatFile::TAG_LIMITS_AUDIO, sheet.limits.audio);
    limits.SetChild(IFormatFile::TAG_LIMITS_SUBTITLE, sheet.limits.subtitle);
    limits.SetChild(IFormatFile::TAG_LIMITS_OTHER, sheet.limits.other);
    Core::Property& streams = defaults_.SetChild(IPreset::KEY_STREAMS);
    for (const StreamRow& row : sheet.streams) AddStream(row, streams);
    for (const FormatRuleRow& row : sheet.rules) AddRule(row);
}

void DataHelperFormatBase::AddStream(const StreamRow& row, Core::Property& streams) {
    const auto codecs = SetCodecConstraint(ToStrings(row.codecs), row.defaultCodec);
    codecs_[IndexOf(row.type)] = codecs;
    constraints_[CodecIdPath(row.type)] = codecs;

    Core::Property& stream = streams.SetChild(std::to_string(streams.Count()));
    stream.SetChild(IPreset::KEY_TYPE_ID, Kind(row.type).typeId.get());
    Core::Property& codec = stream.SetChild(Kind(row.type).codecKey);
    codec.SetChild(IFormatCodec::TAG_CODEC_ID, row.defaultCodec.get());
    if (row.isCover) codec.SetChild(IFormatCodecVideo::TAG_COVER_FLAG, true);
}

void DataHelperFormatBase::AddRule(const FormatRuleRow& row) {
    boost::intrusive_ptr<IPropertyConstraint> condition = Codecs(row.type);
    if (!row.codecs.empty()) condition = MakeConstraint(Texts{row.codecs});
    rules_.emplace_back(Core::Property::SEPARATOR,
                        PairValidationRule::Create(CodecIdPath(row.type), condition,
                                                   SettingPath(Kind(row.type).codecKey, row.node, row.tag),
                                                   MakeConstraint(row.allowed)));
}

boost::intrusive_ptr<ConstraintCodecs> DataHelperFormatBase::SetCodecConstraint(const std::vector<std::string>& codecs,
                                                                                const std::string& defaultCodec) {
    if (codecs.empty()) {
        ThrowHelper("List of available codecs is empty", {},
                    boost::source_location(kSource, 202, BOOST_CURRENT_FUNCTION));
    }
    if (std::find(codecs.begin(), codecs.end(), defaultCodec) == codecs.end()) {
        ThrowHelper("Default codec" + defaultCodec + " is not presented in list of avalible codecs", defaultCodec,
                    boost::source_location(kSource, 207, BOOST_CURRENT_FUNCTION));
    }
    ConstraintCodecs::Codecs entries;
    entries.reserve(codecs.size());
    for (const std::string& codec : codecs) entries.emplace_back(codec, codec);
    return new ConstraintCodecs(std::move(entries), defaultCodec);
}

Core::Property DataHelperFormatBase::GetDefaultSettings() const { return defaults_; }

void DataHelperFormatBase::GetRequiredFilters(FilterList& /*filters*/) const {}

void DataHelperFormatBase::FillValidationRules(ValidationRuleList& rules) const {
    rules.insert(rules.end(), rules_.begin(), rules_.end());
}

void DataHelperFormatBase::FillConstraints(ConstraintMap& constraints) const {
    for (const auto& [key, constraint] : constraints_) constraints.insert_or_assign(key, constraint);
}

void DataHelperFormatBase::ApplyPresetSettings(const Core::Property& /*source*/, Core::Property& /*target*/) const {}

void DataHelperFormatBase::CorrectFormatCodec(Core::Property& codec) const {
    if (codec.Name() == IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO) {
        HoldToRules(StreamType::Video, Node::FrameRate, IFormatCodecVideo::TAG_FPS, codec);
        HoldToRules(StreamType::Video, Node::Own, IFormatCodecVideo::TAG_COVER_FLAG, codec);
        HoldToRules(StreamType::Video, Node::Options, IFormatCodec::TAG_PROFILE, codec);
    } else if (codec.Name() == IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO) {
        HoldToRules(StreamType::Audio, Node::Resampler, IFormatCodecAudio::TAG_SAMPLE_RATE, codec);
        HoldToRules(StreamType::Audio, Node::Resampler, IFormatCodecAudio::TAG_LAYOUT, codec);
    }
}

void DataHelperFormatBase::HoldToRules(StreamType type, Node node, const std::string& tag,
                                       Core::Property& codec) const {
    // A codec node holds its filters' values itself; only its options stand deeper.
    const std::string place = node == Node::Options ? SettingKey(node, tag) : tag;
    if (codec.FindByPath(place) == nullptr) return;
    ValidationRuleList rules;
    FillValidationRules(rules);
    const std::string codecIdPath = CodecIdPath(type);
    const std::string settingPath = SettingPath(Kind(type).codecKey, node, tag);
    for (const auto& [path, rule] : rules) {
        if (rule->GetFirstName() != codecIdPath || rule->GetSecondName() != settingPath) continue;
        if (!rule->GetFirstConstraint()->IsValid(codec[IFormatCodec::TAG_CODEC_ID])) continue;
        Core::Property& value = codec.ChildByPath(place);
        const auto allowed = rule->GetSecondConstraint();
        if (allowed->IsValid(value) || allowed->CorrectValue(value)) continue;
        const std::string text = Core::PropertyValueToString(value);
        ThrowHelper("Can't fix value [" + tag + "] = " + text + " for container [" + container_ + "]", text,
                    boost::source_location(kSource, __LINE__, BOOST_CURRENT_FUNCTION));
    }
}

const boost::intrusive_ptr<ConstraintCodecs>& DataHelperFormatBase::Codecs(StreamType type) const {
    const auto& codecs = codecs_[IndexOf(type)];
    if (!codecs) ThrowHelper(Kind(type).notSet, {}, boost::source_location(kSource, __LINE__, BOOST_CURRENT_FUNCTION));
    return codecs;
}

std::string DataHelperFormatBase::DefaultCodec(StreamType type) const {
    return Codecs(type)->GetDefaultValue().GetString();
}

boost::intrusive_ptr<IPropertyConstraint> DataHelperFormatBase::VideoCodecsConstraint() const {
    return Codecs(StreamType::Video);
}

boost::intrusive_ptr<IPropertyConstraint> DataHelperFormatBase::AudioCodecsConstraint() const {
    return Codecs(StreamType::Audio);
}

boost::intrusive_ptr<IPropertyConstraint> DataHelperFormatBase::SubtitleTextCodecsConstraint() const {
    return Codecs(StreamType::Subtitle);
}

std::string DataHelperFormatBase::DefaultVideoCodec() const { return DefaultCodec(StreamType::Video); }
std::string DataHelperFormatBase::DefaultAudioCodec() const { return DefaultCodec(StreamType::Audio); }
std::string DataHelperFormatBase::DefaultSubtitleTextCodec() const { return DefaultCodec(StreamType::Subtitle); }

}  // namespace Kestro::Conf
