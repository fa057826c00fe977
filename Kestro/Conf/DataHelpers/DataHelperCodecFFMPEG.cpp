#include "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG.h"

#include <algorithm>

#include "Kestro/Conf/DataHelpers/CodecBitrates.h"
#include "Kestro/Conf/DataHelpers/ConstraintSet.h"
#include "Kestro/Conf/DataHelpers/HelperErrors.h"
#include "Kestro/Conf/DataHelpers/PairValidationRule.h"
#include "Kestro/Conf/DataHelpers/SettingPath.h"
#include "Kestro/Conf/GetDefaultVideoBitrate.h"
#include "Kestro/Conf/IFormatCodecAudio.h"
#include "Kestro/Conf/IFormatCodecVideo.h"
#include "Kestro/Conf/IPreset.h"
#include "Kestro/Core/PropertyValueToString.h"
#include "Kestro/Proc/IFilterFrameRate.h"
#include "Kestro/Proc/IFilterResample.h"
#include "Kestro/Proc/IFilterResize.h"
#include "Kestro/Proc/IResize.h"
#include "Kestro/Proc/SettingsFilterFrameRate.h"

namespace Kestro::Conf {

namespace {

constexpr const char* kSource = "Kestro/Conf/DataHelpers/DataHelperCodecFFMPEG";

/// operation: the function that the failure names.
[[noreturn]] void Refuse(const std::string& description, const std::string& value, const char* operation,
                         boost::uint_least32_t line) {
    ThrowHelper(description, value, boost::source_location(kSource, line, operation));
}

}  // namespace

DataHelperCodecFFMPEG::DataHelperCodecFFMPEG(const CodecSheet& sheet) : DataHelperCodecFFMPEG(sheet, sheet.codecId) {}

DataHelperCodecFFMPEG::DataHelperCodecFFMPEG(const CodecSheet& sheet, const std::string& codecId)
    : sheet_(sheet),
      codecId_(codecId),
      defaults_(sheet.stream == StreamType::Audio ? IPreset::KEY_FILTER_AUDIO_CODEC : IPreset::KEY_FILTER_VIDEO_CODEC) {
    WriteDefaults();
    for (const std::span<const SettingRow> rows : {std::span(sheet.settings), std::span(sheet.settingsAfterHeader)})
        AddConstraints(rows, constraints_);
    if (std::holds_alternative<Rates>(sheet.frameRates))
        constraints_[IFormatCodecVideo::TAG_FPS] = MakeConstraint(sheet.frameRates);
    AddRules();
}

void DataHelperCodecFFMPEG::WriteDefaults() {
    const auto isOption = [](const SettingRow& row) { return row.node == Node::Options; };
    const bool hasOptions = std::any_of(sheet_.settings.begin(), sheet_.settings.end(), isOption) ||
                            std::any_of(sheet_.settingsAfterHeader.begin(), sheet_.settingsAfterHeader.end(), isOption);
    defaults_.SetChild(IFormatCodec::TAG_CODEC_ID, codecId_);
    for (const SettingRow& row : sheet_.settings) WriteDefault(defaults_, row);
    if (!hasOptions) defaults_.SetChild(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE);
    if (sheet_.globalHeader) defaults_.SetChild(IFormatCodec::TAG_GLOBAL_HEADER, true);
    for (const SettingRow& row : sheet_.settingsAfterHeader) WriteDefault(defaults_, row);
}

void DataHelperCodecFFMPEG::AddRules() {
    const std::string& presetKey = defaults_.Name();
    const std::string own = SettingPath(presetKey, Node::Own, IFormatCodec::TAG_CODEC_ID);
    const auto isThisCodec = ConstraintSet::Create({{codecId_, codecId_}});
    const auto add = [&](Node node, const std::string& tag, const Allowed& allowed) {
        const auto constraint = MakeConstraint(allowed);
        if (!constraint) return;
        const auto rule = PairValidationRule::Create(own, isThisCodec, SettingPath(presetKey, node, tag), constraint);
        rules_.emplace_back(SettingPath(presetKey, Node::Own, tag), rule);
    };
    add(Node::Resampler, IFormatCodecAudio::TAG_SAMPLE_RATE, sheet_.sampleRates);
    add(Node::Resampler, IFormatCodecAudio::TAG_SAMPLE_FORMAT, sheet_.sampleFormats);
    add(Node::Resampler, IFormatCodecAudio::TAG_LAYOUT, sheet_.layouts);
    add(Node::Resizer, IFormatCodecVideo::TAG_WIDTH, sheet_.widths);
    add(Node::Resizer, IFormatCodecVideo::TAG_HEIGHT, sheet_.heights);
    add(Node::Resizer, Proc::IResize::FRAME_SIZE_MODE, sheet_.frameSizes);
    add(Node::FrameRate, IFormatCodecVideo::TAG_FPS, sheet_.frameRates);
    for (const CodecRuleRow& row : sheet_.rules) {
        const auto rule =
            PairValidationRule::Create(SettingPath(presetKey, row.whenNode, row.when), MakeConstraint(row.is),
                                       SettingPath(presetKey, row.node, row.tag), MakeConstraint(row.allowed));
        rules_.emplace_back(SettingPath(presetKey, Node::Own, row.tag), rule);
    }
}

Core::Property DataHelperCodecFFMPEG::GetDefaultSettings() const { return defaults_; }

void DataHelperCodecFFMPEG::GetRequiredFilters(FilterList& filters) const {
    if (sheet_.stream == StreamType::Audio) {
        filters.emplace_back(Proc::IFilterResample::CLASS_ID, std::string());
    } else {
        filters.emplace_back(Proc::IFilterResize::CLASS_ID, std::string());
        filters.emplace_back(Proc::IFilterFrameRate::CLASS_ID, std::string());
    }
}

void DataHelperCodecFFMPEG::FillValidationRules(ValidationRuleList& rules) const {
    rules.insert(rules.end(), rules_.begin(), rules_.end());
}

void DataHelperCodecFFMPEG::FillConstraints(ConstraintMap& constraints) const {
    for (const auto& [key, constraint] : constraints_) constraints.insert_or_assign(key, constraint);
}

void DataHelperCodecFFMPEG::ApplyPresetSettings(const Core::Property& preset, Core::Property& settings) const {
    const std::string& id = preset[IFormatCodec::TAG_CODEC_ID].GetString();
    if (id != codecId_) {
        Refuse("Incompatible preset codec id: " + id + ", required " + codecId_, id, BOOST_CURRENT_FUNCTION, __LINE__);
    }
    switch (sheet_.stream) {
        case StreamType::Audio:
            ApplyAudioPreset(preset, settings, BOOST_CURRENT_FUNCTION);
            break;
        case StreamType::Video:
            ApplyVideoPreset(preset, settings, BOOST_CURRENT_FUNCTION);
            break;
        default:
            Refuse("Unknown stream type", {}, BOOST_CURRENT_FUNCTION, __LINE__);
    }
    const std::string& options = IFormatCodec::TAG_CODEC_OPTIONS_ENCODE;
    if (preset.ChildExists(options) && preset[options].Count() != 0) {
        settings.SetChild(options, preset[options]);
    } else {
        settings.SetChild(options, defaults_[options]);
    }
}

void DataHelperCodecFFMPEG::ApplyAudioPreset(const Core::Property& preset, Core::Property& settings,
                                             const char* operation) const {
    const auto copy = [&](const std::string& tag) {
        if (!sheet_.bitrateIsOptional || preset.ChildExists(tag)) settings.SetChild(tag, preset[tag]);
    };
    settings.SetChild(IFormatCodec::TAG_CODEC_ID, codecId_);
    const std::string& mode = preset[IFormatCodec::TAG_BITRATE_MODE].GetString();
    if (mode == IFormatCodec::TAG_BITRATE_MODE_CBR) {
        settings.SetChild(IFormatCodec::TAG_BITRATE_MODE, mode);
        copy(IFormatCodec::TAG_BITRATE);
    } else if (mode == IFormatCodec::TAG_BITRATE_MODE_VBR) {
        settings.SetChild(IFormatCodec::TAG_BITRATE_MODE, mode);
        copy(IFormatCodec::TAG_QUALITY);
    } else if (mode == IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO) {
        settings.SetChild(IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE_MODE_CBR);
    } else {
        Refuse("Unknown bitrate mode", mode, operation, __LINE__);
    }
}

void DataHelperCodecFFMPEG::ApplyVideoPreset(const Core::Property& preset, Core::Property& settings,
                                             const char* operation) const {
    settings.SetChild(IFormatCodec::TAG_CODEC_ID, codecId_);
    const std::string& mode = preset[IFormatCodec::TAG_BITRATE_MODE].GetString();
    const int64_t width = settings[IFormatCodecVideo::TAG_WIDTH].GetInt64();
    const int64_t height = settings[IFormatCodecVideo::TAG_HEIGHT].GetInt64();

    const std::string& fpsTag = IFormatCodecVideo::TAG_FPS;
    auto fps = preset.ChildExists(fpsTag) ? preset[fpsTag].GetRatio()
                                          : Proc::SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE;
    if (fps == Proc::SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE) fps = settings[fpsTag].GetRatio();
    settings.SetChild(fpsTag, fps);

    for (const std::string& tag :
         {std::cref(IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL),
          std::cref(IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE), std::cref(IFormatCodec::TAG_THREAD_NUMBER)}) {
        if (preset.ChildExists(tag)) settings.SetChild(tag, preset[tag].GetInt64());
    }
    const std::string& allCores = IFormatCodec::TAG_UTILIZE_ALL_RESOURCES;
    if (preset.ChildExists(allCores)) settings.SetChild(allCores, preset[allCores].GetBool());
    const std::string& passes = IFormatCodec::TAG_MULTIPASS_ENCODING;
    if (preset.ChildExists(passes)) settings.SetChild(passes, preset[passes].GetString());

    const auto defaultBitrate = [&](int quality) {
        return GetDefaultVideoBitrate(codecId_, width, height, boost::rational_cast<double>(fps), quality);
    };
    if (mode == IFormatCodec::TAG_BITRATE_MODE_CBR) {
        settings.SetChild(IFormatCodec::TAG_BITRATE_MODE, mode);
        settings.SetChild(IFormatCodec::TAG_BITRATE, preset[IFormatCodec::TAG_BITRATE]);
    } else if (mode == IFormatCodec::TAG_BITRATE_MODE_VBR) {
        settings.SetChild(IFormatCodec::TAG_BITRATE_MODE, mode);
        if (!preset.ChildExists(IFormatCodec::TAG_QUALITY)) {
            Refuse("Quality is required for VBR bitrate mode", {}, operation, __LINE__);
        }
        const int64_t quality = preset[IFormatCodec::TAG_QUALITY].GetInt64();
        settings.SetChild(IFormatCodec::TAG_QUALITY, quality);
        const Core::Property* options = preset.FindByPath(IFormatCodec::TAG_CODEC_OPTIONS_ENCODE);
        const Core::Property* approved =
            options != nullptr ? options->FindByPath(IFormatCodecVideo::TAG_APPROVED_VBR_MODE_ONLY) : nullptr;
        if (approved != nullptr && approved->GetBool() && preset.ChildExists(IFormatCodec::TAG_BITRATE)) {
            settings.SetChild(IFormatCodec::TAG_BITRATE, preset[IFormatCodec::TAG_BITRATE].GetInt64());
        } else {
            // A quality of 0 or less stands for none.
            const auto given = static_cast<int>(std::clamp<int64_t>(quality, 0, IFormatCodec::MAX_QUALITY));
            settings.SetChild(IFormatCodec::TAG_BITRATE, defaultBitrate(given));
        }
    } else if (mode == IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO) {
        settings.SetChild(IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE_MODE_CBR);
        settings.SetChild(IFormatCodec::TAG_BITRATE, defaultBitrate(-1));
    } else {
        Refuse("Unknown bitrate mode", mode, operation, __LINE__);
    }

    const std::string& depth = IFormatCodecVideo::TAG_BITS_PER_PIXEL;
    settings.SetChild(depth, preset.ChildExists(depth) ? preset[depth].GetInt64() : int64_t{0});
    const std::string& cover = IFormatCodecVideo::TAG_COVER_FLAG;
    settings.SetChild(cover, preset.ChildExists(cover) && preset[cover].GetBool());
}

void DataHelperCodecFFMPEG::RepairBitrate(Core::Property& settings) const {
    constexpr Text kTags[] = {IFormatCodec::TAG_BITRATE_MODE, IFormatCodec::TAG_BITRATE, IFormatCodec::TAG_QUALITY};
    for (const std::string& tag : kTags) {
        const Core::Property* setting = settings.FindByPath(tag);
        if (setting == nullptr) continue;
        const auto found = constraints_.find(tag);
        if (found != constraints_.end() && found->second->IsValid(*setting)) continue;
        if (defaults_.ChildExists(tag)) settings.SetChild(tag, defaults_[tag]);
    }
}

void DataHelperCodecFFMPEG::CorrectAudioResamplerSettings(const Core::Property& settings) const {
    constexpr Text kTags[] = {IFormatCodecAudio::TAG_SAMPLE_RATE, IFormatCodecAudio::TAG_SAMPLE_FORMAT,
                              IFormatCodecAudio::TAG_LAYOUT};
    for (const std::string& tag : kTags) {
        const Core::Property* setting = settings.FindByPath(tag);
        if (setting == nullptr) continue;
        const auto concerns = [&tag](const auto& entry) { return LastSegment(entry.second->GetSecondName()) == tag; };
        const auto rule = std::find_if(rules_.begin(), rules_.end(), concerns);
        if (rule == rules_.end() || rule->second->GetSecondConstraint()->IsValid(*setting)) continue;
        const std::string value = Core::PropertyValueToString(*setting);
        HelperException exception;
        exception << TagDescription("Can't fix value [" + tag + "] = " + value + " for encoder [" + codecId_ + "]")
                  << TagDetails(value) << HelperException::TagSetting(tag);
        Throw(exception, boost::source_location(kSource, __LINE__, BOOST_CURRENT_FUNCTION));
    }
}

void DataHelperCodecFFMPEG::CorrectFormatCodec(Core::Property& settings) const {
    switch (sheet_.stream) {
        case StreamType::Audio:
            CorrectAudioResamplerSettings(settings);
            if (sheet_.encodedShares.size() == 0) {
                RepairBitrate(settings);
                HoldToBitrateLimits(sheet_, settings);
            } else {
                settings.SetChild(IFormatCodec::TAG_BITRATE_MODE, defaults_[IFormatCodec::TAG_BITRATE_MODE]);
                WriteLosslessBitrate(sheet_, settings);
            }
            break;
        case StreamType::Video:
            RepairBitrate(settings);
            CompleteVideo(settings);
            break;
        default:
            Refuse("Unknown stream type", {}, BOOST_CURRENT_FUNCTION, __LINE__);
    }
}

void DataHelperCodecFFMPEG::CompleteVideo(Core::Property& settings) const {
    constexpr Text kTags[] = {IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE, IFormatCodecVideo::TAG_MAX_I_FRAME_INTERVAL};
    for (const std::string& tag : kTags) {
        if (!settings.ChildExists(tag) && defaults_.ChildExists(tag)) settings.SetChild(tag, defaults_[tag]);
    }
    if (!sheet_.hasBFrames) settings.RemoveChild(IFormatCodecVideo::TAG_MAX_B_FRAME_SEQUENCE);
}

}  // namespace Kestro::Conf
