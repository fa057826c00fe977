#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <string>

#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Export.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// A helper of the registry with the choice "Auto" added: the program decides.
///
/// Bitrate mode and a container's audio codec offer their automatic values first,
/// IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO and CODEC_ID_AUTO.
///
/// Rules on the resampler's sample rate and layout and on the frame-rate filter's rate accept "Auto" too: the values by
/// which those filters keep the source's. They are, named "Auto", the integer -1
/// (DataHelperAudioResample::KEEP_SAMPLE_RATE), the text IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN and the rational
/// SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE. A rule that lists its values lists "Auto" first; one that has
/// bounds tells these alone, for a consumer takes either; one that accepts the value anyway is the wrapped helper's
/// own.
///
/// Everything else is the wrapped helper's.
class DataHelperProxyAuto final : public RefCounted<IDataHelper> {
public:
    /// type: the registry's type that the helper is of, or a filter's class id.
    DataHelperProxyAuto(std::string type, boost::intrusive_ptr<const IDataHelper> helper);

    const std::string& Type() const { return type_; }

    Core::Property GetDefaultSettings() const override;
    void GetRequiredFilters(FilterList& filters) const override;
    void FillValidationRules(ValidationRuleList& rules) const override;
    void FillConstraints(ConstraintMap& constraints) const override;
    void ApplyPresetSettings(const Core::Property& source, Core::Property& target) const override;
    void CorrectFormatCodec(Core::Property& codec) const override;

private:
    std::string type_;
    boost::intrusive_ptr<const IDataHelper> helper_;
};

}  // namespace Kestro::Conf

/// A new proxy of the helper that CreateDataHelper gives for that type and name, filters included; its exceptions pass
/// through.
KESTRO_DATAHELPERS_API const boost::intrusive_ptr<const Kestro::Conf::IDataHelper> CreateDataHelperAuto(
    const std::string& type, const std::string& name);
