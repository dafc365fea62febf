#pragma once

// How the driver reports that a run cannot go on. The driver knows no test framework: each program
// that links it installs a handler at its start. The end-to-end tests install one that fails the
// current test; the tour keeps the default, which prints, and turns the count into its exit code.

#include <string>

namespace lunara::test {

/// Receives one failure: what was waited for and what was found instead, UTF-8, without a newline.
using FailureHandler = void (*)(const std::string& what);

/// Replaces the handler of this process. Null restores the default, which prints to stderr.
void SetFailureHandler(FailureHandler handler);

/// Counts the failure and hands it to the handler. Always false, so that a function that answers
/// whether it succeeded can end with `return ReportFailure(...)`.
bool ReportFailure(const std::string& what);

/// How many failures this process has reported so far.
int FailureCount();

}  // namespace lunara::test
