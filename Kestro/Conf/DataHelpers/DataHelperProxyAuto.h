#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <string>

#include "Kestro/Conf/IDataHelper.h"
#include "Kestro/Export.h"
#include "Kestro/RefCounted.h"

/// A new proxy of the helper that CreateDataHelper gives for that type and name, filters included; its exceptions pass
/// through.
KESTRO_DATAHELPERS_API const boost::intrusive_ptr<const Kestro::Conf::IDataHelper> CreateDataHelperAuto(
    const std::string& type, const std::string& name);

namespace Kestro::Conf {

/// A helper of the registry that also accepts "Auto" where the program can decide.
///
/// Bitrate mode and a container's audio codec offer their automatic values first,
/// IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO and CODEC_ID_AUTO.
///
/// Rules on the resampler's sample rate and layout and on the frame-rate filter's rate also accept the values by which
/// those filters keep the source's: the integer -1 (DataHelperAudioResample::KEEP_SAMPLE_RATE), the text
/// IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN and the rational SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE. A
/// rule that lists its values lists this one first, named "Auto". A rule with bounds lists no value, since a consumer
/// expects a list or bounds. A rule that accepts the value already is left as it is.
///
/// Everything else is the wrapped helper's.
class DataHelperProxyAuto final : public RefCounted<IDataHelper> {
public:
    /// The registry's type that the helper is of, or a filter's class id.
    const std::string& Type() const { return type_; }

    Core::Property GetDefaultSettings() const override;
    void GetRequiredFilters(FilterList& filters) const override;
    void FillValidationRules(ValidationRuleList& rules) const override;
    void FillConstraints(ConstraintMap& constraints) const override;
    void ApplyPresetSettings(const Core::Property& source, Core::Property& target) const override;
    void CorrectFormatCodec(Core::Property& codec) const override;

private:
    friend const boost::intrusive_ptr<const IDataHelper>(::CreateDataHelperAuto)(const std::string& type,
                                                                                 const std::string& name);

    DataHelperProxyAuto(std::string type, boost::intrusive_ptr<const IDataHelper> helper);

    std::string type_;
    boost::intrusive_ptr<const IDataHelper> helper_;
};

}  // namespace Kestro::Conf
