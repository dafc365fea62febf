#pragma once

// The record types of the diary and the sorted and plain collections that hold them in memory.
//
// Counts and capacities are signed 32-bit; every collection owns its array. `capacity` follows the
// stated growth steps (10 up, 10 down once 15 are free), while the memory behind it grows
// geometrically, so that filling a list of n records costs O(n).

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <utility>

#include "records/dates.h"

namespace lunara {

// Values of a day. The none-value of a collection stands for a day without a record: setting it
// deletes the record.

/// Basal temperature in hundredths of a degree Fahrenheit: the none-value, and the range in which
/// the program takes an entry (both ends included). A file may hold any other number.
inline constexpr std::int32_t NoTemperature = 9750;
inline constexpr std::int32_t LowestTemperature = 9500;
inline constexpr std::int32_t HighestTemperature = 10000;

/// Bleeding: the none-value, and the heaviest of the levels 1..3 that the program records. A file
/// may hold any other number.
inline constexpr std::int32_t NoBleeding = 0;
inline constexpr std::int32_t HeaviestBleeding = 3;

/// Note flag bits, and the none-value.
inline constexpr std::int32_t NoNoteFlags = 0;
inline constexpr std::int32_t NoteFlagCramps = 1;
inline constexpr std::int32_t NoteFlagPms = 2;

/// UTF-16 units of note text in one page.
inline constexpr std::int32_t NotePageUnits = 34;

/// Longest note that the program takes, in UTF-16 units, and the buffer that holds it with its
/// terminator. A file may hold a longer one.
inline constexpr std::int32_t MaxNoteUnits = 127;
inline constexpr std::int32_t NoteTextCapacity = MaxNoteUnits + 1;

/// Days of a period that counts, both ends included.
inline constexpr std::int32_t ShortestPeriod = 2;
inline constexpr std::int32_t LongestPeriod = 7;

/// Records by which the capacity of a sorted list grows and shrinks.
inline constexpr std::int32_t SortedListStep = 10;

/// One day and its value; 8 bytes, little-endian, the same in memory and in the data files.
struct DayValue {
    DateKey date;
    std::int32_t value;
};
static_assert(sizeof(DayValue) == 8);

/// One piece of a day's note, zero-padded; not terminated when the piece is full. 72 bytes.
struct NotePage {
    DateKey date;
    WCHAR text[NotePageUnits];
};
static_assert(sizeof(NotePage) == 72);

/// The status flags of one day (see cycle/day_status.h) and where its text's arguments begin.
struct DayFlagsEntry {
    DateKey date;
    std::uint32_t flags;
    std::int32_t argIndex;
};
static_assert(sizeof(DayFlagsEntry) == 12);

/// One period found in the bleeding records and the cycle that it opens.
struct CycleRecord {
    std::int32_t periodLength;  // days from first to last bleeding day, gaps counted
    std::int32_t cycleLength;   // days to the next period's start; 37 for the open cycle
    DateKey start;              // first bleeding day
};
static_assert(sizeof(CycleRecord) == 12);

/// An owned array of plain records whose stated capacity and real allocation differ.
template <typename Record>
class RecordArray {
    static_assert(std::is_trivially_copyable_v<Record>);

  public:
    RecordArray() = default;
    RecordArray(const RecordArray&) = delete;
    RecordArray& operator=(const RecordArray&) = delete;
    ~RecordArray() { std::free(records); }

    Record* Data() { return records; }
    const Record* Data() const { return records; }

    void Swap(RecordArray& other) {
        std::swap(records, other.records);
        std::swap(allocated, other.allocated);
    }

    /// Makes room for `wanted` records, of which the first `inUse` are kept and the rest is zero. 0
    /// (nothing changed) without memory.
    int Resize(std::int32_t wanted, std::int32_t inUse);

    /// Makes room for `wanted` records without keeping any. 0 (nothing changed) without memory.
    int Renew(std::int32_t wanted);

    /// Takes over `block`, allocated with malloc for `allocatedRecords`, and frees the old array.
    void Adopt(Record* block, std::int32_t allocatedRecords);

  private:
    bool Reallocate(std::int64_t wanted);

    Record* records = nullptr;
    std::int32_t allocated = 0;
};

/// Records keyed by a unique date. Appended records stay in order of entry until the next `Find` or
/// `Sort` puts the list into date order: one sort for a whole batch of appends.
///
/// That order is a cache, which is why both work on a const list. They move the records, so an
/// index or an iterator from before them is stale, and two threads must not share a list, not even
/// to read it. Instantiated for DayValue (`DayValueList`) and DayFlagsEntry (`DayTripleList`).
template <typename Record>
class DateSortedList {
  public:
    DateSortedList() = default;
    DateSortedList(const DateSortedList&) = delete;
    DateSortedList& operator=(const DateSortedList&) = delete;
    virtual ~DateSortedList() = default;

    /// Index of the date's record in date order, or -1. Sorts first when needed.
    std::int32_t Find(DateKey key) const;

    /// Replaces the record of the same date where it stands, or appends. Leaves `dirty` alone.
    /// Without memory for one more record nothing changes and 0 comes back, else 1.
    int Set(const Record& record) {
        // Lists are mostly filled in date order: such a record goes to the end without a search.
        if (sortedCount == count && count > 0 && count < capacity &&
            static_cast<std::int32_t>(array.Data()[count - 1].date) <
                static_cast<std::int32_t>(record.date)) {
            array.Data()[count] = record;
            sortedCount = ++count;
            unsorted = true;
            return 1;
        }
        return SetAnywhere(record);
    }

    /// Removes the date's record; 0 when there is none.
    int Remove(DateKey key);

    /// Removes the record at `index` and sets `dirty`; 0 when `index` is not in [0, count).
    int RemoveAt(std::int32_t index);

    /// Orders the records by date and clears `unsorted`.
    void Sort() const;

    /// Sets the capacity to exactly `n` (n >= count); 0 without memory, all kept.
    int Reserve(std::int32_t n);

    /// Frees everything; count, capacity, `unsorted` and `dirty` become 0.
    void Clear();

    /// Takes over `count` records in ascending date order, in a block from malloc that holds
    /// `capacity`. The flags are clear afterwards.
    void Adopt(Record* block, std::int32_t newCount, std::int32_t newCapacity);

    /// Makes the list empty with room for `most` records and returns where the caller may write
    /// them, in ascending date order, before `EndFill` says how many they are. For lists that are
    /// computed as a whole: memory is used again and nothing is searched. Null without memory; the
    /// list is then empty and must not be filled.
    Record* BeginFill(std::int32_t most);
    void EndFill(std::int32_t filled);

    /// Exchanges the records of the two lists; each keeps its `dirty` flag.
    void Swap(DateSortedList& other);

    std::int32_t Count() const { return count; }
    std::int32_t Capacity() const { return capacity; }
    bool IsUnsorted() const { return unsorted; }

    /// The record at `index`, in [0, count).
    const Record& At(std::int32_t index) const { return array.Data()[index]; }
    const Record* begin() const { return array.Data(); }
    const Record* end() const { return array.Data() + count; }

    /// Overwrites all but the date of the record at `index`, in [0, count).
    void ReplaceAt(std::int32_t index, const Record& record) { array.Data()[index] = record; }

    /// The content differs from the data file. Only the file-backed lists use it: the data set and
    /// `RemoveAt` set it, a save, a load and `Clear` clear it.
    bool dirty = false;

  private:
    int SetAnywhere(const Record& record);
    std::int32_t FindUnsorted(DateKey key) const;

    mutable RecordArray<Record> array;
    std::int32_t count = 0;
    std::int32_t capacity = 0;
    mutable bool unsorted = false;
    // What is known of the order, so that `Set` need not scan: records [0, sortedCount) ascend, and
    // so do records [sortedCount, count) while `tailAscends`.
    mutable std::int32_t sortedCount = 0;
    mutable bool tailAscends = true;
};

/// Plain records in the order of entry, growing by a fixed step.
/// Instantiated for NotePage, std::int32_t (`IndexList`) and CycleRecord.
template <typename Record>
class SteppedList {
  public:
    explicit SteppedList(std::int32_t step) : growthStep(step) {}
    SteppedList(const SteppedList&) = delete;
    SteppedList& operator=(const SteppedList&) = delete;
    virtual ~SteppedList() = default;

    /// Copies the record at `index` (>= 0) out or in. An index at or past the capacity grows it to
    /// ((index + step) / step) * step, zero-filled; a count of `index` or less becomes index + 1.
    /// Returns index + 1, or 0 without memory. `GetAt` completes the collection's operations; the
    /// program itself does not call it.
    std::int32_t GetAt(std::int32_t index, Record& record);
    std::int32_t SetAt(std::int32_t index, const Record& record) {
        if (index < 0 || index >= count) {
            return SetAtEnd(index, record);
        }
        array.Data()[index] = record;
        return index + 1;
    }

    /// Removes the record at `index`; nothing happens when it is not in [0, count).
    void RemoveAt(std::int32_t index);

    /// Reallocates to ((step + n - 1) / step) * step records, the new ones zero, and sets the count
    /// to n (n >= 0). 0 without memory.
    int SetSize(std::int32_t n);

    /// Frees the array; count and capacity 0. `dirty` is left alone.
    void Clear();

    void Adopt(Record* block, std::int32_t newCount, std::int32_t newCapacity);

    /// Exchanges the records of two lists of the same growth step; each keeps its `dirty` flag.
    void Swap(SteppedList& other);

    std::int32_t GrowthStep() const { return growthStep; }
    std::int32_t Count() const { return count; }
    std::int32_t Capacity() const { return capacity; }
    const Record& At(std::int32_t index) const { return array.Data()[index]; }
    const Record* begin() const { return array.Data(); }
    const Record* end() const { return array.Data() + count; }

    /// As `DateSortedList::dirty`.
    bool dirty = false;

  private:
    std::int32_t SetAtEnd(std::int32_t index, const Record& record);
    int GrowFor(std::int32_t index);

    std::int32_t growthStep;
    std::int32_t count = 0;
    std::int32_t capacity = 0;
    RecordArray<Record> array;
};

/// Days and their values.
class DayValueList : public DateSortedList<DayValue> {
  public:
    using DateSortedList::Set;
    int Set(DateKey key, std::int32_t value) { return Set(DayValue{key, value}); }
};

/// Days and their status flags.
using DayTripleList = DateSortedList<DayFlagsEntry>;

using IndexList = SteppedList<std::int32_t>;
using CycleRecordList = SteppedList<CycleRecord>;

/// The pages of all notes. A day's pages stand one behind the other; days stand in order of entry.
class NotePageList : public SteppedList<NotePage> {
  public:
    using SteppedList::SteppedList;

    /// Index of the day's first page, which is copied out, or -1.
    std::int32_t FindFirst(DateKey key, NotePage& page) const;

    /// Appends the text as length / 34 + 1 pages, so that the last one always holds a terminator.
    /// 0 without memory: nothing is stored then.
    int AppendText(DateKey key, const WCHAR* text, std::int32_t length);

    /// Removes the day's pages; returns how many there were.
    std::int32_t RemoveText(DateKey key);

    /// Appends the text and removes the day's pages that were there. 0 without memory: the day
    /// keeps its old pages then.
    int ReplaceText(DateKey key, const WCHAR* text, std::int32_t length);

    /// The day's text in a new array that the caller frees with delete[]; null when there is none.
    /// The last unit of its last page reads as 0.
    WCHAR* CopyText(DateKey key) const;

  private:
    /// How many pages of the day stand together from `first` on; 0 when that is -1.
    std::int32_t CountPages(DateKey key, std::int32_t first) const;
};

extern template class DateSortedList<DayValue>;
extern template class DateSortedList<DayFlagsEntry>;
extern template class SteppedList<NotePage>;
extern template class SteppedList<std::int32_t>;
extern template class SteppedList<CycleRecord>;

}  // namespace lunara
