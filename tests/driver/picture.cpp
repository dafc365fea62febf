#include "tests/driver/picture.h"

#include <cstdint>
#include <cstdio>

namespace lunara::test {

Picture Picture::OfScreen(const RECT& area) {
    const HDC screen = ::GetDC(nullptr);
    Picture picture =
        OfDc(screen, area.left, area.top, area.right - area.left, area.bottom - area.top);
    ::ReleaseDC(nullptr, screen);
    return picture;
}

Picture Picture::OfResource(const std::wstring& program, UINT id) {
    const HMODULE module = ::LoadLibraryExW(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HBITMAP bitmap = ::LoadBitmapW(module, MAKEINTRESOURCEW(id));
    Picture picture;
    BITMAP size{};
    if (bitmap != nullptr && ::GetObjectW(bitmap, sizeof size, &size) != 0) {
        const HDC dc = ::CreateCompatibleDC(nullptr);
        const HGDIOBJ previous = ::SelectObject(dc, bitmap);
        picture = OfDc(dc, 0, 0, size.bmWidth, size.bmHeight);
        ::SelectObject(dc, previous);
        ::DeleteDC(dc);
    }
    ::DeleteObject(bitmap);
    ::FreeLibrary(module);
    return picture;
}

Picture Picture::OfDc(HDC source, int x, int y, int width, int height) {
    Picture picture;
    if (width <= 0 || height <= 0) {
        return picture;
    }
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = ::SelectObject(dc, bitmap);
    if (bits != nullptr && ::BitBlt(dc, 0, 0, width, height, source, x, y, SRCCOPY) != 0) {
        ::GdiFlush();
        picture.width = width;
        picture.height = height;
        const auto* first = static_cast<const DWORD*>(bits);
        const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        picture.pixels.assign(first, first + count);
        for (DWORD& pixel : picture.pixels) {
            pixel &= 0xFFFFFF;
        }
    }
    ::SelectObject(dc, previous);
    ::DeleteDC(dc);
    ::DeleteObject(bitmap);
    return picture;
}

COLORREF Picture::At(int x, int y) const {
    if (x < 0 || y < 0 || x >= width || y >= height) {
        return RGB(255, 255, 255);
    }
    const DWORD pixel = pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                               static_cast<std::size_t>(x)];
    return RGB(pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255);
}

bool Picture::SaveAs(const std::wstring& path) const {
    BITMAPINFOHEADER info{};
    info.biSize = sizeof info;
    info.biWidth = width;
    info.biHeight = -height;  // top row first
    info.biPlanes = 1;
    info.biBitCount = 32;
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42;  // "BM"
    file.bfOffBits = sizeof file + sizeof info;
    const auto bytes = static_cast<DWORD>(pixels.size() * sizeof(DWORD));
    file.bfSize = file.bfOffBits + bytes;
    const HANDLE target =
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (target == INVALID_HANDLE_VALUE) {
        return false;
    }
    DWORD done = 0;
    const bool written = ::WriteFile(target, &file, sizeof file, &done, nullptr) != 0 &&
                         ::WriteFile(target, &info, sizeof info, &done, nullptr) != 0 &&
                         ::WriteFile(target, pixels.data(), bytes, &done, nullptr) != 0 &&
                         done == bytes;
    ::CloseHandle(target);
    return written;
}

}  // namespace lunara::test
