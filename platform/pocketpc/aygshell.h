#pragma once

// The Pocket PC shell's functions that the program calls, implemented on a desktop as far as it has
// an equivalent. The names are the shell's own, so that callers read as they would on the device.

#include "platform/win32.h"

// NOLINTBEGIN(readability-identifier-naming): these are the shell's own spellings.

// ---- Full-screen dialogs ----

inline constexpr DWORD SHIDIM_FLAGS = 1;
inline constexpr DWORD SHIDIF_DONEBUTTON = 1;
inline constexpr DWORD SHIDIF_SIZEDLGFULLSCREEN = 4;
inline constexpr DWORD SHIDIF_SIPDOWN = 8;

/// Parameters of SHInitDialog. `dwMask` must have SHIDIM_FLAGS; `dwFlags`: SHIDIF_ values.
struct SHINITDLGINFO {
    DWORD dwMask;
    HWND hDlg;
    DWORD dwFlags;
};

/// Initialises a dialog. SHIDIF_SIZEDLGFULLSCREEN: lays it over the client area of its owner (or of
/// the main window if it has none), with its title in a strip at the top, keeps it there when the
/// owner moves or is resized, and shows a hidden owner. SHIDIF_SIPDOWN: lowers the input panel.
/// SHIDIF_DONEBUTTON has no effect. FALSE when `info` is null, lacks SHIDIM_FLAGS or names no
/// window.
BOOL SHInitDialog(SHINITDLGINFO* info);

/// Call first for every message of a dialog with edit fields; TRUE when the message is handled. On
/// the device it raises the input panel for a field that gains the focus; here it does nothing and
/// returns FALSE.
BOOL SHInputDialog(HWND dialog, UINT message, WPARAM wParam);

// ---- Input panel ----

// A desktop has no input panel. The flags are stored for the process and can be read back.

inline constexpr UINT SPI_SETSIPINFO = 224;
inline constexpr UINT SPI_GETSIPINFO = 225;

inline constexpr DWORD SIPF_OFF = 0x00;
inline constexpr DWORD SIPF_ON = 0x01;
inline constexpr DWORD SIPF_DOCKED = 0x02;
inline constexpr DWORD SIPF_LOCKED = 0x04;
inline constexpr DWORD SIPF_DISABLECOMPLETION = 0x08;

/// State of the input panel: SIPF_ flags, the work area of the screen, and the panel's rectangle,
/// which is always empty here.
struct SIPINFO {
    DWORD cbSize;
    DWORD fdwFlags;
    RECT rcVisibleDesktop;
    RECT rcSipRect;
    DWORD dwImDataSize;
    void* pvImData;
};

/// Reads (`action` SPI_GETSIPINFO) or stores (SPI_SETSIPINFO, the flags alone) the state of the
/// input panel. `info`: a SIPINFO with `cbSize` set. FALSE for any other action or record;
/// `parameter` and `profile` are ignored.
BOOL SHSipInfo(UINT action, UINT parameter, void* info, UINT profile);

enum SIPSTATE {
    SIP_UP = 0,
    SIP_DOWN = 1,
    SIP_FORCEDOWN = 2,
    SIP_UNCHANGED = 3,
    SIP_INPUTDIALOG = 4
};

/// Raises (SIP_UP) or lowers (SIP_DOWN, SIP_FORCEDOWN) the input panel: sets or clears SIPF_ON.
/// Other states change nothing. FALSE when `window` is null.
BOOL SHSipPreference(HWND window, SIPSTATE state);

// ---- Menu bar ----

/// Sent to a menu bar to set the tool tips of its buttons. wParam: number of texts. lParam: array
/// of that many texts in the order of the buttons; a null text means none. They are copied. Result:
/// 0.
inline constexpr UINT TB_SETTOOLTIPS_DEVICE = 0x451;

/// Parameters of SHCreateMenuBar. `dwFlags`, `cBmpImages` and `clrBk` are ignored.
struct SHMENUBARINFO {
    DWORD cbSize;
    HWND hwndParent;
    DWORD dwFlags;
    UINT nToolBarId;  // id of the RCDATA resource that describes the bar (see menu_bar.h)
    HINSTANCE hInstRes;
    int nBmpId;      // id of the bitmap with the button images, square and side by side
    int cBmpImages;  // the bar computes the number from the bitmap
    HWND hwndMB;     // out: the bar; null on failure, unchanged if cbSize is wrong
    COLORREF clrBk;
};

/// Creates a menu bar: a toolbar along the bottom edge of `hwndParent`, which it follows when the
/// parent is resized. The drop-down button opens the menu upwards, as do Alt and F10. The bar
/// handles TB_SETTOOLTIPS_DEVICE, SHCMBM_GETSUBMENU (menu_bar.h) and the messages of a toolbar.
/// FALSE when `cbSize` is wrong, a resource (description, menu, bitmap) is missing, or the toolbar
/// cannot be created.
BOOL SHCreateMenuBar(SHMENUBARINFO* info);

// ---- Windows ----

/// The shell's record of a window's activation. Only `cbSize` is used here.
struct SHACTIVATEINFO {
    DWORD cbSize;
    HWND hwndLastFocus;
    UINT fSipUp : 1;
    UINT fSipOnDeactivation : 1;
    UINT fActive : 1;
    UINT fReserved : 29;
};

/// On the device, moves the window clear of the input panel. Here it changes nothing. TRUE when
/// `window` is not null and `info` is a record with `cbSize` set.
BOOL SHHandleWMSettingChange(HWND window, WPARAM wParam, LPARAM lParam, SHACTIVATEINFO* info);

/// Brings a window to the foreground. If the lowest bit of the handle is set, as the device allows,
/// the window is restored if minimised, and a dialog that disables it is activated in its place.
/// Without the bit it is the system's SetForegroundWindow.
BOOL SHSetForegroundWindow(HWND window);

// NOLINTEND(readability-identifier-naming)
