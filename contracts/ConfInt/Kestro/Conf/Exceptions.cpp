#include "Kestro/Conf/ConfException.h"
#include "Kestro/Conf/ConstraintException.h"
#include "Kestro/Conf/ConstraintIsNotApplicableForTypeException.h"
#include "Kestro/Conf/FormatException.h"
#include "Kestro/Conf/HelperException.h"

namespace Kestro::Conf {

ConfException::ConfException() = default;
ConfException::ConfException(const ConfException&) = default;
ConfException& ConfException::operator=(const ConfException&) = default;
ConfException::~ConfException() noexcept = default;

HelperException::HelperException() = default;
HelperException::HelperException(const HelperException&) = default;
HelperException& HelperException::operator=(const HelperException&) = default;
HelperException::~HelperException() noexcept = default;

ConstraintException::ConstraintException() = default;
ConstraintException::ConstraintException(const ConstraintException&) = default;
ConstraintException& ConstraintException::operator=(const ConstraintException&) = default;
ConstraintException::~ConstraintException() noexcept = default;

ConstraintIsNotApplicableForTypeException::ConstraintIsNotApplicableForTypeException() = default;
ConstraintIsNotApplicableForTypeException::ConstraintIsNotApplicableForTypeException(
    const ConstraintIsNotApplicableForTypeException&) = default;
ConstraintIsNotApplicableForTypeException& ConstraintIsNotApplicableForTypeException::operator=(
    const ConstraintIsNotApplicableForTypeException&) = default;
ConstraintIsNotApplicableForTypeException::~ConstraintIsNotApplicableForTypeException() noexcept = default;

FormatException::FormatException() = default;
FormatException::FormatException(const FormatException&) = default;
FormatException& FormatException::operator=(const FormatException&) = default;
FormatException::~FormatException() noexcept = default;

}  // namespace Kestro::Conf
