#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace testsupport {

struct LogRecord {
    std::string message;
    std::string channel;
    int severity;

    bool operator==(const LogRecord&) const = default;
};

std::ostream& operator<<(std::ostream& out, const LogRecord& record);

/// Keeps every record that reaches the process's log core, as long as it lives.
class LogCapture {
public:
    LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    ~LogCapture();

    /// The records so far, in the order in which they came.
    std::vector<LogRecord> records() const;
    std::vector<std::string> messages() const;
    void clear();

private:
    class Backend;
    class Sink;

    std::shared_ptr<Sink> sink_;
};

} // namespace testsupport
