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
    Core::Property GetDefaultSettings() const final;
    /// Audio: the resampler. Video: the resizer and the frame-rate filter.
    void GetRequiredFilters(FilterList& filters) const final;
    void FillValidationRules(ValidationRuleList& rules) const final;
    void FillConstraints(ConstraintMap& constraints) const final;

    /// Copies the encoder's values out of a preset's codec node. The target holds the source's values: for video width,
    /// height (pixels) and frame rate. A bitrate that is left to the program is computed for video
    /// (GetDefaultVideoBitrate) and left alone for audio; without options of its own a preset gets the encoder's.
    /// Throws HelperException for another codec's preset, an unknown bitrate mode, or variable bitrate without a
    /// quality for video; PropertyException for a preset without a codec id, a mode or the value that its mode needs
    /// (which an audio encoder may leave optional), and for video without width and height in the target.
    /// After a throw the target may be partly written.
    void ApplyPresetSettings(const Core::Property& preset, Core::Property& settings) const override;

    /// Completes and repairs a codec node once its container is known. Throws HelperException naming the sample rate,
    /// sample format or layout that the encoder does not take. Bitrate settings (mode, bitrate, quality) that have no
    /// constraint or fail it go back to their defaults.
    /// Audio: the bitrate is then held to the limits of the sample rate (HoldToBitrateLimits). A lossless encoder has
    /// its one bitrate mode, and the bitrate that follows from the samples (WriteLosslessBitrate).
    /// Video: key-frame interval and B-frames are completed; without B-frames where the encoder has none.
    void CorrectFormatCodec(Core::Property& settings) const override;

    /// The flag of the default settings.
    bool HasGlobalHeader() const { return sheet_.globalHeader; }

protected:
    /// The sheet outlives the helper.
    explicit DataHelperCodecFFMPEG(const CodecSheet& sheet);
    /// For a sheet that several codecs share.
    DataHelperCodecFFMPEG(const CodecSheet& sheet, const std::string& codecId);

private:
    // operation: the function that a failure names, which is the public one that was called.
    void ApplyAudioPreset(const Core::Property& preset, Core::Property& settings, const char* operation) const;
    void ApplyVideoPreset(const Core::Property& preset, Core::Property& settings, const char* operation) const;
    void CorrectAudioResamplerSettings(const Core::Property& settings) const;
    void RepairBitrate(Core::Property& settings) const;
    void CompleteVideo(Core::Property& settings) const;
    void WriteDefaults();
    void AddRules();

    const CodecSheet& sheet_;
    std::string codecId_;
    Core::Property defaults_;
    ConstraintMap constraints_;
    ValidationRuleList rules_;
};

}  // namespace Kestro::Conf
