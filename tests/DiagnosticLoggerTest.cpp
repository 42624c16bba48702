#include "environment/Diagnostics.hpp"

#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <boost/log/attributes/attribute_value_set.hpp>
#include <boost/log/core/core.hpp>
#include <boost/log/sources/record_ostream.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/LogCapture.hpp"

namespace {

using foundation::log::kSeverityDetail;
using foundation::log::kSeverityProblem;
using foundation::log::setEnabledSeverities;
using testing::ElementsAre;
using testsupport::LogCapture;
using testsupport::LogRecord;
using Logger = foundation::log::basic_diagnostic_logger<char>;

bool emit(Logger& logger, std::uint32_t severity, const std::string& message) {
    boost::log::record record = logger.open_record(severity);
    if (!record)
        return false;
    boost::log::record_ostream stream(record);
    stream << message;
    stream.flush();
    logger.push_record(std::move(record));
    return true;
}

TEST(DiagnosticLogger, RecordsCarryChannelSeverityAndMessage) {
    const LogCapture capture;
    Logger first("test::first");
    Logger second("test::second");
    EXPECT_TRUE(emit(first, kSeverityProblem, "one"));
    EXPECT_TRUE(emit(second, kSeverityDetail, "two"));
    EXPECT_TRUE(emit(first, kSeverityDetail, "three"));
    EXPECT_THAT(capture.records(), ElementsAre(LogRecord{"one", "test::first", 512},
                                               LogRecord{"two", "test::second", 16},
                                               LogRecord{"three", "test::first", 16}));
}

TEST(DiagnosticLogger, MaskHoldsForTheChannelsLiveAndLaterLoggers) {
    Logger live("test::mask");
    Logger other("test::other");
    EXPECT_TRUE(live.isEnabled(kSeverityProblem));
    EXPECT_FALSE(live.isEnabled(kSeverityDetail));
    setEnabledSeverities("test::mask", kSeverityDetail);
    const Logger later("test::mask");
    for (const Logger* logger : {&std::as_const(live), &later}) {
        EXPECT_FALSE(logger->isEnabled(kSeverityProblem));
        EXPECT_TRUE(logger->isEnabled(kSeverityDetail));
    }
    EXPECT_TRUE(other.isEnabled(kSeverityProblem));
    setEnabledSeverities("test::mask", foundation::log::kDefaultEnabledSeverities);
}

TEST(DiagnosticLogger, EveryThreadsRecordHasItsOwnSeverity) {
    constexpr int kRecords = 500;
    const LogCapture capture;
    Logger logger("test::threads");
    {
        std::vector<std::jthread> threads;
        for (const std::uint32_t severity : {kSeverityDetail, kSeverityProblem, 1U, 2U})
            threads.emplace_back([&logger, severity] {
                for (int record = 0; record < kRecords; ++record) {
                    emit(logger, severity, std::to_string(severity));
                    setEnabledSeverities("test::threads", severity);
                    static_cast<void>(logger.isEnabled(severity));
                }
            });
    }
    const std::vector<LogRecord> records = capture.records();
    EXPECT_EQ(records.size(), 4U * kRecords);
    for (const LogRecord& record : records)
        ASSERT_EQ(record.message, std::to_string(record.severity));
}

/// A filter of the host that logs, while a record is being opened.
TEST(DiagnosticLogger, AFilterMayLog) {
    const LogCapture capture;
    Logger logger("test::filter");
    const auto core = boost::log::core::get();
    bool isNested = false;
    core->set_filter([&](const boost::log::attribute_value_set&) {
        return std::exchange(isNested, true) || emit(logger, kSeverityDetail, "inner");
    });
    EXPECT_TRUE(emit(logger, kSeverityProblem, "outer"));
    core->reset_filter();
    EXPECT_THAT(capture.records(), ElementsAre(LogRecord{"inner", "test::filter", 16},
                                               LogRecord{"outer", "test::filter", 512}));
}

} // namespace
