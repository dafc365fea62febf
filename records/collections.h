#pragma once

// The record types of the diary, and the date-sorted and plain lists that hold them in memory.
//
// Counts and capacities are signed 32-bit; every list owns its array. `Capacity()` follows fixed
// growth steps (a date-sorted list grows by 10, and shrinks by 10 once 15 are free), while the
// allocation behind it grows geometrically, so that filling a list of n records costs O(n).

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <utility>

#include "records/dates.h"

namespace lunara {

/// The temperature value, in hundredths of a degree Fahrenheit, that means "nothing recorded". It
/// lies in the range of real temperatures, so a measured 97.50 cannot be recorded.
inline constexpr std::int32_t NoTemperature = 9750;
/// The temperatures, in hundredths of a degree Fahrenheit and both valid, between which the program
/// takes an entry. A file may hold any other number.
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

/// One day and its value: 8 bytes, little-endian, the same in memory and in the data files.
struct DayValue {
    DateKey date;
    std::int32_t value;
};
static_assert(sizeof(DayValue) == 8);

/// One page of a day's note, padded with zeros. A full page has no terminator. 72 bytes.
struct NotePage {
    DateKey date;
    WCHAR text[NotePageUnits];
};
static_assert(sizeof(NotePage) == 72);

/// The status flags of one day (cycle/day_status.h), and the index of its text's first argument in
/// `CyclePredictor::dayFlagArgs`.
struct DayFlagsEntry {
    DateKey date;
    std::uint32_t flags;
    std::int32_t argIndex;
};
static_assert(sizeof(DayFlagsEntry) == 12);

/// A period found in the bleeding records and the cycle that it opens.
struct CycleRecord {
    std::int32_t periodLength;  // days from first to last bleeding day, gaps counted
    std::int32_t cycleLength;   // days to the next period's start; 37 for the open cycle
    DateKey start;              // first bleeding day
};
static_assert(sizeof(CycleRecord) == 12);

/// Owns an array of trivially copyable records. The allocation may be larger than the capacity that
/// the owning list reports.
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

    /// Exchanges the arrays without copying a record.
    void Swap(RecordArray& other) {
        std::swap(records, other.records);
        std::swap(allocated, other.allocated);
    }

    /// Makes room for `wanted` records (<= 0 frees the array), keeps the first `inUse` and zeroes
    /// the rest. Keeps a larger allocation unless `wanted` is below a quarter of it. Returns 0,
    /// with nothing changed, when memory is short; else 1.
    int Resize(std::int32_t wanted, std::int32_t inUse);

    /// Makes room for `wanted` records (> 0) of undefined content; nothing is kept. Returns 0, with
    /// nothing changed, when memory is short; else 1.
    int Renew(std::int32_t wanted);

    /// Takes ownership of `block`, from malloc, with room for `allocatedRecords`, and frees the old
    /// array. Null and 0 leave the array empty.
    void Adopt(Record* block, std::int32_t allocatedRecords);

  private:
    bool Reallocate(std::int64_t wanted);

    Record* records = nullptr;
    std::int32_t allocated = 0;
};

/// Records with unique dates. Appended records stay in order of entry until the next `Find` or
/// `Sort` puts the list into date order: one sort for a whole batch of appends.
///
/// The order is a cache, so both work on a const list. They move the records: an index or iterator
/// from before them is stale, and two threads must not share a list, not even to read it.
/// Instantiated for DayValue (`DayValueList`) and DayFlagsEntry (`DayTripleList`).
template <typename Record>
class DateSortedList {
  public:
    DateSortedList() = default;
    DateSortedList(const DateSortedList&) = delete;
    DateSortedList& operator=(const DateSortedList&) = delete;
    virtual ~DateSortedList() = default;

    /// Index of the date's record in date order, or -1. Sorts the list first when needed.
    std::int32_t Find(DateKey key) const;

    /// Replaces the record of the same date in place, or appends. Leaves `dirty` alone. Returns 0,
    /// with nothing changed, when memory for one more record is short; else 1.
    int Set(const Record& record) {
        // Fast path: most records arrive in date order and are appended without a search.
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

    /// Removes the date's record and leaves `dirty` alone; 0 when there is none. Sorts first.
    int Remove(DateKey key);

    /// Removes the record at `index` of the current order and sets `dirty`; 0 when `index` is not
    /// in [0, count). Sorts the rest.
    int RemoveAt(std::int32_t index);

    /// Orders the records by date and clears the unsorted mark.
    void Sort() const;

    /// Sets the capacity to exactly `n`. Returns 0, with everything kept, when n < count or memory
    /// is short.
    int Reserve(std::int32_t n);

    /// Frees the array and resets count, capacity, the unsorted mark and `dirty`.
    void Clear();

    /// Takes ownership of `block`, from malloc: `newCount` records in ascending date order, with
    /// room for `newCapacity`. Frees the old array and clears the unsorted mark and `dirty`.
    void Adopt(Record* block, std::int32_t newCount, std::int32_t newCapacity);

    /// Empties the list, makes room for `most` records and returns the array. The caller fills it
    /// in ascending date order and passes the number of records to `EndFill`. For lists that are
    /// computed as a whole: reuses the allocation and searches nothing. Null when memory is short
    /// or `most` is 0; the list is then empty and must not be filled.
    Record* BeginFill(std::int32_t most);
    /// Makes the first `filled` records of the array the content. EndFill(0) empties the list and
    /// keeps its allocation.
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

    /// Overwrites the record at `index`, in [0, count), by one of the same date.
    void ReplaceAt(std::int32_t index, const Record& record) { array.Data()[index] = record; }

    /// Set while the content differs from the data file. Only file-backed lists use it: the data
    /// set and `RemoveAt` set it; a save, a load, `Clear` and `Adopt` clear it.
    bool dirty = false;

  private:
    int SetAnywhere(const Record& record);
    std::int32_t FindUnsorted(DateKey key) const;

    mutable RecordArray<Record> array;
    std::int32_t count = 0;
    std::int32_t capacity = 0;
    mutable bool unsorted = false;
    // Invariant that spares `Set` a scan: records [0, sortedCount) ascend, and while `tailAscends`
    // records [sortedCount, count) ascend among themselves.
    mutable std::int32_t sortedCount = 0;
    mutable bool tailAscends = true;
};

/// Plain records in order of entry, with a capacity that grows by a fixed step. Instantiated for
/// NotePage, std::int32_t (`IndexList`) and CycleRecord.
template <typename Record>
class SteppedList {
  public:
    explicit SteppedList(std::int32_t step) : growthStep(step) {}
    SteppedList(const SteppedList&) = delete;
    SteppedList& operator=(const SteppedList&) = delete;
    virtual ~SteppedList() = default;

    /// Copies the record at `index` to `record`. An index at or past the capacity grows it to
    /// ((index + step) / step) * step, zero-filled; a count of `index` or less becomes index + 1.
    /// Returns index + 1; 0 for a negative index or when memory is short.
    std::int32_t GetAt(std::int32_t index, Record& record);
    /// Copies `record` to `index`, and grows capacity and count like `GetAt`. Returns `index` + 1;
    /// 0 for a negative index or when memory is short.
    std::int32_t SetAt(std::int32_t index, const Record& record) {
        if (index < 0 || index >= count) {
            return SetAtEnd(index, record);
        }
        array.Data()[index] = record;
        return index + 1;
    }

    /// Removes the record at `index`, if it is in [0, count), and gives back one step of capacity
    /// once that much is free.
    void RemoveAt(std::int32_t index);

    /// Sets the count to `n` and the capacity to `n` rounded up to a multiple of the step; new
    /// records are zero. Returns 0, with nothing changed, when n < 0 or memory is short; else 1.
    int SetSize(std::int32_t n);

    /// Frees the array and resets count and capacity. Leaves `dirty` alone.
    void Clear();

    /// Takes ownership of `block`, from malloc: `newCount` records, with room for `newCapacity`.
    /// Frees the old array and leaves `dirty` alone.
    void Adopt(Record* block, std::int32_t newCount, std::int32_t newCapacity);

    /// Exchanges the records of two lists of the same growth step; each keeps its `dirty` flag.
    void Swap(SteppedList& other);

    std::int32_t GrowthStep() const { return growthStep; }
    std::int32_t Count() const { return count; }
    std::int32_t Capacity() const { return capacity; }
    const Record& At(std::int32_t index) const { return array.Data()[index]; }
    const Record* begin() const { return array.Data(); }
    const Record* end() const { return array.Data() + count; }

    /// Set while the content differs from the data file. Only the note pages use it; the list
    /// itself never changes it.
    bool dirty = false;

  private:
    std::int32_t SetAtEnd(std::int32_t index, const Record& record);
    int GrowFor(std::int32_t index);

    std::int32_t growthStep;
    std::int32_t count = 0;
    std::int32_t capacity = 0;
    RecordArray<Record> array;
};

/// Days and their values, with a shorthand to set one.
class DayValueList : public DateSortedList<DayValue> {
  public:
    using DateSortedList::Set;
    int Set(DateKey key, std::int32_t value) { return Set(DayValue{key, value}); }
};

/// Days with their status flags and the index of their text's arguments.
using DayTripleList = DateSortedList<DayFlagsEntry>;

using IndexList = SteppedList<std::int32_t>;
using CycleRecordList = SteppedList<CycleRecord>;

/// The pages of all notes. A day's pages are adjacent and in text order; days are in order of
/// entry.
class NotePageList : public SteppedList<NotePage> {
  public:
    using SteppedList::SteppedList;

    /// Copies the day's first page to `page` and returns its index; -1, with `page` left alone,
    /// when the day has none.
    std::int32_t FindFirst(DateKey key, NotePage& page) const;

    /// Appends the text as length / 34 + 1 pages, so that the last one always holds a terminator.
    /// Returns 0, with nothing stored, when memory is short; else 1.
    int AppendText(DateKey key, const WCHAR* text, std::int32_t length);

    /// Removes the day's pages and returns how many there were.
    std::int32_t RemoveText(DateKey key);

    /// Appends pages with the new text, then removes the day's old pages. Returns 0, with the old
    /// pages kept, when memory is short; else 1.
    int ReplaceText(DateKey key, const WCHAR* text, std::int32_t length);

    /// Returns the day's text in a new array that the caller frees with delete[], or null when the
    /// day has no page. The last unit is always 0, even when the last page is full.
    WCHAR* CopyText(DateKey key) const;

  private:
    /// Number of adjacent pages of the day from `first` on; 0 when `first` is -1.
    std::int32_t CountPages(DateKey key, std::int32_t first) const;
};

extern template class DateSortedList<DayValue>;
extern template class DateSortedList<DayFlagsEntry>;
extern template class SteppedList<NotePage>;
extern template class SteppedList<std::int32_t>;
extern template class SteppedList<CycleRecord>;

}  // namespace lunara
