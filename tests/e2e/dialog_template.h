#pragma once

// A dialog resource taken apart, without making a dialog of it.

#include <windows.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lunara::e2e {

struct TemplateItem {
    DWORD id;  // 0xFFFFFFFF for those that nobody asks for
    DWORD style;
    RECT place;  // dialog units
    std::wstring windowClass;
    std::wstring text;  // "#101" where a resource is named by its number
};

struct DialogTemplate {
    DWORD style;
    std::wstring title;
    std::vector<TemplateItem> items;
};

/// Reads a template of the extended kind (DIALOGEX); nothing when it is another kind, or when it
/// ends before all its items do.
std::optional<DialogTemplate> ReadDialogTemplate(std::span<const BYTE> bytes);

}  // namespace lunara::e2e
