#include "support/LogCapture.hpp"

#include <boost/log/attributes/value_extraction.hpp>
#include <boost/log/core/core.hpp>
#include <boost/log/core/record_view.hpp>
#include <boost/log/sinks/basic_sink_backend.hpp>
#include <boost/log/sinks/sync_frontend.hpp>
#include <boost/smart_ptr/make_shared.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>

namespace testsupport {

namespace {

template <typename T>
T attributeOf(const boost::log::record_view& record, const char* name) {
    return boost::log::extract_or_default<T>(name, record, T());
}

} // namespace

std::ostream& operator<<(std::ostream& out, const LogRecord& record) {
    return out << record.channel << '/' << record.severity << ": " << record.message;
}

class LogCapture::Backend
    : public boost::log::sinks::basic_sink_backend<boost::log::sinks::synchronized_feeding> {
public:
    void consume(const boost::log::record_view& record) {
        records.push_back({attributeOf<std::string>(record, "Message"),
                           attributeOf<std::string>(record, "Channel"),
                           attributeOf<int>(record, "Severity")});
    }

    std::vector<LogRecord> records;
};

class LogCapture::Sink {
public:
    Sink() { boost::log::core::get()->add_sink(frontend_); }
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    ~Sink() { boost::log::core::get()->remove_sink(frontend_); }

    // The pointer that locked_backend() returns keeps other threads out as long as it lives.
    auto backend() const { return frontend_->locked_backend(); }

private:
    using Frontend = boost::log::sinks::synchronous_sink<Backend>;
    boost::shared_ptr<Frontend> frontend_ = boost::make_shared<Frontend>();
};

LogCapture::LogCapture() : sink_(std::make_shared<Sink>()) {}

LogCapture::~LogCapture() = default;

std::vector<LogRecord> LogCapture::records() const {
    return sink_->backend()->records;
}

std::vector<std::string> LogCapture::messages() const {
    std::vector<std::string> messages;
    for (const LogRecord& record : records())
        messages.push_back(record.message);
    return messages;
}

void LogCapture::clear() {
    sink_->backend()->records.clear();
}

} // namespace testsupport
