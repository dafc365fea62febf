#pragma once

// The table from window handles to window objects. Searched on every message, so kept sorted; the
// sort waits for the first lookup after insertions. It never owns the objects.

#include <cstdint>

#include "platform/win32.h"

namespace lunara {

class Window;

class WindowMap {
  public:
    struct Entry {
        std::uint32_t key;  // the handle: its upper half carries nothing on 64-bit systems
        Window* object;
    };

    static constexpr std::int32_t GrowthStep = 10;
    static constexpr std::int32_t ShrinkAtFree = 15;

    WindowMap() = default;
    WindowMap(const WindowMap&) = delete;
    WindowMap& operator=(const WindowMap&) = delete;
    ~WindowMap();

    /// Index of the key, or -1. Sorts first when needed (not when the map is empty).
    std::int32_t Lookup(HWND window);
    /// The bound object, null when there is none.
    Window* Find(HWND window);
    /// Replaces the object of a key that is present, else appends.
    void Insert(HWND window, Window* object);
    /// 1, or 0 when the key is absent.
    int Remove(HWND window);

    std::int32_t Count() const { return count; }
    std::int32_t Capacity() const { return capacity; }
    bool IsUnsorted() const { return unsorted; }

    /// The process's map; null while no window is bound.
    static WindowMap* Current();
    /// The process's map, made when there is none.
    static WindowMap& Ensure();
    static void DestroyIfEmpty();

  private:
    bool Resize(std::int32_t newCapacity);
    void Sort();

    Entry* entries = nullptr;
    std::int32_t count = 0;
    std::int32_t capacity = 0;
    bool unsorted = false;
};

}  // namespace lunara
