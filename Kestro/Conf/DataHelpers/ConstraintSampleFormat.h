#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/Conf/SampleFormats.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// One of a list of sample formats, by name (SampleFmtRecord).
///
/// A format that is not listed is corrected to its planar or packed counterpart if that is listed, else to the listed
/// format with the nearest sample size. Of two as near, a planar value prefers the packed one and a packed value the
/// planar one; otherwise the earlier is taken.
class ConstraintSampleFormat final : public RefCounted<IPropertyConstraint> {
public:
    /// (format, its name)
    using Formats = std::vector<std::pair<SampleFormats, std::string>>;

    explicit ConstraintSampleFormat(Formats formats);

    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override;
    /// A value that is no text throws; a name that no SampleFmtRecord knows is invalid.
    bool IsValid(const Core::Property& value) const override;
    /// False for a name that no SampleFmtRecord knows.
    bool CorrectValue(Core::Property& value) const override;
    /// Empty.
    std::string GetDescription(const std::string& settingName) const override;

private:
    bool IsListed(SampleFormats format) const;

    Formats formats_;
};

}  // namespace Kestro::Conf
