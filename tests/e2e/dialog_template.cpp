#include "tests/e2e/dialog_template.h"

#include <array>
#include <cstring>

namespace lunara::test {
namespace {

constexpr WORD ExtendedVersion = 1;
constexpr WORD ExtendedSignature = 0xFFFF;
constexpr WORD OrdinalMark = 0xFFFF;  // a number follows instead of a text

/// Reads a sequence of values. Past the end every value is 0 and `IsComplete` turns false for good.
class Reader {
  public:
    explicit Reader(std::span<const BYTE> toRead) : bytes(toRead) {}

    template <typename Number>
    Number Take() {
        Number value{};
        if (bytes.size() - position < sizeof value) {
            isComplete = false;
            position = bytes.size();
            return value;
        }
        std::memcpy(&value, bytes.data() + position, sizeof value);
        position += sizeof value;
        return value;
    }

    void Skip(std::size_t count) {
        isComplete = isComplete && count <= bytes.size() - position;
        position = isComplete ? position + count : bytes.size();
    }

    /// Skips to the next multiple of four, where an item begins.
    void Align() { Skip(((position + 3) & ~std::size_t{3}) - position); }

    /// A text ended by 0; "#N" for a number in place of a text.
    std::wstring TakeText() {
        std::wstring text;
        for (WORD unit = Take<WORD>(); unit != 0; unit = Take<WORD>()) {
            if (unit == OrdinalMark && text.empty()) {
                return L"#" + std::to_wstring(Take<WORD>());
            }
            text.push_back(static_cast<WCHAR>(unit));
        }
        return text;
    }

    RECT TakePlace() {
        const int left = Take<short>();
        const int top = Take<short>();
        const int width = Take<short>();
        const int height = Take<short>();
        return {left, top, left + width, top + height};
    }

    bool IsComplete() const { return isComplete; }

  private:
    std::span<const BYTE> bytes;
    std::size_t position = 0;
    bool isComplete = true;
};

/// The name of a class; the dialog manager's predefined ones are given by number.
std::wstring ClassName(const std::wstring& name) {
    constexpr std::array<const WCHAR*, 6> Known = {L"Button",  L"Edit",      L"Static",
                                                   L"ListBox", L"ScrollBar", L"ComboBox"};
    constexpr int FirstKnown = 0x80;
    if (name.empty() || name.front() != '#') {
        return name;
    }
    const auto index = static_cast<std::size_t>(std::stoi(name.substr(1)) - FirstKnown);
    return index < Known.size() ? Known[index] : name;
}

TemplateItem TakeItem(Reader& reader) {
    TemplateItem item{};
    reader.Align();
    reader.Skip(2 * sizeof(DWORD));  // help id, extended style
    item.style = reader.Take<DWORD>();
    item.place = reader.TakePlace();
    item.id = reader.Take<DWORD>();
    item.windowClass = ClassName(reader.TakeText());
    item.text = reader.TakeText();
    reader.Skip(reader.Take<WORD>());  // creation data
    return item;
}

}  // namespace

std::optional<DialogTemplate> ReadDialogTemplate(std::span<const BYTE> bytes) {
    Reader reader(bytes);
    if (reader.Take<WORD>() != ExtendedVersion || reader.Take<WORD>() != ExtendedSignature) {
        return std::nullopt;
    }
    DialogTemplate dialog{};
    reader.Skip(2 * sizeof(DWORD));  // help id, extended style
    dialog.style = reader.Take<DWORD>();
    const WORD count = reader.Take<WORD>();
    reader.TakePlace();
    reader.TakeText();  // menu
    reader.TakeText();  // class
    dialog.title = reader.TakeText();
    if ((dialog.style & DS_SETFONT) != 0) {
        reader.Skip(3 * sizeof(WORD));  // size, weight, italic and character set
        reader.TakeText();              // face
    }
    for (WORD i = 0; i < count; ++i) {
        dialog.items.push_back(TakeItem(reader));
    }
    return reader.IsComplete() ? std::optional(dialog) : std::nullopt;
}

}  // namespace lunara::test
