#pragma once

#include <functional>

#include <CLI/App.hpp>

#include "refdoc/host/Options.hpp"

namespace refdoc {

/// A subcommand: its declaration on the command line, and what it does once parsed.
struct Command {
    const CLI::App* declaration;
    std::function<ExitCode(const GlobalOptions&)> run;
};

} // namespace refdoc
