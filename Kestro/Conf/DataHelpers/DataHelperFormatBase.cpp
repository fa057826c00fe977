#include "Kestro/Conf/DataHelpers/DataHelperFormatBase.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/HelperErrors.h"
#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Conf/DataHelpers/SettingPath.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IFormatFile.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Conf/StreamRecord.h"

namespace Kestro::Conf {

namespace {

constexpr const char* kSource = "Kestro/Conf/DataHelpers/DataHelperFormatBase";

/// The place of a kind of stream in arrays with one entry for each.
constexpr size_t IndexOf(StreamType type) { return static_cast<size_t>(type) - 1; }

/// The failure where a container carries no such stream.
constexpr const char* kNotSet[] = {"Video codecs constraint is not set", "Audio codecs constraint is not set",
                                   "Subtitle codecs constraint is not set"};

/// Where a rule of the container finds a setting.
std::string RulePath(const StreamRecord& kind, Node node, const std::string& tag) {
    if (node != Node::InFormat) return SettingPath(kind.codecKey, node, tag);
    // Beside the codec's id, in the streams that the format node keeps.
    const std::string id = kind.CodecIdPath();
    return JoinPath(IPreset::KEY_FORMAT, id.substr(0, id.size() - LastSegment(id).size()) + tag);
}

}  // namespace

DataHelperFormatBase::DataHelperFormatBase(const FormatSheet& sheet) : DataHelperFormatBase(sheet, sheet.container) {}

DataHelperFormatBase::DataHelperFormatBase(const FormatSheet& sheet, const std::string& container)
    : defaults_(IPreset::KEY_FORMAT) {
    defaults_.SetChild(IFormatFile::TAG_CONTAINER, container);
    for (const SettingRow& row : sheet.settingsBeforeHeader) WriteDefault(defaults_, row);
    defaults_.SetChild(IFormatCodec::TAG_GLOBAL_HEADER, sheet.globalHeader);
    for (const SettingRow& row : sheet.settings) WriteDefault(defaults_, row);
    AddConstraints(sheet.settingsBeforeHeader, constraints_);
    AddConstraints(sheet.settings, constraints_);
    Core::Property& limits = defaults_.SetChild(IFormatFile::TAG_LIMITS);
    limits.SetChild(IFormatFile::TAG_LIMITS_VIDEO, sheet.limits.video);
    limits.SetChild(IFormatFile::TAG_LIMITS_AUDIO, sheet.limits.audio);
    limits.SetChild(IFormatFile::TAG_LIMITS_SUBTITLE, sheet.limits.subtitle);
    limits.SetChild(IFormatFile::TAG_LIMITS_OTHER, sheet.limits.other);
    Core::Property& streams = defaults_.SetChild(IPreset::KEY_STREAMS);
    for (const StreamRow& row : sheet.streams) AddStream(row, streams);
    for (const FormatRuleRow& row : sheet.rules) AddRule(row);
    FindCorrections(sheet.rules);
}

void DataHelperFormatBase::AddStream(const StreamRow& row, Core::Property& streams) {
    const auto codecs = SetCodecConstraint(ToStrings(row.codecs), row.defaultCodec);
    codecs_[IndexOf(row.type)] = codecs;
    const StreamRecord& kind = StreamRecord::Find(row.type);
    constraints_[kind.CodecIdPath()] = codecs;

    Core::Property& stream = streams.SetChild(std::to_string(streams.Count()));
    stream.SetChild(IPreset::KEY_TYPE_ID, kind.typeId);
    Core::Property& codec = stream.SetChild(kind.codecKey);
    codec.SetChild(IFormatCodec::TAG_CODEC_ID, row.defaultCodec.get());
    if (row.isCover) codec.SetChild(IFormatCodecVideo::TAG_COVER_FLAG, true);
}

void DataHelperFormatBase::AddRule(const FormatRuleRow& row) {
    const StreamRecord& kind = StreamRecord::Find(row.type);
    boost::intrusive_ptr<IPropertyConstraint> condition = codecs_[IndexOf(row.type)];
    if (row.codecs.size() != 0) condition = MakeConstraint(Texts{row.codecs});
    rules_.emplace_back(Core::Property::SEPARATOR,
                        PairValidationRule::Create(kind.CodecIdPath(), condition, RulePath(kind, row.node, row.tag),
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

void DataHelperFormatBase::FindCorrections(std::span<const FormatRuleRow> rows) {
    const struct {
        StreamType type;
        Node node;
        Text tag;
    } corrected[] = {
        {StreamType::Video, Node::FrameRate, IFormatCodecVideo::TAG_FPS},
        {StreamType::Video, Node::InFormat, IFormatCodecVideo::TAG_COVER_FLAG},
        {StreamType::Video, Node::Options, IFormatCodec::TAG_PROFILE},
        {StreamType::Audio, Node::Resampler, IFormatCodecAudio::TAG_SAMPLE_RATE},
        {StreamType::Audio, Node::Resampler, IFormatCodecAudio::TAG_LAYOUT},
    };
    for (const auto& [type, node, tag] : corrected) {
        for (size_t i = 0; i < rows.size(); ++i) {
            if (rows[i].type != type || rows[i].node != node || rows[i].tag.get() != tag.get()) continue;
            // A stream's codec node holds the results of its filters as children of its own.
            const std::string place = node == Node::Options ? SettingKey(node, tag) : tag.get();
            const auto& rule = rules_[i].second;
            auto& corrections = type == StreamType::Video ? videoCorrections_ : audioCorrections_;
            corrections.push_back({place, rule->GetFirstConstraint(), rule->GetSecondConstraint()});
        }
    }
}

void DataHelperFormatBase::CorrectFormatCodec(Core::Property& codec) const {
    if (codec.Name() == IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO) Correct(videoCorrections_, codec);
    if (codec.Name() == IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO) Correct(audioCorrections_, codec);
}

void DataHelperFormatBase::Correct(const std::vector<Correction>& corrections, Core::Property& codec) {
    for (const Correction& correction : corrections) {
        if (codec.FindByPath(correction.place) == nullptr) continue;
        if (!correction.codecs->IsValid(codec[IFormatCodec::TAG_CODEC_ID])) continue;
        correction.allowed->CorrectValue(codec.ChildByPath(correction.place));
    }
}

const boost::intrusive_ptr<ConstraintCodecs>& DataHelperFormatBase::CodecsConstraint(StreamType type,
                                                                                     const char* operation) const {
    const auto& codecs = codecs_[IndexOf(type)];
    if (!codecs) ThrowHelper(kNotSet[IndexOf(type)], {}, boost::source_location(kSource, __LINE__, operation));
    return codecs;
}

boost::intrusive_ptr<IPropertyConstraint> DataHelperFormatBase::VideoCodecsConstraint() const {
    return CodecsConstraint(StreamType::Video, BOOST_CURRENT_FUNCTION);
}

boost::intrusive_ptr<IPropertyConstraint> DataHelperFormatBase::AudioCodecsConstraint() const {
    return CodecsConstraint(StreamType::Audio, BOOST_CURRENT_FUNCTION);
}

boost::intrusive_ptr<IPropertyConstraint> DataHelperFormatBase::SubtitleTextCodecsConstraint() const {
    return CodecsConstraint(StreamType::Subtitle, BOOST_CURRENT_FUNCTION);
}

std::string DataHelperFormatBase::DefaultVideoCodec() const {
    return CodecsConstraint(StreamType::Video, BOOST_CURRENT_FUNCTION)->GetDefaultValue().GetString();
}

std::string DataHelperFormatBase::DefaultAudioCodec() const {
    return CodecsConstraint(StreamType::Audio, BOOST_CURRENT_FUNCTION)->GetDefaultValue().GetString();
}

std::string DataHelperFormatBase::DefaultSubtitleTextCodec() const {
    return CodecsConstraint(StreamType::Subtitle, BOOST_CURRENT_FUNCTION)->GetDefaultValue().GetString();
}

bool DataHelperFormatBase::HasGlobalHeader() const { return defaults_[IFormatCodec::TAG_GLOBAL_HEADER].GetBool(); }

}  // namespace Kestro::Conf
