#pragma once

#include <cstddef>

/// Intercepts the system calls by which the program reads files and folders. Only a
/// program that is linked with FaultyCalls.cpp has its calls watched.
namespace testsupport {

enum class CallFault {
    Error,     ///< EIO
    Interrupt, ///< EINTR, of opening and reading only
    Short,     ///< half of what is asked for, of reading only
    Leased,    ///< EWOULDBLOCK, of opening files only
};

/// While it lives, one call of its thread fails: the one after the first `succeeding` of those
/// that can fail so. Not to be nested.
class FaultyCall {
public:
    FaultyCall(std::size_t succeeding, CallFault fault) noexcept;
    FaultyCall(const FaultyCall&) = delete;
    FaultyCall& operator=(const FaultyCall&) = delete;
    ~FaultyCall();

    /// The name of the call that failed, or null.
    const char* name() const noexcept;
};

/// How many times the program has closed what was not open.
std::size_t closesOfNothing() noexcept;

} // namespace testsupport
