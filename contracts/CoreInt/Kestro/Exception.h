#pragma once

#include <boost/exception/diagnostic_information.hpp>
#include <boost/exception/exception.hpp>
#include <boost/exception/get_error_info.hpp>
#include <boost/exception/info.hpp>
#include <boost/throw_exception.hpp>
#include <exception>
#include <string>

#include "Kestro/Export.h"
#include "Kestro/GetCallStack.h"

namespace Kestro {

/// The message, an English sentence.
using TagDescription = boost::error_info<struct TagDescriptionTag, std::string>;
/// The offending value.
using TagDetails = boost::error_info<struct TagDetailsTag, std::string>;
/// GetCallStack() at the place of the throw.
using TagCallStack = boost::error_info<struct TagCallStackTag, std::string>;

/// Base of every exception of these libraries. What is known of the failure travels as boost::error_info: read it with
/// `boost::get_error_info<Kestro::TagDescription>(e)`, or print all of it with `boost::diagnostic_information(e)`.
class KESTRO_COREINT_API Exception : public std::exception, public boost::exception {
public:
    Exception();
    Exception(const Exception&);
    Exception& operator=(const Exception&);
    ~Exception() noexcept override;

    /// The attached TagDescription; a general text when there is none. Lives as long as the exception.
    const char* what() const noexcept override;
};

/// Attaches the call stack to a complete exception and throws it from `where`.
template <class E>
[[noreturn]] void Throw(const E& exception, const boost::source_location& where) {
    exception << TagCallStack(GetCallStack());
    boost::throw_exception(exception, where);
}

}  // namespace Kestro
