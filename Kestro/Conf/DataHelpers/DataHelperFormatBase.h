#pragma once

#include <array>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <string>
#include <vector>

#include "Kestro/Conf/DataHelpers/ConstraintCodecs.h"
#include "Kestro/Conf/DataHelpers/FormatSheet.h"
#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// Base of every container helper: turns the container's data sheet into default settings, constraints and rules.
///
/// The default settings are the preset's format node (IPreset::KEY_FORMAT) with the list of streams below it.
/// Constraints on codecs stand under the codec-id paths, "Streams/TypeId=audio/AudioCodec/CodecId", from the preset's
/// root.
class DataHelperFormatBase : public RefCounted<IDataHelper> {
public:
    Core::Property GetDefaultSettings() const final;
    /// None: a container needs no filter.
    void GetRequiredFilters(FilterList& filters) const final;
    void FillValidationRules(ValidationRuleList& rules) const final;
    void FillConstraints(ConstraintMap& constraints) const final;
    /// Does nothing: a container's settings are used as they are.
    void ApplyPresetSettings(const Core::Property& source, Core::Property& target) const final;

    /// Holds a codec node's frame rate, cover flag and profile (video) or sample rate and layout (audio) to the
    /// container's rules for that codec. The node bears the name IFormatCodecVideo::TAG_FORMAT_CODEC_VIDEO or
    /// IFormatCodecAudio::TAG_FORMAT_CODEC_AUDIO; one of another name is left alone, and so are settings that are
    /// absent and values that no rule can correct. Throws PropertyException for a node without a codec id that has a
    /// setting to be held to a rule.
    void CorrectFormatCodec(Core::Property& codec) const final;

    /// The codecs of one kind that the container takes, and the default among them. Throw HelperException where the
    /// container carries no such stream.
    boost::intrusive_ptr<IPropertyConstraint> VideoCodecsConstraint() const;
    boost::intrusive_ptr<IPropertyConstraint> AudioCodecsConstraint() const;
    boost::intrusive_ptr<IPropertyConstraint> SubtitleTextCodecsConstraint() const;
    std::string DefaultVideoCodec() const;
    std::string DefaultAudioCodec() const;
    std::string DefaultSubtitleTextCodec() const;
    /// The flag of the default settings.
    bool HasGlobalHeader() const;

protected:
    /// The sheet is read here and not kept.
    explicit DataHelperFormatBase(const FormatSheet& sheet);
    /// For a sheet that several container names share.
    DataHelperFormatBase(const FormatSheet& sheet, const std::string& container);

    /// A constraint on a list of codec ids. Throws HelperException for an empty list and for a default that is not in
    /// it.
    static boost::intrusive_ptr<ConstraintCodecs> SetCodecConstraint(const std::vector<std::string>& codecs,
                                                                     const std::string& defaultCodec);

private:
    /// Throws for a kind of stream that the container does not carry; `operation`: the function that a failure names.
    const boost::intrusive_ptr<ConstraintCodecs>& CodecsConstraint(StreamType type, const char* operation) const;
    void AddStream(const StreamRow& row, Core::Property& streams);
    void AddRule(const FormatRuleRow& row);
    void FindCorrections(std::span<const FormatRuleRow> rows);

    /// A rule as a codec node sees it: where the codec is one of `codecs`, the setting at `place` is held to `allowed`.
    struct Correction {
        std::string place;
        boost::intrusive_ptr<IPropertyConstraint> codecs;
        boost::intrusive_ptr<IPropertyConstraint> allowed;
    };
    static void Correct(const std::vector<Correction>& corrections, Core::Property& codec);

    /// In the order of StreamType; null for a kind of stream that the container does not carry.
    std::array<boost::intrusive_ptr<ConstraintCodecs>, 3> codecs_;
    Core::Property defaults_;
    ConstraintMap constraints_;
    ValidationRuleList rules_;
    std::vector<Correction> videoCorrections_;
    std::vector<Correction> audioCorrections_;
};

}  // namespace Kestro::Conf
