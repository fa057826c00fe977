#pragma once

#include <string>

#include "Kestro/Conf/DataHelpers/CodecSheet.h"
#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// Base of every encoder helper: turns the encoder's data sheet into default settings, constraints and rules, and holds
/// what is the same for all encoders.
///
/// Its settings are named IPreset::KEY_FILTER_AUDIO_CODEC or KEY_FILTER_VIDEO_CODEC. Its rules tie the values that the
/// stream's filters give (sample rate, layout, sample format, frame rate, frame size) to what the encoder takes.
class DataHelperCodecFFMPEG : public RefCounted<IDataHelper> {
public:
    Core::Property GetDefaultSettings() const override;
    /// Audio: the resampler. Video: the resizer and the frame-rate filter.
    void GetRequiredFilters(FilterList& filters) const override;
    void FillValidationRules(ValidationRuleList& rules) const override;
    void FillConstraints(ConstraintMap& constraints) const override;

    /// Copies the encoder's values out of a preset's codec node. The target holds the source's values: for video width,
    /// height (pixels) and frame rate. A bitrate that is left to the program is computed for video
    /// (GetDefaultVideoBitrate) and left alone for audio; without options of its own a preset gets the encoder's.
    /// Throws HelperException for another codec's preset, an unknown bitrate mode, or variable bitrate without a
    /// quality for video; PropertyException for a preset without a codec id, a mode or the value that its mode needs
    /// (which an audio encoder may leave optional), and for video without width and height in the target.
    /// After a throw the target may be partly written.
    void ApplyPresetSettings(const Core::Property& preset, Core::Property& settings) const override;

    /// Completes and repairs a codec node once its container is known: bitrate settings that no constraint accepts go
    /// back to their defaults, key-frame interval and B-frames are completed, B-frames dropped where the encoder has
    /// none. Throws HelperException naming the sample rate, sample format or layout that the encoder does not take.
    void CorrectFormatCodec(Core::Property& settings) const override;

    /// The check of sample rate, sample format and layout alone; settings that are absent pass.
    void CorrectAudioResamplerSettings(const Core::Property& settings) const;

protected:
    /// The sheet is read here and then no more.
    explicit DataHelperCodecFFMPEG(const CodecSheet& sheet);
    /// For a sheet that several codecs share.
    DataHelperCodecFFMPEG(const CodecSheet& sheet, const std::string& codecId);

    const std::string& CodecId() const { return codecId_; }

    /// Puts back the default of each bitrate setting (mode, bitrate, quality) that has no constraint or fails it.
    void RepairBitrate(Core::Property& settings) const;

private:
    // operation: what a failure names, the operation that was called.
    void ApplyAudioPreset(const Core::Property& preset, Core::Property& settings, const char* operation) const;
    void ApplyVideoPreset(const Core::Property& preset, Core::Property& settings, const char* operation) const;
    void CompleteVideo(Core::Property& settings) const;
    void AddRules(const CodecSheet& sheet);

    std::string codecId_;
    StreamType stream_;
    bool bitrateIsOptional_;
    std::string presetKey_;
    Core::Property defaults_;
    ConstraintMap constraints_;
    ValidationRuleList rules_;
};

}  // namespace Kestro::Conf
