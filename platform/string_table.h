#pragma once

// The program's strings for code that has no resources to load them from (the native core), and for
// tests that compare them with the resources. Programs call LoadStringW.

#include <span>

#include "platform/win32.h"

namespace lunara {

struct StringResource {
    UINT id;
    const WCHAR* text;
};

/// Every string of the program, in ascending id order.
std::span<const StringResource> StringResources();

}  // namespace lunara
