#pragma once

// What is on the screen, pixel by pixel.

#include <windows.h>

#include <string>
#include <vector>

namespace lunara::e2e {

class Picture {
  public:
    /// A part of the screen as it is now.
    static Picture OfScreen(const RECT& area);
    /// Bitmap resource `id` of a program file; empty when it has none.
    static Picture OfResource(const std::wstring& program, UINT id);

    int Width() const { return width; }
    int Height() const { return height; }
    /// White outside the picture.
    COLORREF At(int x, int y) const;
    /// As a 24-bit bitmap file.
    bool SaveAs(const std::wstring& path) const;

    friend bool operator==(const Picture&, const Picture&) = default;

  private:
    static Picture OfDc(HDC source, int x, int y, int width, int height);

    int width = 0;
    int height = 0;
    std::vector<DWORD> pixels;  // 0x00RRGGBB, top row first
};

}  // namespace lunara::e2e
