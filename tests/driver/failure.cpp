#include "tests/driver/failure.h"

#include <cstdio>

namespace lunara::test {
namespace {

void PrintFailure(const std::string& what) { std::fprintf(stderr, "FAILED: %s\n", what.c_str()); }

FailureHandler currentHandler = PrintFailure;
int failureCount = 0;

}  // namespace

void SetFailureHandler(FailureHandler handler) {
    currentHandler = handler == nullptr ? PrintFailure : handler;
}

bool ReportFailure(const std::string& what) {
    ++failureCount;
    currentHandler(what);
    return false;
}

int FailureCount() { return failureCount; }

}  // namespace lunara::test
