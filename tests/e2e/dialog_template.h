#pragma once

// Parses a dialog resource without creating a dialog from it.

#include <windows.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lunara::test {

struct TemplateItem {
    DWORD id;  // 0xFFFFFFFF for controls without an id of their own
    DWORD style;
    RECT place;  // dialog units
    std::wstring windowClass;
    std::wstring text;  // "#101" for a resource given by its number
};

struct DialogTemplate {
    DWORD style;
    std::wstring title;
    std::vector<TemplateItem> items;
};

/// Parses a template of the extended kind (DIALOGEX). Nothing for another kind, or when the bytes
/// end before the last item does.
std::optional<DialogTemplate> ReadDialogTemplate(std::span<const BYTE> bytes);

}  // namespace lunara::test
