#include "records/collections.h"

#include <algorithm>
#include <limits>

namespace lunara {
namespace {

constexpr std::int32_t ShrinkAtFree = 15;

/// The sort key of a date. Keys compare as signed numbers, so a damaged key with the top bit set
/// comes first; every valid key is positive.
std::int32_t Order(DateKey key) { return static_cast<std::int32_t>(key); }

template <typename Record>
bool IsEarlier(const Record& a, const Record& b) {
    return Order(a.date) < Order(b.date);
}

/// Index of the record with this key in `count` ascending records, or -1.
template <typename Record>
std::int32_t BinarySearch(const Record* records, std::int32_t count, DateKey key) {
    std::int32_t low = 0;
    std::int32_t high = count - 1;
    while (low <= high) {
        const std::int32_t middle = (low + high) / 2;
        if (records[middle].date == key) {
            return middle;
        }
        if (Order(key) < Order(records[middle].date)) {
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    }
    return -1;
}

/// Index of the record with this key in `count` ascending records, or -1. A key outside their range
/// costs two comparisons instead of a binary search.
template <typename Record>
std::int32_t SearchRun(const Record* records, std::int32_t count, DateKey key) {
    if (count == 0 || Order(key) < Order(records[0].date) ||
        Order(key) > Order(records[count - 1].date)) {
        return -1;
    }
    return BinarySearch(records, count, key);
}

}  // namespace

// ---- RecordArray ----

template <typename Record>
bool RecordArray<Record>::Reallocate(std::int64_t wanted) {
    if (wanted > std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    void* block = std::realloc(records, static_cast<std::size_t>(wanted) * sizeof(Record));
    if (block == nullptr) {
        return false;
    }
    records = static_cast<Record*>(block);
    allocated = static_cast<std::int32_t>(wanted);
    return true;
}

template <typename Record>
int RecordArray<Record>::Resize(std::int32_t wanted, std::int32_t inUse) {
    if (wanted <= 0) {
        Adopt(nullptr, 0);
        return 1;
    }
    if (wanted > allocated) {
        const std::int64_t generous = std::int64_t{allocated} + allocated / 2;
        if (!(generous > wanted && Reallocate(generous)) && !Reallocate(wanted)) {
            return 0;
        }
    } else if (wanted < allocated / 4) {
        Reallocate(wanted);  // a failure to shrink is harmless
    }
    std::fill(records + inUse, records + wanted, Record{});
    return 1;
}

template <typename Record>
int RecordArray<Record>::Renew(std::int32_t wanted) {
    if (wanted <= allocated && wanted >= allocated / 4) {
        return 1;
    }
    auto* block =
        static_cast<Record*>(std::malloc(static_cast<std::size_t>(wanted) * sizeof(Record)));
    if (block == nullptr) {
        return 0;
    }
    Adopt(block, wanted);
    return 1;
}

template <typename Record>
void RecordArray<Record>::Adopt(Record* block, std::int32_t allocatedRecords) {
    std::free(records);
    records = block;
    allocated = allocatedRecords;
}

// ---- DateSortedList ----

template <typename Record>
std::int32_t DateSortedList<Record>::Find(DateKey key) const {
    if (unsorted) {
        Sort();
    }
    return BinarySearch(array.Data(), count, key);
}

template <typename Record>
std::int32_t DateSortedList<Record>::FindUnsorted(DateKey key) const {
    const Record* records = array.Data();
    const std::int32_t inPrefix = SearchRun(records, sortedCount, key);
    if (inPrefix >= 0) {
        return inPrefix;
    }
    const Record* tail = records + sortedCount;
    const std::int32_t tailCount = count - sortedCount;
    if (tailAscends) {
        const std::int32_t inTail = SearchRun(tail, tailCount, key);
        return inTail < 0 ? -1 : sortedCount + inTail;
    }
    const Record* match = std::find_if(tail, tail + tailCount,
                                       [key](const Record& record) { return record.date == key; });
    return match == tail + tailCount ? -1 : static_cast<std::int32_t>(match - records);
}

template <typename Record>
int DateSortedList<Record>::SetAnywhere(const Record& record) {
    const std::int32_t existing = FindUnsorted(record.date);
    if (existing >= 0) {
        array.Data()[existing] = record;
        return 1;
    }
    if (count + 1 > capacity && Reserve(capacity + SortedListStep) == 0) {
        return 0;
    }
    Record* records = array.Data();
    const bool ascends = count == 0 || IsEarlier(records[count - 1], record);
    if (count == sortedCount) {
        sortedCount += ascends ? 1 : 0;
    } else {
        tailAscends = tailAscends && ascends;
    }
    records[count++] = record;
    unsorted = true;
    return 1;
}

template <typename Record>
int DateSortedList<Record>::Remove(DateKey key) {
    const std::int32_t index = Find(key);
    if (index < 0) {
        return 0;
    }
    Record* records = array.Data();
    std::copy(records + index + 1, records + count, records + index);
    --count;
    sortedCount = count;
    if (capacity - count >= ShrinkAtFree) {
        Reserve(capacity - SortedListStep);
    }
    return 1;
}

template <typename Record>
int DateSortedList<Record>::RemoveAt(std::int32_t index) {
    if (index < 0 || index >= count) {
        return 0;
    }
    if (Remove(At(index).date) == 0) {
        return 0;
    }
    dirty = true;
    return 1;
}

template <typename Record>
void DateSortedList<Record>::Sort() const {
    Record* records = array.Data();
    if (!tailAscends) {
        std::sort(records, records + count, IsEarlier<Record>);
    } else if (sortedCount < count) {
        std::inplace_merge(records, records + sortedCount, records + count, IsEarlier<Record>);
    }
    sortedCount = count;
    tailAscends = true;
    unsorted = false;
}

template <typename Record>
int DateSortedList<Record>::Reserve(std::int32_t n) {
    if (n < count || array.Resize(n, count) == 0) {
        return 0;
    }
    capacity = n;
    return 1;
}

template <typename Record>
void DateSortedList<Record>::Clear() {
    Adopt(nullptr, 0, 0);
    dirty = false;
}

template <typename Record>
void DateSortedList<Record>::Adopt(Record* block, std::int32_t newCount, std::int32_t newCapacity) {
    array.Adopt(block, newCapacity);
    count = newCount;
    capacity = newCapacity;
    sortedCount = newCount;
    tailAscends = true;
    unsorted = false;
    dirty = false;
}

template <typename Record>
Record* DateSortedList<Record>::BeginFill(std::int32_t most) {
    const bool hasRoom = most > 0 && array.Renew(most) != 0;
    if (!hasRoom) {
        Clear();
        return nullptr;
    }
    count = 0;
    capacity = most;
    EndFill(0);
    return array.Data();
}

template <typename Record>
void DateSortedList<Record>::EndFill(std::int32_t filled) {
    count = filled;
    sortedCount = filled;
    tailAscends = true;
    unsorted = false;
}

template <typename Record>
void DateSortedList<Record>::Swap(DateSortedList& other) {
    array.Swap(other.array);
    std::swap(count, other.count);
    std::swap(capacity, other.capacity);
    std::swap(unsorted, other.unsorted);
    std::swap(sortedCount, other.sortedCount);
    std::swap(tailAscends, other.tailAscends);
}

// ---- SteppedList ----

template <typename Record>
int SteppedList<Record>::GrowFor(std::int32_t index) {
    if (index >= capacity) {
        const std::int64_t wanted =
            (std::int64_t{index} + growthStep) / growthStep * growthStep;  // > index
        if (wanted > std::numeric_limits<std::int32_t>::max() ||
            array.Resize(static_cast<std::int32_t>(wanted), count) == 0) {
            return 0;
        }
        capacity = static_cast<std::int32_t>(wanted);
    }
    count = std::max(count, index + 1);
    return 1;
}

template <typename Record>
std::int32_t SteppedList<Record>::GetAt(std::int32_t index, Record& record) {
    if (index < 0 || GrowFor(index) == 0) {
        return 0;
    }
    record = array.Data()[index];
    return index + 1;
}

template <typename Record>
std::int32_t SteppedList<Record>::SetAtEnd(std::int32_t index, const Record& record) {
    const Record copy = record;  // `record` may alias the array, which GrowFor may move
    if (index < 0 || GrowFor(index) == 0) {
        return 0;
    }
    array.Data()[index] = copy;
    return index + 1;
}

template <typename Record>
void SteppedList<Record>::RemoveAt(std::int32_t index) {
    if (index < 0 || index >= count) {
        return;
    }
    Record* records = array.Data();
    std::copy(records + index + 1, records + count, records + index);
    --count;
    if (count + growthStep <= capacity && array.Resize(capacity - growthStep, count) != 0) {
        capacity -= growthStep;
    }
}

template <typename Record>
int SteppedList<Record>::SetSize(std::int32_t n) {
    const std::int64_t wanted = (std::int64_t{growthStep} + n - 1) / growthStep * growthStep;
    if (n < 0 || wanted > std::numeric_limits<std::int32_t>::max() ||
        array.Resize(static_cast<std::int32_t>(wanted), std::min(count, n)) == 0) {
        return 0;
    }
    capacity = static_cast<std::int32_t>(wanted);
    count = n;
    return 1;
}

template <typename Record>
void SteppedList<Record>::Clear() {
    Adopt(nullptr, 0, 0);
}

template <typename Record>
void SteppedList<Record>::Adopt(Record* block, std::int32_t newCount, std::int32_t newCapacity) {
    array.Adopt(block, newCapacity);
    count = newCount;
    capacity = newCapacity;
}

template <typename Record>
void SteppedList<Record>::Swap(SteppedList& other) {
    array.Swap(other.array);
    std::swap(count, other.count);
    std::swap(capacity, other.capacity);
}

// ---- NotePageList ----

std::int32_t NotePageList::FindFirst(DateKey key, NotePage& page) const {
    const NotePage* match =
        std::find_if(begin(), end(), [key](const NotePage& next) { return next.date == key; });
    if (match == end()) {
        return -1;
    }
    page = *match;
    return static_cast<std::int32_t>(match - begin());
}

int NotePageList::AppendText(DateKey key, const WCHAR* text, std::int32_t length) {
    const std::int32_t pages = length / NotePageUnits + 1;
    const std::int32_t oldCount = Count();
    for (std::int32_t i = 0; i < pages; ++i) {
        NotePage page{};
        page.date = key;
        const std::int32_t first = i * NotePageUnits;
        std::copy(text + first, text + std::min(first + NotePageUnits, length), page.text);
        if (SetAt(Count(), page) == 0) {
            while (Count() > oldCount) {
                RemoveAt(Count() - 1);
            }
            return 0;
        }
    }
    return 1;
}

std::int32_t NotePageList::RemoveText(DateKey key) {
    NotePage page{};
    const std::int32_t first = FindFirst(key, page);
    const std::int32_t pages = CountPages(key, first);
    for (std::int32_t i = 0; i < pages; ++i) {
        RemoveAt(first);
    }
    return pages;
}

int NotePageList::ReplaceText(DateKey key, const WCHAR* text, std::int32_t length) {
    NotePage page{};
    const std::int32_t first = FindFirst(key, page);
    const std::int32_t pages = CountPages(key, first);  // counted before new ones may follow
    if (AppendText(key, text, length) == 0) {
        return 0;
    }
    for (std::int32_t i = 0; i < pages; ++i) {
        RemoveAt(first);
    }
    return 1;
}

std::int32_t NotePageList::CountPages(DateKey key, std::int32_t first) const {
    std::int32_t pages = 0;
    while (first >= 0 && first + pages < Count() && At(first + pages).date == key) {
        ++pages;
    }
    return pages;
}

WCHAR* NotePageList::CopyText(DateKey key) const {
    NotePage page{};
    const std::int32_t first = FindFirst(key, page);
    const std::int32_t pages = CountPages(key, first);
    if (pages == 0) {
        return nullptr;
    }
    const auto units = static_cast<std::size_t>(pages) * NotePageUnits;
    auto* text = new WCHAR[units];
    for (std::int32_t i = 0; i < pages; ++i) {
        std::copy_n(At(first + i).text, NotePageUnits, text + std::int64_t{i} * NotePageUnits);
    }
    text[units - 1] = 0;
    return text;
}

template class RecordArray<DayValue>;
template class RecordArray<DayFlagsEntry>;
template class DateSortedList<DayValue>;
template class DateSortedList<DayFlagsEntry>;
template class SteppedList<NotePage>;
template class SteppedList<std::int32_t>;
template class SteppedList<CycleRecord>;

}  // namespace lunara
