#include "window/window_map.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "window/window.h"

namespace lunara {
namespace {

WindowMap* currentMap = nullptr;

std::uint32_t KeyOf(HWND window) {
    // Window handles have 32 significant bits, on 64-bit Windows too: truncation is lossless.
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window));
}

}  // namespace

WindowMap::~WindowMap() {
    Resize(0);
    count = 0;
    unsorted = false;
}

std::int32_t WindowMap::Lookup(HWND window) {
    if (count == 0) {
        return -1;
    }
    if (unsorted) {
        Sort();
    }
    const std::uint32_t key = KeyOf(window);
    std::int32_t low = 0;
    std::int32_t high = count - 1;
    while (high >= low) {
        const std::int32_t middle = (low + high) / 2;
        if (key == entries[middle].key) {
            return middle;
        }
        if (key < entries[middle].key) {
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    }
    return -1;
}

Window* WindowMap::Find(HWND window) {
    const std::int32_t index = Lookup(window);
    return index < 0 ? nullptr : entries[index].object;
}

void WindowMap::Insert(HWND window, Window* object) {
    const std::uint32_t key = KeyOf(window);
    for (std::int32_t index = 0; index < count; ++index) {
        if (entries[index].key == key) {
            entries[index].object = object;
            return;
        }
    }
    if (count + 1 > capacity) {
        Resize(capacity + GrowthStep);
    }
    if (entries == nullptr || count >= capacity) {
        return;  // out of memory: the array is still full
    }
    entries[count] = Entry{key, object};
    ++count;
    unsorted = true;
}

int WindowMap::Remove(HWND window) {
    const std::int32_t index = Lookup(window);
    if (index < 0) {
        return 0;
    }
    const auto following = static_cast<std::size_t>(count - index - 1);
    std::memmove(entries + index, entries + index + 1, following * sizeof(Entry));
    --count;
    if (capacity - count >= ShrinkAtFree) {
        Resize(capacity - GrowthStep);
    }
    return 1;
}

WindowMap* WindowMap::Current() { return currentMap; }

WindowMap& WindowMap::Ensure() {
    if (currentMap == nullptr) {
        currentMap = new WindowMap;
    }
    return *currentMap;
}

void WindowMap::DestroyIfEmpty() {
    if (currentMap != nullptr && currentMap->Count() == 0) {
        delete currentMap;
        currentMap = nullptr;
    }
}

bool WindowMap::Resize(std::int32_t newCapacity) {
    Entry* resized = nullptr;
    if (newCapacity > 0) {
        resized = new (std::nothrow) Entry[static_cast<std::size_t>(newCapacity)];
        if (resized == nullptr) {
            return false;
        }
        const std::int32_t kept = std::min(count, newCapacity);
        if (kept > 0) {
            std::memcpy(resized, entries, static_cast<std::size_t>(kept) * sizeof(Entry));
        }
    }
    delete[] entries;
    entries = resized;
    capacity = newCapacity;
    return true;
}

void WindowMap::Sort() {
    std::sort(entries, entries + count,
              [](const Entry& left, const Entry& right) { return left.key < right.key; });
    unsorted = false;
}

}  // namespace lunara
