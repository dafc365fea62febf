#pragma once

// The map from window handles to window objects. It is searched on every message: a sorted array
// with binary search, sorted lazily at the first lookup after an insertion. It does not own the
// objects. The process has one map while at least one window is bound, and none otherwise.

#include <cstdint>

#include "platform/win32.h"

namespace lunara {

class Window;

class WindowMap {
  public:
    struct Entry {
        std::uint32_t key;  // low half of the handle; window handles have 32 significant bits
        Window* object;
    };

    static constexpr std::int32_t GrowthStep = 10;  // entries added or removed by a resize
    /// The array shrinks by GrowthStep at this many free entries. Being more than GrowthStep, it
    /// leaves free room, so that alternating insertions and removals do not resize each time.
    static constexpr std::int32_t ShrinkAtFree = 15;

    WindowMap() = default;
    WindowMap(const WindowMap&) = delete;
    WindowMap& operator=(const WindowMap&) = delete;
    ~WindowMap();

    /// Index of the window's entry, or -1 when it is not in the map. Sorts the entries first if
    /// needed, except in an empty map. The index is valid until the next insertion or removal.
    std::int32_t Lookup(HWND window);
    /// The object bound to `window`; null when there is none.
    Window* Find(HWND window);
    /// Binds `object` to `window`, replacing the object of a window that is in the map. Out of
    /// memory, does nothing.
    void Insert(HWND window, Window* object);
    /// Removes the window's entry. Returns 1, or 0 when there is none.
    int Remove(HWND window);

    std::int32_t Count() const { return count; }
    std::int32_t Capacity() const { return capacity; }
    bool IsUnsorted() const { return unsorted; }

    /// The process's map; null when there is none.
    static WindowMap* Current();
    /// The process's map, created when there is none.
    static WindowMap& Ensure();
    /// Deletes the process's map when it has no entries.
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
