#pragma once

#include <stdexcept>
#include <string>

#include <zip.h>

namespace opc::zippackage {

/// Where libzip puts the reason of a failure.
class ZipError {
public:
    ZipError() noexcept { zip_error_init(&error_); }
    ZipError(const ZipError&) = delete;
    ZipError& operator=(const ZipError&) = delete;
    ~ZipError() { zip_error_fini(&error_); }

    zip_error_t* get() noexcept { return &error_; }

private:
    zip_error_t error_;
};

[[noreturn]] inline void throwBroken(const std::string& reason) {
    throw std::runtime_error("zip package: " + reason);
}

} // namespace opc::zippackage
