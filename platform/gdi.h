#pragma once

// RAII for GDI. Owners are move-only and delete their object; scopes restore what they changed.
// Declare the owner before the scope that selects its object, so that the object is never deleted
// while it is selected.
//
// Live owners are counted per kind, because Wine reports no GDI counts. Every UI test ends by
// asserting that none is left.

#include <utility>

#include "platform/win32.h"

namespace lunara {

/// Kinds of owned objects; `Count` is their number.
enum class GdiKind { Font, Brush, Pen, Bitmap, Region, MemoryDc, Count };

/// The number of live owners of one kind.
int LiveGdiObjects(GdiKind kind);
/// The number of live owners of all kinds.
int LiveGdiObjects();

namespace detail {
void CountGdiObject(GdiKind kind, int change);
}

/// Owns a GDI handle, or none; the destructor deletes the object.
template <typename Handle, GdiKind Kind>
class GdiOwner {
  public:
    GdiOwner() = default;
    explicit GdiOwner(Handle owned) : handle(owned) {
        if (handle != nullptr) {
            detail::CountGdiObject(Kind, 1);
        }
    }
    GdiOwner(GdiOwner&& other) noexcept : handle(std::exchange(other.handle, nullptr)) {}
    GdiOwner& operator=(GdiOwner&& other) noexcept {
        if (this != &other) {
            Reset();
            handle = std::exchange(other.handle, nullptr);
        }
        return *this;
    }
    GdiOwner(const GdiOwner&) = delete;
    GdiOwner& operator=(const GdiOwner&) = delete;
    ~GdiOwner() { Reset(); }

    Handle Get() const { return handle; }
    explicit operator bool() const { return handle != nullptr; }

    /// Deletes the object, if there is one; the owner is empty afterwards.
    void Reset() {
        if (handle != nullptr) {
            if constexpr (Kind == GdiKind::MemoryDc) {
                ::DeleteDC(handle);
            } else {
                ::DeleteObject(handle);
            }
            detail::CountGdiObject(Kind, -1);
            handle = nullptr;
        }
    }

  private:
    Handle handle = nullptr;
};

using Font = GdiOwner<HFONT, GdiKind::Font>;
using Brush = GdiOwner<HBRUSH, GdiKind::Brush>;
using Pen = GdiOwner<HPEN, GdiKind::Pen>;
using Bitmap = GdiOwner<HBITMAP, GdiKind::Bitmap>;
using Region = GdiOwner<HRGN, GdiKind::Region>;
using MemoryDc = GdiOwner<HDC, GdiKind::MemoryDc>;

/// Calls BeginPaint, and EndPaint in the destructor. The shell font is selected. Only for WM_PAINT.
class PaintScope {
  public:
    explicit PaintScope(HWND painted);
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    ~PaintScope();

    HDC Dc() const { return dc; }
    const PAINTSTRUCT& Paint() const { return paint; }

  private:
    HWND window;
    PAINTSTRUCT paint{};
    HDC dc;
    HGDIOBJ previousFont;
};

/// Gets a device context of a window's client area; the destructor releases it. The shell font is
/// selected.
class WindowDcScope {
  public:
    explicit WindowDcScope(HWND drawn);
    WindowDcScope(const WindowDcScope&) = delete;
    WindowDcScope& operator=(const WindowDcScope&) = delete;
    ~WindowDcScope();

    HDC Dc() const { return dc; }

  private:
    HWND window;
    HDC dc;
    HGDIOBJ previousFont;
};

/// Selects an object, owned or stock; the destructor selects the previous one again.
class SelectScope {
  public:
    SelectScope(HDC target, HGDIOBJ object) : dc(target), previous(::SelectObject(dc, object)) {}
    SelectScope(const SelectScope&) = delete;
    SelectScope& operator=(const SelectScope&) = delete;
    ~SelectScope() { ::SelectObject(dc, previous); }

    HGDIOBJ Previous() const { return previous; }

  private:
    HDC dc;
    HGDIOBJ previous;
};

/// Sets the background mode (OPAQUE or TRANSPARENT); the destructor restores the previous one.
class BackgroundModeScope {
  public:
    BackgroundModeScope(HDC target, int mode) : dc(target), previous(::SetBkMode(dc, mode)) {}
    BackgroundModeScope(const BackgroundModeScope&) = delete;
    BackgroundModeScope& operator=(const BackgroundModeScope&) = delete;
    ~BackgroundModeScope() { ::SetBkMode(dc, previous); }

  private:
    HDC dc;
    int previous;
};

/// Sets the text colour; the destructor restores the previous one.
class TextColorScope {
  public:
    TextColorScope(HDC target, COLORREF color) : dc(target), previous(::SetTextColor(dc, color)) {}
    TextColorScope(const TextColorScope&) = delete;
    TextColorScope& operator=(const TextColorScope&) = delete;
    ~TextColorScope() { ::SetTextColor(dc, previous); }

  private:
    HDC dc;
    COLORREF previous;
};

/// A memory device context for measuring text, with the shell font selected. It measures like the
/// device context of a window, without a window and without a request to the display server.
class MeasuringDc {
  public:
    MeasuringDc();
    MeasuringDc(const MeasuringDc&) = delete;
    MeasuringDc& operator=(const MeasuringDc&) = delete;
    ~MeasuringDc() = default;

    HDC Dc() const { return dc.Get(); }

  private:
    MemoryDc dc;
    SelectScope font;
};

/// The font of the program's windows and controls: the system's message font, or DEFAULT_GUI_FONT
/// when that is not known. Created once and kept until the process ends; not counted as an owner.
HFONT ShellFont();

// The bitmaps below are device-independent, in the program's own memory. A bitmap compatible with
// the display would cost three requests to Wine's server, about the monitors, when it is created
// and each time it is selected.

/// Creates a top-down bitmap with 32 bits per pixel; width and height in pixels. Empty when a
/// length is 0 or memory is short.
Bitmap MakePicture(LONG width, LONG height);

/// Loads bitmap resource `id` of the program; empty when it cannot be loaded.
Bitmap LoadBitmapResource(UINT id);

}  // namespace lunara
