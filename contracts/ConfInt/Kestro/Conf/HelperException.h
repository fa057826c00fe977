#pragma once

#include "Kestro/Conf/ConfException.h"

namespace Kestro::Conf {

/// A helper was not found, or cannot do what was asked of it.
class KESTRO_CONFINT_API HelperException : public ConfException {
public:
    /// A registry type (or filter class id) that has no table.
    using TagClassIsNotFound = boost::error_info<struct TagClassIsNotFoundTag, std::string>;
    /// The registry type whose table was found.
    using TagClassIsFound = boost::error_info<struct TagClassIsFoundTag, std::string>;
    /// The helper name that is missing from that table.
    using TagTypeIsNotFound = boost::error_info<struct TagTypeIsNotFoundTag, std::string>;

    /// The tag of the setting whose value a helper cannot correct.
    using TagSetting = boost::error_info<struct TagSettingTag, std::string>;

    HelperException();
    HelperException(const HelperException&);
    HelperException& operator=(const HelperException&);
    ~HelperException() noexcept override;
};

}  // namespace Kestro::Conf
