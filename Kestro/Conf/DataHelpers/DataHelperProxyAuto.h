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
/// IFormatCodec::TAG_BITRATE_MODE_CBR_AUTO and CODEC_ID_AUTO. Rules on the resampler's sample rate and layout and on
/// the frame-rate filter's rate accept "Auto" too: the values by which those filters keep the source's, -1,
/// IFormatCodecAudio::TAG_CH_LAYOUT_UNKNOWN and SettingsFilterFrameRate::MARK_USE_ORIGINAL_FRAMERATE. Everything else
/// is the wrapped helper's.
class DataHelperProxyAuto final : public RefCounted<IDataHelper> {
public:
    explicit DataHelperProxyAuto(boost::intrusive_ptr<const IDataHelper> helper);

    Core::Property GetDefaultSettings() const override;
    void GetRequiredFilters(FilterList& filters) const override;
    void FillValidationRules(ValidationRuleList& rules) const override;
    void FillConstraints(ConstraintMap& constraints) const override;
    void ApplyPresetSettings(const Core::Property& source, Core::Property& target) const override;
    void CorrectFormatCodec(Core::Property& codec) const override;

private:
    boost::intrusive_ptr<const IDataHelper> helper_;
};

}  // namespace Kestro::Conf

/// A new proxy of the helper that CreateDataHelper gives for that type and name; its exceptions pass through.
KESTRO_DATAHELPERS_API const boost::intrusive_ptr<const Kestro::Conf::IDataHelper> CreateDataHelperAuto(
    const std::string& type, const std::string& name);
