#include "Kestro/Exception.h"

namespace Kestro {

Exception::Exception() = default;
Exception::Exception(const Exception&) = default;
Exception& Exception::operator=(const Exception&) = default;
Exception::~Exception() noexcept = default;

const char* Exception::what() const noexcept {
    const std::string* description = boost::get_error_info<TagDescription>(*this);
    return description != nullptr ? description->c_str() : "Kestro exception";
}

}  // namespace Kestro
