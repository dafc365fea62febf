#pragma once

// Pixels of the screen and of bitmap resources, for comparison and for the pictures of a run.

#include <windows.h>

#include <string>
#include <vector>

namespace lunara::test {

class Picture {
  public:
    /// Captures `area` of the screen, in screen coordinates. Returns an empty picture when the area
    /// is empty or cannot be read.
    static Picture OfScreen(const RECT& area);
    /// Bitmap resource `id` of a program file; empty when the file has none of that id.
    static Picture OfResource(const std::wstring& program, UINT id);

    int Width() const { return width; }
    int Height() const { return height; }
    /// The colour of a pixel; white outside of the picture.
    COLORREF At(int x, int y) const;
    /// Writes a bitmap file with 32 bits per pixel; false when that fails.
    bool SaveAs(const std::wstring& path) const;

    friend bool operator==(const Picture&, const Picture&) = default;

  private:
    static Picture OfDc(HDC source, int x, int y, int width, int height);

    int width = 0;
    int height = 0;
    std::vector<DWORD> pixels;  // 0x00RRGGBB, top row first
};

}  // namespace lunara::test
