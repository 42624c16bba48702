#include "reference/docparser/DocParserException.hpp"

namespace reference::docparser {

DocParserException::DocParserException() = default;
DocParserException::DocParserException(const DocParserException&) = default;
DocParserException& DocParserException::operator=(const DocParserException&) = default;
DocParserException::~DocParserException() noexcept = default;

const boost::exception_detail::clone_base* DocParserException::clone() const {
    return new DocParserException(*this);
}

void DocParserException::rethrow() const {
    throw DocParserException(*this);
}

const char* DocParserException::what() const noexcept {
    return "resource::docparser::DocParserException";
}

} // namespace reference::docparser
