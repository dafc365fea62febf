#include "platform/pocketpc/menu_bar.h"

#include <algorithm>
#include <array>
#include <memory>

#include "platform/gdi.h"
#include "platform/pocketpc/aygshell.h"
#include "platform/pocketpc/common_controls.h"
#include "platform/pocketpc/placement.h"
#include "platform/subclass.h"
#include "platform/text.h"
#include "resources/ids.h"

namespace lunara {
namespace {

constexpr std::size_t HeadWords = 2;
constexpr std::size_t WordsPerButton = 4;

}  // namespace

std::optional<MenuBarDescription> ReadMenuBarDescription(std::span<const std::uint16_t> words) {
    if (words.size() < HeadWords ||
        words.size() < HeadWords + std::size_t{words[1]} * WordsPerButton) {
        return std::nullopt;
    }
    MenuBarDescription description;
    description.menu = words[0];
    for (std::size_t i = 0; i < words[1]; ++i) {
        const auto button = words.subspan(HeadWords + i * WordsPerButton, WordsPerButton);
        if (button[2] != MENU_BAR_DROP_DOWN && button[2] != MENU_BAR_CHECK) {
            return std::nullopt;
        }
        description.buttons.push_back({button[0], button[1], button[2], button[3]});
    }
    return description;
}

namespace {

constexpr int LabelCapacity = 64;
constexpr WORD PaddingXPx = 11;  // sum of the space left and right of a button's image
constexpr WORD PaddingYPx = 14;  // sum of the space above and below a button's image
constexpr int DividerPx = 4;     // the line along the bar's upper edge and the space around buttons
constexpr WPARAM KeyMenuSpace = TEXT(' ');

/// A menu bar. It owns menu and images, and is destroyed at WM_NCDESTROY of its window.
struct MenuBar {
    HWND window = nullptr;
    HWND parent = nullptr;
    HMENU menu = nullptr;
    HIMAGELIST images = nullptr;
    std::vector<MenuBarButton> buttons;
    std::vector<WideString> toolTips;  // in the order of `buttons`; may be shorter

    MenuBar() = default;
    MenuBar(const MenuBar&) = delete;
    MenuBar& operator=(const MenuBar&) = delete;
    ~MenuBar() {
        if (menu != nullptr) {
            ::DestroyMenu(menu);
        }
        if (images != nullptr) {
            ::ImageList_Destroy(images);
        }
    }
};

// ---- Creation ----

std::optional<MenuBarDescription> LoadDescription(HINSTANCE instance, UINT id) {
    const HRSRC resource =
        ::FindResourceW(instance, MAKEINTRESOURCEW(id), reinterpret_cast<const WCHAR*>(RT_RCDATA));
    if (resource == nullptr) {
        return std::nullopt;
    }
    const HGLOBAL loaded = ::LoadResource(instance, resource);
    const auto* words = static_cast<const std::uint16_t*>(::LockResource(loaded));
    if (words == nullptr) {
        return std::nullopt;
    }
    return ReadMenuBarDescription(
        {words, ::SizeofResource(instance, resource) / sizeof(std::uint16_t)});
}

COLORREF FirstPixel(const Bitmap& bitmap) {
    const MemoryDc dc(::CreateCompatibleDC(nullptr));
    const SelectScope selected(dc.Get(), bitmap.Get());
    return ::GetPixel(dc.Get(), 0, 0);
}

/// Cuts the bitmap into square images; the colour of its top left pixel becomes transparent. Takes
/// the number of images from the bitmap's width, not from SHMENUBARINFO: the program passes one
/// less than there are, and the last button would stay blank.
HIMAGELIST LoadImages(HINSTANCE instance, UINT bitmapId) {
    const Bitmap bitmap(static_cast<HBITMAP>(::LoadImageW(
        instance, MAKEINTRESOURCEW(bitmapId), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
    BITMAP shape{};
    if (!bitmap || ::GetObjectW(bitmap.Get(), sizeof(shape), &shape) == 0 || shape.bmHeight <= 0) {
        return nullptr;
    }
    const COLORREF transparent = FirstPixel(bitmap);
    const HIMAGELIST images = ::ImageList_Create(
        shape.bmHeight, shape.bmHeight, ILC_COLOR24 | ILC_MASK, shape.bmWidth / shape.bmHeight, 0);
    if (images != nullptr) {
        ::ImageList_AddMasked(images, bitmap.Get(), transparent);
    }
    return images;
}

/// Adds all buttons with one message, because the toolbar lays itself out after each message.
void AddButtons(const MenuBar& bar, HINSTANCE instance) {
    std::vector<TBBUTTON> shapes;
    std::vector<std::array<WCHAR, LabelCapacity>> labels(bar.buttons.size());
    for (const MenuBarButton& button : bar.buttons) {
        std::array<WCHAR, LabelCapacity>& label = labels[shapes.size()];
        if (button.text != 0) {
            ::LoadStringW(instance, button.text, label.data(), LabelCapacity);
        }
        TBBUTTON& shape = shapes.emplace_back();
        shape.iBitmap = button.image == MENU_BAR_NO_IMAGE ? I_IMAGENONE : button.image;
        shape.idCommand = button.command;
        shape.fsState = TBSTATE_ENABLED;
        shape.fsStyle = button.kind == MENU_BAR_DROP_DOWN
                            ? BYTE{BTNS_WHOLEDROPDOWN | BTNS_SHOWTEXT | BTNS_AUTOSIZE}
                            : BYTE{BTNS_CHECK};
        shape.iString = label[0] == 0 ? -1 : reinterpret_cast<INT_PTR>(label.data());
    }
    ::SendMessageW(bar.window, TB_ADDBUTTONSW, shapes.size(),
                   reinterpret_cast<LPARAM>(shapes.data()));
    // Set the width of the check buttons to image and padding; the toolbar's default is the width
    // of its widest label.
    int width = 0;
    int height = 0;
    ::ImageList_GetIconSize(bar.images, &width, &height);
    TBBUTTONINFOW size{};
    size.cbSize = sizeof(size);
    size.dwMask = TBIF_SIZE;
    size.cx = static_cast<WORD>(width + PaddingXPx);
    for (const MenuBarButton& button : bar.buttons) {
        if (button.kind == MENU_BAR_CHECK) {
            ::SendMessageW(bar.window, TB_SETBUTTONINFOW, button.command,
                           reinterpret_cast<LPARAM>(&size));
        }
    }
}

// ---- Behaviour ----

void PlaceAtBottom(const MenuBar& bar) {
    RECT client{};
    ::GetClientRect(bar.parent, &client);
    const RECT place = PlaceOf(bar.window);
    PutAt(bar.window,
          RECT{0, client.bottom - (place.bottom - place.top), client.right, client.bottom});
}

/// The drop-down button with that command, or the first one when `command` is empty; null when
/// there is none.
const MenuBarButton* DropDownOf(const MenuBar& bar, std::optional<int> command) {
    const auto found = std::find_if(
        bar.buttons.begin(), bar.buttons.end(), [command](const MenuBarButton& button) {
            return button.kind == MENU_BAR_DROP_DOWN && (!command || button.command == *command);
        });
    return found == bar.buttons.end() ? nullptr : &*found;
}

/// Opens the menu above the button: the bar lies at the bottom edge of the window. The menu's
/// commands go to the bar's parent.
void DropUp(const MenuBar& bar, int command) {
    RECT button{};
    if (::SendMessageW(bar.window, TB_GETRECT, static_cast<WPARAM>(command),
                       reinterpret_cast<LPARAM>(&button)) == 0) {
        return;
    }
    ::MapWindowPoints(bar.window, nullptr, reinterpret_cast<POINT*>(&button), 2);
    TPMPARAMS keepClear{};
    keepClear.cbSize = sizeof(keepClear);
    keepClear.rcExclude = button;
    ::TrackPopupMenuEx(::GetSubMenu(bar.menu, 0), TPM_LEFTALIGN | TPM_BOTTOMALIGN | TPM_VERTICAL,
                       button.left, button.top, bar.parent, &keepClear);
}

void SetToolTips(MenuBar& bar, std::size_t count, const WCHAR* const* texts) {
    bar.toolTips.clear();
    for (std::size_t i = 0; i < count && texts != nullptr; ++i) {
        bar.toolTips.emplace_back(texts[i] == nullptr ? TEXT("") : texts[i]);
    }
}

void AnswerToolTip(const MenuBar& bar, NMTBGETINFOTIPW& question) {
    if (question.pszText == nullptr || question.cchTextMax < 1) {
        return;
    }
    WideView text;
    for (std::size_t i = 0; i < bar.buttons.size() && i < bar.toolTips.size(); ++i) {
        if (bar.buttons[i].command == question.iItem) {
            text = bar.toolTips[i];
        }
    }
    CopyText(question.pszText, static_cast<std::size_t>(question.cchTextMax), text);
}

/// Handles a notification of the toolbar to the bar's parent. Returns its result; nullopt for a
/// notification that is left to the parent.
std::optional<LRESULT> AnswerNotification(const MenuBar& bar, NMHDR& header) {
    if (header.hwndFrom != bar.window) {
        return std::nullopt;
    }
    switch (header.code) {
        case TBN_DROPDOWN:
            DropUp(bar, reinterpret_cast<NMTOOLBARW&>(header).iItem);
            return TBDDRET_DEFAULT;
        case TBN_GETINFOTIPW:
            AnswerToolTip(bar, reinterpret_cast<NMTBGETINFOTIPW&>(header));
            return 0;
        default:
            return std::nullopt;
    }
}

/// All menu bars: one, except in tests.
std::vector<std::unique_ptr<MenuBar>>& MenuBars() {
    static std::vector<std::unique_ptr<MenuBar>> bars;
    return bars;
}

/// Finds the bar whose `member` (`window` or `parent`) is `window`.
std::vector<std::unique_ptr<MenuBar>>::iterator FindBar(HWND MenuBar::*member, HWND window) {
    return std::find_if(MenuBars().begin(), MenuBars().end(),
                        [=](const auto& bar) { return (*bar).*member == window; });
}

/// Whether the message asks for the window's menu from the keyboard (Alt, F10, Alt with a letter).
/// The parent has no menu, so the bar's opens instead. Alt+Space is left to the system menu.
bool OpensMenu(UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_KEYMENU &&
           lParam != static_cast<LPARAM>(KeyMenuSpace);
}

/// The subclass procedure of a bar's parent.
LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = FindBar(&MenuBar::parent, window);
    if (found != MenuBars().end()) {
        const MenuBar& bar = **found;
        if (message == WM_SIZE) {
            PlaceAtBottom(bar);
        } else if (message == WM_NOTIFY) {
            if (const auto answer = AnswerNotification(bar, *reinterpret_cast<NMHDR*>(lParam))) {
                return *answer;
            }
        } else if (OpensMenu(message, wParam, lParam)) {
            if (const MenuBarButton* button = DropDownOf(bar, std::nullopt)) {
                DropUp(bar, button->command);
                return 0;
            }
        }
    }
    return CallPrevious(&ParentProc, window, message, wParam, lParam);
}

/// The subclass procedure of the bar.
LRESULT CALLBACK BarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = FindBar(&MenuBar::window, window);
    if (found != MenuBars().end()) {
        MenuBar& bar = **found;
        switch (message) {
            case TB_SETTOOLTIPS_DEVICE:
                // Not passed on: to a desktop toolbar this number is another message.
                SetToolTips(bar, wParam, reinterpret_cast<const WCHAR* const*>(lParam));
                return 0;
            case SHCMBM_GETSUBMENU:
                return DropDownOf(bar, static_cast<int>(lParam)) == nullptr
                           ? 0
                           : reinterpret_cast<LRESULT>(::GetSubMenu(bar.menu, 0));
            case WM_NCDESTROY: {
                const std::unique_ptr<MenuBar> last = std::move(*found);
                MenuBars().erase(found);
                RemoveSubclass(last->parent, &ParentProc);
                return CallPrevious(&BarProc, window, message, wParam, lParam);
            }
            default:
                break;
        }
    }
    return CallPrevious(&BarProc, window, message, wParam, lParam);
}

HWND CreateToolbar(const SHMENUBARINFO& info) {
    const HWND window =
        ::CreateWindowExW(0, TOOLBARCLASSNAMEW, nullptr,
                          WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | CCS_NORESIZE |
                              CCS_NOPARENTALIGN | TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS,
                          0, 0, 0, 0, info.hwndParent, nullptr, info.hInstRes, nullptr);
    if (window != nullptr) {
        ::SendMessageW(window, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
        ::SendMessageW(window, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS);
    }
    return window;
}

}  // namespace
}  // namespace lunara

BOOL SHCreateMenuBar(SHMENUBARINFO* info) {
    using lunara::MenuBar;
    if (info == nullptr || info->cbSize != sizeof(SHMENUBARINFO)) {
        return FALSE;
    }
    info->hwndMB = nullptr;
    const auto description = lunara::LoadDescription(info->hInstRes, info->nToolBarId);
    if (!description) {
        return FALSE;
    }
    auto bar = std::make_unique<MenuBar>();
    bar->parent = info->hwndParent;
    bar->buttons = description->buttons;
    bar->menu = ::LoadMenuW(info->hInstRes, MAKEINTRESOURCEW(description->menu));
    bar->images = lunara::LoadImages(info->hInstRes, static_cast<UINT>(info->nBmpId));
    if (bar->menu == nullptr || bar->images == nullptr) {
        return FALSE;
    }
    bar->window = lunara::CreateToolbar(*info);
    if (bar->window == nullptr) {
        return FALSE;
    }
    ::SendMessageW(bar->window, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(bar->images));
    ::SendMessageW(bar->window, TB_SETPADDING, 0,
                   MAKELPARAM(lunara::PaddingXPx, lunara::PaddingYPx));
    lunara::AddButtons(*bar, info->hInstRes);
    const auto size = static_cast<DWORD>(::SendMessageW(bar->window, TB_GETBUTTONSIZE, 0, 0));
    ::SetWindowPos(bar->window, nullptr, 0, 0, 0, HIWORD(size) + lunara::DividerPx,
                   SWP_NOZORDER | SWP_NOACTIVATE);

    lunara::AddSubclass(bar->window, &lunara::BarProc);
    lunara::AddSubclass(bar->parent, &lunara::ParentProc);
    lunara::PlaceAtBottom(*bar);
    info->hwndMB = bar->window;
    lunara::MenuBars().push_back(std::move(bar));  // removed at WM_NCDESTROY of the bar
    return TRUE;
}
