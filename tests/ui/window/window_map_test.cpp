// The map from window handles to window objects: a sorted array that sorts on demand.

#include "window/window_map.h"

#include <array>

#include "tests/ui/ui_test.h"

namespace lunara::test {
namespace {

HWND Key(std::uintptr_t number) { return reinterpret_cast<HWND>(number); }

/// Windows that only lend their addresses: the map stores pointers and never follows them.
struct Objects {
    std::array<Window, 40> windows;
    Window* At(std::size_t index) { return &windows[index]; }
};

TEST(WindowMap, FindsWhatWasInserted) {
    Objects objects;
    WindowMap map;
    map.Insert(Key(30), objects.At(0));
    map.Insert(Key(10), objects.At(1));
    map.Insert(Key(20), objects.At(2));
    EXPECT_EQ(map.Find(Key(30)), objects.At(0));
    EXPECT_EQ(map.Find(Key(10)), objects.At(1));
    EXPECT_EQ(map.Find(Key(20)), objects.At(2));
    EXPECT_EQ(map.Count(), 3);
}

TEST(WindowMap, LookupInEmptyMapReportsMissingWithoutSorting) {
    WindowMap map;
    EXPECT_EQ(map.Lookup(Key(1)), -1);
    EXPECT_EQ(map.Lookup(nullptr), -1);
    EXPECT_EQ(map.Find(Key(1)), nullptr);
    EXPECT_FALSE(map.IsUnsorted());
    EXPECT_EQ(map.Capacity(), 0);
}

TEST(WindowMap, FirstLookupAfterInsertionsSorts) {
    Objects objects;
    WindowMap map;
    for (std::size_t index = 0; index < 9; ++index) {
        map.Insert(Key(90 - 10 * index), objects.At(index));
    }
    EXPECT_TRUE(map.IsUnsorted());
    EXPECT_EQ(map.Lookup(Key(10)), 0);
    EXPECT_FALSE(map.IsUnsorted());
    for (std::int32_t index = 0; index < 9; ++index) {
        EXPECT_EQ(map.Lookup(Key(static_cast<std::uintptr_t>(10 * (index + 1)))), index);
    }
}

TEST(WindowMap, KeysBelowBetweenAndAboveAreMissing) {
    Objects objects;
    for (std::size_t count = 1; count <= 8; ++count) {
        WindowMap map;
        for (std::size_t index = 0; index < count; ++index) {
            map.Insert(Key(10 * (index + 1)), objects.At(index));
        }
        for (std::uintptr_t key = 5; key <= 10 * count + 5; key += 10) {
            EXPECT_EQ(map.Lookup(Key(key)), -1) << count << " keys, " << key;
        }
    }
}

TEST(WindowMap, KeysAreOrderedAsUnsignedNumbers) {
    Objects objects;
    WindowMap map;
    map.Insert(Key(0x80000000), objects.At(0));
    map.Insert(Key(1), objects.At(1));
    EXPECT_EQ(map.Lookup(Key(1)), 0);
    EXPECT_EQ(map.Lookup(Key(0x80000000)), 1);
}

TEST(WindowMap, InsertingExistingHandleReplacesObjectAndDoesNotGrow) {
    Objects objects;
    WindowMap map;
    for (std::size_t index = 0; index < 10; ++index) {
        map.Insert(Key(index + 1), objects.At(index));
    }
    ASSERT_EQ(map.Lookup(Key(1)), 0);  // sorts the map
    map.Insert(Key(5), objects.At(20));
    EXPECT_FALSE(map.IsUnsorted()) << "a replacement keeps the order";
    EXPECT_EQ(map.Find(Key(5)), objects.At(20));
    EXPECT_EQ(map.Count(), 10);
    EXPECT_EQ(map.Capacity(), 10);
}

TEST(WindowMap, RemovalKeepsTheOthersInOrder) {
    Objects objects;
    WindowMap map;
    for (std::size_t index = 0; index < 5; ++index) {
        map.Insert(Key(50 - 10 * index), objects.At(index));
    }
    EXPECT_EQ(map.Remove(Key(30)), 1);
    EXPECT_EQ(map.Count(), 4);
    EXPECT_EQ(map.Lookup(Key(30)), -1);
    EXPECT_EQ(map.Lookup(Key(10)), 0);
    EXPECT_EQ(map.Lookup(Key(20)), 1);
    EXPECT_EQ(map.Lookup(Key(40)), 2);
    EXPECT_EQ(map.Lookup(Key(50)), 3);
    EXPECT_EQ(map.Find(Key(40)), objects.At(1));
}

TEST(WindowMap, RemovingAnAbsentKeyDoesNothing) {
    Objects objects;
    WindowMap map;
    EXPECT_EQ(map.Remove(Key(1)), 0);
    map.Insert(Key(2), objects.At(0));
    EXPECT_EQ(map.Remove(Key(1)), 0);
    EXPECT_EQ(map.Count(), 1);
}

TEST(WindowMap, GrowsByTenWhenFull) {
    Objects objects;
    WindowMap map;
    for (std::int32_t count = 1; count <= 31; ++count) {
        const auto number = static_cast<std::size_t>(count);
        map.Insert(Key(number), objects.At(number));
        EXPECT_EQ(map.Capacity(), (count + 9) / 10 * 10) << count << " pairs";
    }
    for (std::size_t number = 1; number <= 31; ++number) {
        EXPECT_EQ(map.Find(Key(number)), objects.At(number));
    }
}

TEST(WindowMap, ShrinksByTenAtFifteenFree) {
    Objects objects;
    WindowMap map;
    for (std::size_t number = 1; number <= 31; ++number) {
        map.Insert(Key(number), objects.At(number));
    }
    for (std::int32_t count = 30; count >= 0; --count) {
        ASSERT_EQ(map.Remove(Key(static_cast<std::uintptr_t>(count) + 1)), 1);
        const std::int32_t expected = count > 25 ? 40 : count > 15 ? 30 : count > 5 ? 20 : 10;
        EXPECT_EQ(map.Capacity(), expected) << count << " pairs";
        if (count > 0) {
            EXPECT_EQ(map.Lookup(Key(static_cast<std::uintptr_t>(count))), count - 1);
        }
    }
}

TEST(WindowMap, TheProcessHasOneOnlyWhileItIsNotEmpty) {
    Objects objects;
    ASSERT_EQ(WindowMap::Current(), nullptr);
    WindowMap::DestroyIfEmpty();
    WindowMap& map = WindowMap::Ensure();
    EXPECT_EQ(&WindowMap::Ensure(), &map);
    map.Insert(Key(1), objects.At(0));
    WindowMap::DestroyIfEmpty();
    EXPECT_EQ(WindowMap::Current(), &map);
    map.Remove(Key(1));
    WindowMap::DestroyIfEmpty();
    EXPECT_EQ(WindowMap::Current(), nullptr);
}

}  // namespace
}  // namespace lunara::test
