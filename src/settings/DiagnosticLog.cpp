#include "settings/DiagnosticLog.hpp"

#include <utility>

#include <boost/log/sources/record_ostream.hpp>

#include "environment/PathAndText.hpp"

namespace reference::docparser {
namespace {

// Boost.Log's conversion to narrow text never ends on a high surrogate at the end of a text, and
// throws on any other lone surrogate.
std::u16string makeWellFormed(const std::u16string& text) {
    return fl::i18n::from_utf8(fl::i18n::to_string(text));
}

} // namespace

void logRecord(std::uint32_t severity, const char* message, const std::u16string& argument) {
    if (!docParserLogger.isEnabled(severity))
        return;
    boost::log::record record = docParserLogger.open_record(severity);
    if (!record)
        return;
    boost::log::record_ostream stream(record);
    stream << message << makeWellFormed(argument);
    stream.flush();
    docParserLogger.push_record(std::move(record));
}

} // namespace reference::docparser
