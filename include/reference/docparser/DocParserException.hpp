#pragma once

#include "environment/Diagnostics.hpp"
#include "reference/docparser/Export.hpp"

namespace reference::docparser {

/// The library's one exception: a resource document lacks a required member, or one of its values
/// has another JSON kind than the format says. It carries no message and no location; callers
/// distinguish failures by what they called. It is not a `std::exception`: catch it as itself or as
/// `foundation::core::except::IException`.
///
/// Copies share the Boost.Exception error info that a caller may attach.
class DOCPARSER_API DocParserException : public foundation::core::except::IInternalException {
public:
    /// A new exception, without error info.
    DocParserException();
    /// Shares the error info of the other.
    DocParserException(const DocParserException&);
    /// Shares the error info of the other.
    DocParserException& operator=(const DocParserException&);

    /// A new copy on the heap, which the caller deletes.
    const boost::exception_detail::clone_base* clone() const override;

    /// Throws a copy of this exception.
    [[noreturn]] void rethrow() const override;

    ~DocParserException() noexcept override;

    /// Always "resource::docparser::DocParserException".
    const char* what() const noexcept override;
};

} // namespace reference::docparser
