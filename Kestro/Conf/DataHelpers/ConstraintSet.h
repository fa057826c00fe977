#pragma once

#include <boost/rational.hpp>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "Kestro/Conf/IPropertyConstraint.h"
#include "Kestro/RefCounted.h"

namespace Kestro::Conf {

/// One of a list of values, each with a name to show. The order is the caller's and duplicates stay.
///
/// A value must be of the set's type (a rational set also reads a text); any other throws
/// ConstraintIsNotApplicableForTypeException. A number is corrected to the nearest entry (of two as near, the earlier),
/// a text to the first entry, a boolean never.
class ConstraintSet final : public RefCounted<IPropertyConstraint> {
public:
    using Entries = std::vector<std::pair<std::string, Core::Property>>;
    template <class T>
    using Named = std::vector<std::pair<std::string, T>>;

    /// (name to show, value)
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(const Named<double>& values);
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(const Named<std::string>& values);
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(
        const Named<boost::rational<int64_t>>& values);
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(const Named<int64_t>& values);
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(const Named<bool>& values);
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(PropertyTypes type,
                                                                                   const Entries& entries);
    /// Each child of the list is an entry, and its name is the name to show.
    KESTRO_DATAHELPERS_API static boost::intrusive_ptr<IPropertyConstraint> Create(PropertyTypes type,
                                                                                   const Core::Property& list);

    /// Every entry in order, then the end.
    void FillValueList(const boost::intrusive_ptr<IConstraintConsumer>& consumer) const override;
    bool IsValid(const Core::Property& value) const override;
    bool CorrectValue(Core::Property& value) const override;
    /// "Parameter … must be one of the following values: …" in the user's language.
    std::string GetDescription(const std::string& settingName) const override;

private:
    ConstraintSet(PropertyTypes type, Entries entries);

    /// Whether a value that is not of the set's type is a text that the set reads and accepts.
    bool IsValidText(const Core::Property& value) const;
    double Distance(const Core::Property& entry, const Core::Property& value) const;

    PropertyTypes type_;
    Entries entries_;
};

}  // namespace Kestro::Conf
