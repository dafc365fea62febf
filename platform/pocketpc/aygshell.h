#pragma once

// The services of the Pocket PC shell that the program uses, as far as a desktop can give them. The
// names are the shell's own, so that the callers read as they would on the device.

#include "platform/win32.h"

// NOLINTBEGIN(readability-identifier-naming): these are the shell's own spellings.

// ---- Full-screen dialogs ----

inline constexpr DWORD SHIDIM_FLAGS = 1;
inline constexpr DWORD SHIDIF_DONEBUTTON = 1;
inline constexpr DWORD SHIDIF_SIZEDLGFULLSCREEN = 4;
inline constexpr DWORD SHIDIF_SIPDOWN = 8;

struct SHINITDLGINFO {
    DWORD dwMask;
    HWND hDlg;
    DWORD dwFlags;
};

/// Lays the dialog over the client area of its owner (or of the program's top-level window), shows
/// its title there, keeps it there when the window moves or is resized, and lowers the input panel.
BOOL SHInitDialog(SHINITDLGINFO* info);

/// To be asked first about every message of a dialog with edit fields; TRUE when it was handled.
BOOL SHInputDialog(HWND dialog, UINT message, WPARAM wParam);

// ---- Input panel ----

// A desktop has no panel to show: flags and position are kept for the process and can be read.

inline constexpr UINT SPI_SETSIPINFO = 224;
inline constexpr UINT SPI_GETSIPINFO = 225;

inline constexpr DWORD SIPF_OFF = 0x00;
inline constexpr DWORD SIPF_ON = 0x01;
inline constexpr DWORD SIPF_DOCKED = 0x02;
inline constexpr DWORD SIPF_LOCKED = 0x04;
inline constexpr DWORD SIPF_DISABLECOMPLETION = 0x08;

struct SIPINFO {
    DWORD cbSize;
    DWORD fdwFlags;
    RECT rcVisibleDesktop;
    RECT rcSipRect;
    DWORD dwImDataSize;
    void* pvImData;
};

/// `action` SPI_GETSIPINFO or SPI_SETSIPINFO with a SIPINFO whose cbSize is set; else FALSE.
BOOL SHSipInfo(UINT action, UINT parameter, void* info, UINT profile);

enum SIPSTATE {
    SIP_UP = 0,
    SIP_DOWN = 1,
    SIP_FORCEDOWN = 2,
    SIP_UNCHANGED = 3,
    SIP_INPUTDIALOG = 4
};

BOOL SHSipPreference(HWND window, SIPSTATE state);

// ---- Menu bar ----

inline constexpr UINT TB_SETTOOLTIPS_DEVICE = 0x451;  // wParam: count, lParam: array of texts

struct SHMENUBARINFO {
    DWORD cbSize;
    HWND hwndParent;
    DWORD dwFlags;
    UINT nToolBarId;  // RCDATA resource that describes the bar (see menu_bar.h)
    HINSTANCE hInstRes;
    int nBmpId;
    int cBmpImages;
    HWND hwndMB;  // out
    COLORREF clrBk;
};

/// A toolbar along the bottom of the parent. Its first button drops the menu, upwards. It answers
/// the device's tool-tip message and the toolbar's button messages.
BOOL SHCreateMenuBar(SHMENUBARINFO* info);

// ---- Windows ----

struct SHACTIVATEINFO {
    DWORD cbSize;
    HWND hwndLastFocus;
    UINT fSipUp : 1;
    UINT fSipOnDeactivation : 1;
    UINT fActive : 1;
    UINT fReserved : 29;
};

/// On the device: moves the window clear of the input panel. Here: keeps the record, returns TRUE.
BOOL SHHandleWMSettingChange(HWND window, WPARAM wParam, LPARAM lParam, SHACTIVATEINFO* info);

/// The device's SetForegroundWindow of a handle with its lowest bit set: brings the window and the
/// dialogs that it owns forward, restored if minimised. Without the bit, the system's own call.
BOOL SHSetForegroundWindow(HWND window);

// NOLINTEND(readability-identifier-naming)
