#pragma once

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <string>

#include "Kestro/Conf/IConstraintConsumer.h"
#include "Kestro/Constant.h"
#include "Kestro/Core/Property.h"
#include "Kestro/IRefCountable.h"

namespace Kestro::Conf {

/// What values one setting may take. Immutable: any number of threads may ask one constraint at once.
class KESTRO_CONFINT_API IPropertyConstraint : public virtual IRefCountable {
public:
    /// Description of the rule that a frame's width and height are even (4:2:0 chroma halves both).
    static KESTRO_CONSTANT std::string DESCRIPTION_ID_EVEN_SIZE = "even-size";
    /// Description of the rule that a frame rate is above 0, or the mark that keeps the source's.
    static KESTRO_CONSTANT std::string DESCRIPTION_ID_FRAME_RATE = "frame-rate";
    /// Description of the rule that DTS has MIN_DTS_BITRATE..MAX_DTS_BITRATE of IFormatCodecAudio.
    static KESTRO_CONSTANT std::string DESCRIPTION_ID_DTS_BITRATE = "dts-bitrate";

    ~IPropertyConstraint() override;

    /// Describes the domain to the consumer; throws ConstraintException when there is none.
    virtual void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const = 0;
    /// Whether the value lies in the domain. Throws ConstraintIsNotApplicableForTypeException for a value of a kind
    /// that the constraint cannot check.
    virtual bool IsValid(const Core::Property& value) const = 0;
    /// Moves an invalid value into the domain, in place; the value keeps its name. False when that cannot be done: the
    /// value is then as it was.
    virtual bool CorrectValue(Core::Property& value) const = 0;
    /// A text that explains the rule for the setting of that name; empty when the domain speaks for itself.
    virtual std::string GetDescription(const std::string& settingName) const = 0;
};

}  // namespace Kestro::Conf
