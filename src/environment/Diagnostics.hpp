#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include <boost/exception/exception.hpp>
#include <boost/log/core/record.hpp>

#pragma GCC visibility push(default)

namespace foundation::core::except {

/// The environment's exception base: cloneable, able to carry Boost.Exception error info, and
/// deliberately not a `std::exception`, so that only handlers that know it catch it.
class IException : public boost::exception_detail::clone_base, public boost::exception {
public:
    ~IException() noexcept override;

    /// A NUL-terminated text that stays valid as long as the exception.
    virtual const char* what() const noexcept = 0;
    /// `text` as a message of this exception: unchanged here.
    virtual std::u16string convert_str(const std::u16string& text) const;
    /// `text`, which is UTF-8, as a message of this exception; malformed bytes become U+FFFD.
    virtual std::u16string convert_str(const std::string& text) const;
    /// `what()` as UTF-16.
    virtual std::u16string ToUstringImpl() const;

protected:
    /// For derived classes.
    IException() = default;
    /// Copies share the error info.
    IException(const IException&) = default;
    /// Copies share the error info.
    IException& operator=(const IException&) = default;
};

/// The base of failures that do not leave the environment's own components.
class IInternalException : public IException {
public:
    ~IInternalException() noexcept override;

protected:
    /// For derived classes.
    IInternalException() = default;
    /// Copies share the error info.
    IInternalException(const IInternalException&) = default;
    /// Copies share the error info.
    IInternalException& operator=(const IInternalException&) = default;
};

} // namespace foundation::core::except

namespace foundation::log {

/// The severity of normal events. Severity codes are single bits of a logger's mask.
inline constexpr std::uint32_t kSeverityDetail = 16;
/// The severity of problems that a person should look at.
inline constexpr std::uint32_t kSeverityProblem = 512;

/// The mask of a channel until `setEnabledSeverities` sets another.
inline constexpr std::uint32_t kDefaultEnabledSeverities = kSeverityProblem;

/// Sets the mask of enabled severity codes of all loggers of `channel`, those that exist and
/// those still to come. Any thread may call it at any time.
void setEnabledSeverities(const std::string& channel, std::uint32_t mask);

/// Only the form for `char` exists.
template <typename CharT>
class basic_diagnostic_logger;

/// A severity logger of one channel on the process's Boost.Log core. Its records carry the
/// attributes "Channel" (`std::string`) and "Severity" (`int`). Any thread may use it.
template <>
class basic_diagnostic_logger<char> {
public:
    /// A logger of `channel`, which follows the channel's mask.
    explicit basic_diagnostic_logger(const std::string& channel);
    /// Loggers cannot be copied.
    basic_diagnostic_logger(const basic_diagnostic_logger&) = delete;
    /// Loggers cannot be assigned.
    basic_diagnostic_logger& operator=(const basic_diagnostic_logger&) = delete;
    ~basic_diagnostic_logger();

    /// The mask test alone: nothing is locked.
    bool isEnabled(std::uint32_t severity) const noexcept {
        return (enabledSeverities_->load(std::memory_order_relaxed) & severity) != 0;
    }

    /// Asks the core for a record; an empty one when logging is disabled or the core's filters
    /// reject it, and when the process ends and Boost.Log is about to destroy its own objects.
    /// Nothing is locked while the filters run: they may log, and call whatever logs.
    boost::log::record open_record(std::uint32_t severity);

    /// Hands a record that `open_record` gave, and that is not empty, to the core's sinks.
    void push_record(boost::log::record&& record);

private:
    class [[gnu::visibility("hidden")]] Source;

    std::shared_ptr<const std::atomic<std::uint32_t>> enabledSeverities_;
    std::unique_ptr<Source> source_;
};

} // namespace foundation::log

#pragma GCC visibility pop
