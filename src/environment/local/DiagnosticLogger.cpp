#include "environment/Diagnostics.hpp"

#include <cstdlib>
#include <mutex>
#include <unordered_map>
#include <utility>

#include <boost/log/attributes/attribute_set.hpp>
#include <boost/log/attributes/constant.hpp>
#include <boost/log/core/core.hpp>

#include "environment/PathAndText.hpp"

namespace foundation::core::except {

IException::~IException() noexcept = default;

std::u16string IException::convert_str(const std::u16string& text) const {
    return text;
}

std::u16string IException::convert_str(const std::string& text) const {
    return fl::i18n::from_utf8(text);
}

std::u16string IException::ToUstringImpl() const {
    return convert_str(std::string(what()));
}

IInternalException::~IInternalException() noexcept = default;

} // namespace foundation::core::except

namespace foundation::log {

namespace {

using SeverityMask = std::atomic<std::uint32_t>;

/// The severity masks of all channels. It is never destroyed, because loggers are used until the
/// process ends.
class ChannelRegistry {
public:
    static ChannelRegistry& getInstance() {
        static auto& registry = *new ChannelRegistry();
        return registry;
    }

    std::shared_ptr<SeverityMask> getMask(const std::string& channel) {
        const std::lock_guard lock(mutex_);
        std::shared_ptr<SeverityMask>& mask = masks_[channel];
        if (!mask)
            mask = std::make_shared<SeverityMask>(kDefaultEnabledSeverities);
        return mask;
    }

private:
    std::mutex mutex_; // guards masks_
    std::unordered_map<std::string, std::shared_ptr<SeverityMask>> masks_;
};

std::atomic<bool> isLoggingOver{false};

/// Boost.Log destroys its own objects while the process ends. A handler that is registered here,
/// once they are built, runs before that: from then on there are no records.
void endLoggingBeforeBoostLog() {
    std::atexit([] { isLoggingOver.store(true, std::memory_order_relaxed); });
}

} // namespace

void setEnabledSeverities(const std::string& channel, std::uint32_t mask) {
    ChannelRegistry::getInstance().getMask(channel)->store(mask, std::memory_order_relaxed);
}

/// Makes a logger's records.
class basic_diagnostic_logger<char>::Source {
public:
    explicit Source(const std::string& channel) {
        attributes_.insert("Channel", boost::log::attributes::constant<std::string>(channel));
        [[maybe_unused]] static const bool isRegistered = (endLoggingBeforeBoostLog(), true);
    }

    // Each record has a set of attributes of its own, because no lock may be held here: the core
    // runs the host's filters, which may log themselves.
    boost::log::record openRecord(std::uint32_t severity) const {
        if (isLoggingOver.load(std::memory_order_relaxed) || !core_->get_logging_enabled())
            return {};
        boost::log::attribute_set attributes = attributes_;
        attributes.insert("Severity",
                          boost::log::attributes::constant<int>(static_cast<int>(severity)));
        return core_->open_record(attributes);
    }

    void pushRecord(boost::log::record&& record) const {
        core_->push_record(std::move(record));
        // The first record has built what the constructor did not build.
        [[maybe_unused]] static const bool isRegistered = (endLoggingBeforeBoostLog(), true);
    }

private:
    boost::log::core_ptr core_ = boost::log::core::get();
    boost::log::attribute_set attributes_; // of every record
};

basic_diagnostic_logger<char>::basic_diagnostic_logger(const std::string& channel)
    : enabledSeverities_(ChannelRegistry::getInstance().getMask(channel)),
      source_(std::make_unique<Source>(channel)) {}

basic_diagnostic_logger<char>::~basic_diagnostic_logger() = default;

boost::log::record basic_diagnostic_logger<char>::open_record(std::uint32_t severity) {
    return source_->openRecord(severity);
}

void basic_diagnostic_logger<char>::push_record(boost::log::record&& record) {
    source_->pushRecord(std::move(record));
}

} // namespace foundation::log
