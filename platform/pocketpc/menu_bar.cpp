#include "platform/pocketpc/menu_bar.h"

#include <algorithm>
#include <array>
#include <memory>

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
constexpr WORD PaddingXPx = 11;  // left and right of a picture together
constexpr WORD PaddingYPx = 14;  // above and below
constexpr int DividerPx = 4;     // the line along the upper edge, and air around the buttons
constexpr WPARAM KeyMenuSpace = TEXT(' ');

/// What a bar owns besides its window. Lives from the bar's creation to its destruction.
struct MenuBar {
    HWND window = nullptr;
    HWND parent = nullptr;
    HMENU menu = nullptr;
    HIMAGELIST images = nullptr;
    std::vector<MenuBarButton> buttons;
    std::vector<WideString> toolTips;  // by button

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

// ---- What it is made of ----

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

/// The bitmap cut into squares. Its first pixel has the colour that stands for "transparent". The
/// count in the caller's record is not asked: the program's own says one less than the bitmap
/// holds, and the last button would stay blank.
HIMAGELIST LoadImages(HINSTANCE instance, UINT bitmapId) {
    const auto bitmap = static_cast<HBITMAP>(::LoadImageW(instance, MAKEINTRESOURCEW(bitmapId),
                                                          IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    BITMAP shape{};
    if (bitmap == nullptr || ::GetObjectW(bitmap, sizeof(shape), &shape) == 0 ||
        shape.bmHeight <= 0) {
        ::DeleteObject(bitmap);
        return nullptr;
    }
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = ::SelectObject(dc, bitmap);
    const COLORREF transparent = ::GetPixel(dc, 0, 0);
    ::SelectObject(dc, previous);
    ::DeleteDC(dc);

    const HIMAGELIST images = ::ImageList_Create(
        shape.bmHeight, shape.bmHeight, ILC_COLOR24 | ILC_MASK, shape.bmWidth / shape.bmHeight, 0);
    if (images != nullptr) {
        ::ImageList_AddMasked(images, bitmap, transparent);
    }
    ::DeleteObject(bitmap);
    return images;
}

/// All at once: the bar lays itself out anew after each call.
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
    // All check buttons as wide as a picture with its padding, not as the widest label.
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

// ---- What it does ----

void PlaceAtBottom(const MenuBar& bar) {
    RECT client{};
    ::GetClientRect(bar.parent, &client);
    const RECT place = PlaceOf(bar.window);
    PutAt(bar.window,
          RECT{0, client.bottom - (place.bottom - place.top), client.right, client.bottom});
}

const MenuBarButton* DropDownOf(const MenuBar& bar, std::optional<int> command) {
    const auto found = std::find_if(
        bar.buttons.begin(), bar.buttons.end(), [command](const MenuBarButton& button) {
            return button.kind == MENU_BAR_DROP_DOWN && (!command || button.command == *command);
        });
    return found == bar.buttons.end() ? nullptr : &*found;
}

/// Opens the menu above the button: below the bar the window ends.
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

/// Notifications that the toolbar sends its parent but that are the bar's own business.
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

LRESULT HookParent(const HookedMessage& call, void* reference) {
    const auto& bar = *static_cast<const MenuBar*>(reference);
    switch (call.message) {
        case WM_SIZE:
            PlaceAtBottom(bar);
            break;
        case WM_NOTIFY:
            if (const auto answer =
                    AnswerNotification(bar, *reinterpret_cast<NMHDR*>(call.lParam))) {
                return *answer;
            }
            break;
        case WM_SYSCOMMAND:
            // The window has no menu of its own that Alt or F10 could open; the bar has.
            if ((call.wParam & 0xFFF0) == SC_KEYMENU &&
                call.lParam != static_cast<LPARAM>(KeyMenuSpace)) {
                if (const MenuBarButton* button = DropDownOf(bar, std::nullopt)) {
                    DropUp(bar, button->command);
                    return 0;
                }
            }
            break;
        default:
            break;
    }
    return call.PassOn();
}

LRESULT HookBar(const HookedMessage& call, void* reference) {
    auto* bar = static_cast<MenuBar*>(reference);
    switch (call.message) {
        case TB_SETTOOLTIPS_DEVICE:
            // A desktop toolbar knows another message by this number.
            SetToolTips(*bar, call.wParam, reinterpret_cast<const WCHAR* const*>(call.lParam));
            return 0;
        case SHCMBM_GETSUBMENU:
            return DropDownOf(*bar, static_cast<int>(call.lParam)) == nullptr
                       ? 0
                       : reinterpret_cast<LRESULT>(::GetSubMenu(bar->menu, 0));
        case WM_NCDESTROY: {
            const std::unique_ptr<MenuBar> last(bar);
            RemoveWindowHook(last->parent, &HookParent, bar);
            return call.PassOn();
        }
        default:
            return call.PassOn();
    }
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

    MenuBar* placed = bar.release();  // freed when the bar is destroyed
    lunara::AddWindowHook(placed->window, &lunara::HookBar, placed);
    lunara::AddWindowHook(placed->parent, &lunara::HookParent, placed);
    lunara::PlaceAtBottom(*placed);
    info->hwndMB = placed->window;
    return TRUE;
}
