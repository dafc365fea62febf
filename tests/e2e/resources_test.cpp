// The resources of the built program: strings, menu, menu bar, keys, dialogs and pictures, read
// from the file without starting it. Numbers and texts are deliberately not taken from the
// program's own headers: one changed there by mistake must fail a test.

#include <windows.h>

// commctrl.h requires windows.h.
#include <commctrl.h>

#include <array>
#include <cstring>
#include <map>
#include <set>

#include "tests/e2e/dialog_template.h"
#include "tests/e2e/fixture.h"

namespace lunara::test {
namespace {

class Resources : public testing::Test {
  protected:
    Resources() : folder(CurrentTestName()) {
        module = ::LoadLibraryExW(folder.Program().c_str(), nullptr,
                                  LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    }
    ~Resources() override {
        if (module != nullptr) {
            ::FreeLibrary(module);
        }
    }
    Resources(const Resources&) = delete;
    Resources& operator=(const Resources&) = delete;

    void SetUp() override { ASSERT_NE(module, nullptr) << "error " << ::GetLastError(); }

    /// The bytes of a resource, valid as long as the module; empty when there is none of that id.
    std::span<const BYTE> Bytes(const WCHAR* type, WORD id) const {
        const HRSRC found = ::FindResourceW(module, MAKEINTRESOURCEW(id), type);
        const HGLOBAL loaded = found == nullptr ? nullptr : ::LoadResource(module, found);
        if (loaded == nullptr) {
            return {};
        }
        return {static_cast<const BYTE*>(::LockResource(loaded)), ::SizeofResource(module, found)};
    }

    /// The ids of all resources of a type; 0 stands for those that have names instead.
    std::set<WORD> Ids(const WCHAR* type) const {
        std::set<WORD> ids;
        ::EnumResourceNamesW(
            module, type,
            [](HMODULE, LPCWSTR, LPWSTR name, LONG_PTR kept) -> BOOL {
                reinterpret_cast<std::set<WORD>*>(kept)->insert(
                    IS_INTRESOURCE(name) ? LOWORD(reinterpret_cast<ULONG_PTR>(name)) : WORD{0});
                return TRUE;
            },
            reinterpret_cast<LONG_PTR>(&ids));
        return ids;
    }

    ProgramFolder folder;
    HMODULE module = nullptr;
};

// ---- Strings ----

// Trailing blanks and the spellings "corupted", "loose" and "meaningfull" are deliberate.
const std::map<UINT, std::wstring> Strings = {
    {1, L"Lunara"},
    // Status texts of a day
    {5, L"Cycle start. "},
    {6, L"Period len %d. Cycle len %d. "},
    {7, L"Period end. "},
    {8, L"Bleeding. "},
    {9, L"Bleeding 1st day. "},
    {10, L"Bleeding end. "},
    {11, L"Bleeding possible. "},
    {12, L"1st day bleeding possible. "},
    {13, L"Last day bleeding possible. "},
    {14, L"Ovulation. "},
    {15, L"Ovulation 1st day. "},
    {16, L"Ovulation end. "},
    {17, L"Ovulation possible. "},
    {18, L"1st day ovulation possible. "},
    {19, L"Last day ovulation possible. "},
    {20, L"Pregnancy. "},
    {21, L"Pregnancy 1st day. "},
    {22, L"Pregnancy end. "},
    {23, L"Pregnancy possible. "},
    {24, L"1st day pregnancy possible. "},
    {25, L"Last day pregnancy possible. "},
    {26, L"Pregnancy highly probable. "},
    {27, L"You may be pregnant. "},
    {28, L"Go see a doctor. "},
    {29, L"Prediction impossible! "},
    // The menu bar's drop-down
    {104, L"Tools"},
    // Warnings of the prediction
    {50001, L"Insufficient statistical data. "},
    {50002, L"No statistical data. "},
    {50003, L"Too few valid cycles for stable prediction. "},
    {50004, L"Too far from the last valid period start. "},
    {50005, L"Today after statistically expected cycle length. "},
    {50006, L"%d discarded period(s). %d invalid cycle(s). "},
    {50029, L"Prediction not available! "},
    {50030, L"Prediction not meaningfull! "},
    // Messages
    {57344, L"The file does not exist"},
    {57345, L"Not a valid Lunara data file"},
    {57346, L"Data file requires new version of Lunara"},
    {57347, L"Data file is corupted or wrong type"},
    {57348, L"User/Password invalid"},
    {57350, L"Bleeding entry for the period exists!"},
    {57351, L"Failed to change date!"},
    {57352, L"Failed to change value!"},
    {57353, L"Backup is done!"},
    {57354, L"Backup fails!"},
    {57355, L"Cannot create backup directory!"},
    {57356, L"Overwrite current data?"},
    {57357, L"Restore from backup and loose current data?"},
    {57358, L"There are no backups!"},
    {57359, L"Restore is done!"},
};

TEST_F(Resources, StringsAreCompleteAndThereAreNoOthers) {
    std::map<UINT, std::wstring> found;
    for (UINT id = 0; id <= 0xFFFF; ++id) {
        std::array<WCHAR, 512> text{};
        const int length =
            ::LoadStringW(module, id, text.data(), static_cast<int>(text.size()));  // [0, 511]
        if (length > 0) {
            found.emplace(id, std::wstring(text.data(), static_cast<std::size_t>(length)));
        }
    }
    for (const auto& [id, text] : Strings) {
        EXPECT_EQ(ToUtf8(found[id]), ToUtf8(text)) << id;
        found.erase(id);
    }
    for (const auto& [id, text] : found) {
        ADD_FAILURE() << "unexpected string " << id << ": " << ToUtf8(text);
    }
}

// ---- Menu, menu bar and keys ----

/// Appends one line for each item, indented by two blanks for each pop-up that it is in.
void DescribeMenu(HMENU menu, const std::string& indent, std::string& lines) {
    for (int i = 0; i < ::GetMenuItemCount(menu); ++i) {
        std::array<WCHAR, 128> text{};
        MENUITEMINFOW item{};
        item.cbSize = sizeof item;
        item.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_STRING;
        item.dwTypeData = text.data();
        item.cch = static_cast<UINT>(text.size());
        ::GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item);
        lines += indent;
        if ((item.fType & MFT_SEPARATOR) != 0) {
            lines += "-\n";
            continue;
        }
        lines.append("[").append(ToUtf8(text.data())).append("]");
        if (item.hSubMenu == nullptr) {
            lines.append(" ").append(std::to_string(item.wID));
        }
        lines += (item.fState & MFS_CHECKED) != 0 ? " checked" : "";
        lines += (item.fState & MFS_DISABLED) != 0 ? " disabled" : "";
        lines += "\n";
        if (item.hSubMenu != nullptr) {
            DescribeMenu(item.hSubMenu, indent + "  ", lines);
        }
    }
}

TEST_F(Resources, MenuHoldsEveryCommandInOrder) {
    EXPECT_EQ(Ids(RT_MENU), std::set<WORD>{102});
    const HMENU menu = ::LoadMenuW(module, MAKEINTRESOURCEW(102));
    std::string lines;
    DescribeMenu(menu, "", lines);
    ::DestroyMenu(menu);
    EXPECT_EQ(lines,
              "[Tools]\n"
              "  [About] 40003\n"
              "  [Help] 50033\n"
              "  -\n"
              "  [Backup ] 50042\n"
              "  [Restore] 50043\n"
              "  -\n"
              "  [View Diary] 40005 checked\n"
              "  [View Graph] 40006\n"
              "  -\n"
              "  [Options]\n"
              "    [Show Notes] 50032\n"
              "    [Show Bleeding] 40007\n"
              "    [Show Period] 40008\n"
              "    [Show Ovulation] 40009\n"
              "    [Show Pregnancy] 40010\n"
              "    [Show Temperature] 40011\n"
              "  [History...] 50035\n"
              "  [Change Password...] 50030\n"
              "  -\n"
              "  [Exit] 50034\n");
}

TEST_F(Resources, MenuBarHasADropDownAndSixCheckButtons) {
    EXPECT_EQ(Ids(RT_RCDATA), std::set<WORD>{102});
    const std::span<const BYTE> bytes = Bytes(RT_RCDATA, 102);
    std::vector<WORD> words(bytes.size() / sizeof(WORD));
    std::memcpy(words.data(), bytes.data(), words.size() * sizeof(WORD));
    constexpr WORD NoImage = 0xFFFF;
    constexpr WORD DropDown = 1;
    constexpr WORD Check = 2;
    EXPECT_EQ(words, (std::vector<WORD>{
                         102,      7,  // menu, buttons
                         NoImage,  104,
                         DropDown, 104,  // image, command, kind, text
                         0,        CommandShowNotes,
                         Check,    0,  //
                         1,        CommandShowBleeding,
                         Check,    0,  //
                         2,        CommandShowPeriod,
                         Check,    0,  //
                         3,        CommandShowOvulation,
                         Check,    0,  //
                         4,        CommandShowPregnancy,
                         Check,    0,  //
                         5,        CommandShowTemperature,
                         Check,    0,  //
                     }));
}

TEST_F(Resources, KeysAreAboutAndExit) {
    EXPECT_EQ(Ids(RT_ACCELERATOR), std::set<WORD>{3});
    const HACCEL table = ::LoadAcceleratorsW(module, MAKEINTRESOURCEW(3));
    ASSERT_NE(table, nullptr);
    std::array<ACCEL, 8> keys{};
    const int count = ::CopyAcceleratorTableW(table, keys.data(), static_cast<int>(keys.size()));
    ::DestroyAcceleratorTable(table);
    ASSERT_EQ(count, 2);
    constexpr int Meaning = FVIRTKEY | FCONTROL | FSHIFT | FALT;
    EXPECT_EQ(keys[0].fVirt & Meaning, FVIRTKEY | FCONTROL);
    EXPECT_EQ(keys[0].key, 'A');
    EXPECT_EQ(keys[0].cmd, CommandAbout);
    EXPECT_EQ(keys[1].fVirt & Meaning, FVIRTKEY | FCONTROL);
    EXPECT_EQ(keys[1].key, 'Q');
    EXPECT_EQ(keys[1].cmd, IDOK);
}

// ---- Dialogs ----

struct Item {
    DWORD id;
    const WCHAR* windowClass;
    const WCHAR* text;
    DWORD style = 0;           // bits that must be set
    DWORD without = 0;         // bits that must not be set
    const WCHAR* label = L"";  // text right above the control; empty for none
};

struct Dialog {
    const char* label;
    WORD id;
    const WCHAR* title;
    std::vector<Item> items;
    std::size_t ownStatics = 0;  // number of pictures and texts that are no labels
};

constexpr WCHAR Button[] = L"Button";
constexpr WCHAR Edit[] = L"Edit";
constexpr WCHAR DatePicker[] = L"SysDateTimePick32";
constexpr WCHAR UpDown[] = L"msctls_updown32";

const std::vector<Dialog> Dialogs = {
    {"About", 103, L"About Lunara", {{1, Button, L"OK", BS_DEFPUSHBUTTON}}, 4},
    {"Login",
     108,
     L"Login user",
     {{1002, Edit, L"", 0, ES_PASSWORD, L"User name:"},
      {1003, Edit, L"", ES_PASSWORD, 0, L"Password:"},
      {1, Button, L"OK", BS_DEFPUSHBUTTON},
      {2, Button, L"Cancel"}}},
    {"Change password",
     109,
     L"Change password",
     {{1006, Edit, L"", ES_PASSWORD, 0, L"Old password:"},
      {1003, Edit, L"", ES_PASSWORD, 0, L"New password:"},
      {1004, Edit, L"", ES_PASSWORD, 0, L"Confirm new password:"},
      {1, Button, L"OK", BS_DEFPUSHBUTTON},
      {2, Button, L"Cancel"}}},
    {"Notes",
     113,
     L"Notes",
     {{1018, L"Static", L"Mon Jan, 01"},
      {1014, Button, L"Cramps", BS_AUTOCHECKBOX},
      {1015, Button, L"PMS", BS_AUTOCHECKBOX},
      {1016, Edit, L"", ES_MULTILINE, ES_READONLY},
      {1, Button, L"OK", BS_DEFPUSHBUTTON},
      {2, Button, L"Cancel"}}},
    {"History",
     117,
     L"Menstrual Period History",
     {{1019, DatePicker, L"", 0, DTS_UPDOWN | DTS_SHOWNONE, L"Start date:"},
      {1020, DatePicker, L"", 0, DTS_UPDOWN | DTS_SHOWNONE, L"End date:"},
      {1016, Edit, L"", 0, ES_PASSWORD | ES_MULTILINE, L"Period length:"},
      // Without UDS_SETBUDDYINT: the program writes the fields itself, because one shows words.
      {1021, UpDown, L"", UDS_AUTOBUDDY, UDS_SETBUDDYINT},
      {1017, Edit, L"", 0, ES_PASSWORD | ES_MULTILINE, L"Bleeding:"},
      {1022, UpDown, L"", UDS_AUTOBUDDY, UDS_SETBUDDYINT},
      {1, Button, L"Add", BS_DEFPUSHBUTTON},
      {2, Button, L"Close"}}},
    {"Backup",
     121,
     L"Backup",
     {{1016, Edit, L"", 0, ES_PASSWORD | ES_MULTILINE, L"Select name for backup:"},
      {1024, Button, L"Save current changes before backup", BS_AUTOCHECKBOX},
      {1, Button, L"Backup now", BS_DEFPUSHBUTTON},
      {2, Button, L"Cancel"}}},
    {"Restore",
     122,
     L"Restore",
     {{1023, L"ComboBox", L"", CBS_DROPDOWNLIST | CBS_SORT, 0, L"Select name of backup:"},
      {1025, Button, L"Delete\nCurrent", BS_MULTILINE},
      {1026, Button, L"Start Lunara after restore", BS_AUTOCHECKBOX, WS_VISIBLE},
      {1, Button, L"Restore", BS_DEFPUSHBUTTON},
      {2, Button, L"Cancel"}}},
};

/// Compares without regard to case: class names have none, and the resource compiler changes it.
bool IsOfClass(const TemplateItem& item, const WCHAR* windowClass) {
    return ::lstrcmpiW(item.windowClass.c_str(), windowClass) == 0;
}

/// The bits that hold the kind of a button or combo box, which is a number and not a set of bits. 0
/// for other controls.
DWORD KindMask(const TemplateItem& item) {
    if (IsOfClass(item, Button)) {
        return BS_TYPEMASK;
    }
    return IsOfClass(item, L"ComboBox") ? CBS_SIMPLE | CBS_DROPDOWN | CBS_DROPDOWNLIST : 0;
}

const TemplateItem* Find(const DialogTemplate& dialog, const Item& wanted) {
    const auto match = std::find_if(dialog.items.begin(), dialog.items.end(),
                                    [&](const TemplateItem& item) { return item.id == wanted.id; });
    return match == dialog.items.end() ? nullptr : &*match;
}

/// Whether a static text with these words stands right above the control.
bool HasLabelAbove(const DialogTemplate& dialog, const TemplateItem& control,
                   const std::wstring& words) {
    return std::any_of(dialog.items.begin(), dialog.items.end(), [&](const TemplateItem& item) {
        return IsOfClass(item, L"Static") && item.text == words &&
               item.place.left == control.place.left && item.place.bottom <= control.place.top &&
               control.place.top - item.place.bottom < item.place.bottom - item.place.top;
    });
}

void ExpectItem(const DialogTemplate& dialog, const Item& wanted) {
    SCOPED_TRACE(wanted.id);
    const TemplateItem* item = Find(dialog, wanted);
    ASSERT_NE(item, nullptr);
    EXPECT_TRUE(IsOfClass(*item, wanted.windowClass)) << ToUtf8(item->windowClass);
    EXPECT_EQ(ToUtf8(item->text), ToUtf8(wanted.text));
    const DWORD kind = KindMask(*item);
    EXPECT_EQ(item->style & (kind | wanted.style), wanted.style) << std::hex << item->style;
    EXPECT_EQ(item->style & wanted.without, 0u) << std::hex << item->style;
    if ((wanted.without & WS_VISIBLE) == 0) {
        EXPECT_NE(item->style & WS_VISIBLE, 0u);
    }
    if (*wanted.label != 0) {
        EXPECT_TRUE(HasLabelAbove(dialog, *item, wanted.label)) << ToUtf8(wanted.label);
    }
}

TEST_F(Resources, DialogsHaveTheirControls) {
    std::set<WORD> ids;
    for (const Dialog& wanted : Dialogs) {
        SCOPED_TRACE(wanted.label);
        ids.insert(wanted.id);
        const auto dialog = ReadDialogTemplate(Bytes(RT_DIALOG, wanted.id));
        if (!dialog) {
            ADD_FAILURE() << "there is no such dialog";
            continue;
        }
        EXPECT_EQ(ToUtf8(dialog->title), ToUtf8(wanted.title));
        // No caption: the full-screen sheet shows the title itself.
        EXPECT_EQ(dialog->style & WS_CAPTION, 0u);
        std::size_t count = wanted.ownStatics;
        for (const Item& item : wanted.items) {
            ExpectItem(*dialog, item);
            count += *item.label != 0 ? 2 : 1;
        }
        EXPECT_EQ(dialog->items.size(), count);
    }
    EXPECT_EQ(Ids(RT_DIALOG), ids);
}

/// With UDS_AUTOBUDDY an up-down control belongs to the control before it in the z-order, which is
/// the order of the template.
TEST_F(Resources, UpDownsFollowTheirEdits) {
    const auto dialog = ReadDialogTemplate(Bytes(RT_DIALOG, 117));
    ASSERT_TRUE(dialog);
    std::vector<DWORD> order;
    for (const TemplateItem& item : dialog->items) {
        if (IsOfClass(item, Edit) || IsOfClass(item, UpDown)) {
            order.push_back(item.id);
        }
    }
    EXPECT_EQ(order, (std::vector<DWORD>{1016, 1021, 1017, 1022}));
}

// ---- Pictures ----

TEST_F(Resources, PicturesAreThereWithUsableSizes) {
    EXPECT_EQ(Ids(RT_BITMAP), (std::set<WORD>{105, 106, 107, 112, 116, 120}));
    std::map<WORD, SIZE> sizes;
    for (const WORD id : Ids(RT_BITMAP)) {
        BITMAPINFOHEADER header{};
        const std::span<const BYTE> bytes = Bytes(RT_BITMAP, id);
        ASSERT_GE(bytes.size(), sizeof header) << id;
        std::memcpy(&header, bytes.data(), sizeof header);
        EXPECT_GT(header.biWidth, 0) << id;
        EXPECT_GT(header.biHeight, 0) << id;
        sizes[id] = {header.biWidth, header.biHeight};
    }
    EXPECT_EQ(sizes[120].cx, 6 * sizes[120].cy) << "six square images beside each other";
    for (const WORD mark : {WORD{107}, WORD{112}, WORD{116}}) {
        EXPECT_EQ(sizes[mark].cx, sizes[106].cx) << mark;
        EXPECT_EQ(sizes[mark].cy, sizes[106].cy) << mark;
    }
}

TEST_F(Resources, ProgramHasOneIcon) {
    const std::set<WORD> icons = Ids(RT_GROUP_ICON);
    ASSERT_EQ(icons.size(), 1u);
    const HICON icon = ::LoadIconW(module, MAKEINTRESOURCEW(*icons.begin()));
    EXPECT_NE(icon, nullptr);
    // The About box shows it.
    const auto about = ReadDialogTemplate(Bytes(RT_DIALOG, 103));
    ASSERT_TRUE(about);
    const std::wstring name = L"#" + std::to_wstring(*icons.begin());
    EXPECT_TRUE(std::any_of(about->items.begin(), about->items.end(), [&](const auto& item) {
        return (item.style & SS_TYPEMASK) == SS_ICON && item.text == name;
    }));
}

}  // namespace
}  // namespace lunara::test
