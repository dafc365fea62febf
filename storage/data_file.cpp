#include "storage/data_file.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "storage/cipher/cipher.h"
#include "storage/cipher/password_key.h"

namespace lunara {
namespace {

constexpr unsigned char Header[] = {'L', 'U', 0x01, 0x00};
constexpr unsigned NewestVersion = 0x0100;

// Records are read, deciphered and checked in pieces, so that a wrong password costs one piece and
// not the whole file.
constexpr std::size_t ReadBytes = std::size_t{128} * 1024;

// Records are copied, enciphered and written in pieces of this size: the list itself stays plain.
constexpr std::size_t ScratchBytes = std::size_t{32} * 1024;

// Dates ascend and only their ranges are checked, so every month counts as one of 31 days.
constexpr std::int64_t MostDayValues = std::int64_t{LastRecordYear - FirstRecordYear + 1} * 12 * 31;

int Refuse(DWORD error) {
    ::SetLastError(error);
    return 0;
}

/// The cipher under a password's key; inactive for an empty password. Wipes its state when it ends.
class RecordCipher {
  public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): set only when active
    explicit RecordCipher(const WCHAR* password) {
        const DataKey key(password);
        active = *key.Bytes() != 0;
        if (active) {
            InitCipher(state, key.Bytes());
        }
    }
    RecordCipher(const RecordCipher&) = delete;
    RecordCipher& operator=(const RecordCipher&) = delete;
    ~RecordCipher() {
        if (active) {
            ResetCipher(state);
        }
    }

    bool IsActive() const { return active; }

    // Each takes any number of records at once: a record is a whole number of blocks, and blocks do
    // not depend on each other.

    /// Only while active.
    void Encipher(void* records, std::size_t bytes) const { EncipherBlocks(state, records, bytes); }
    /// Does nothing while inactive.
    void Decipher(void* records, std::size_t bytes) const {
        if (active) {
            DecipherBlocks(state, records, bytes);
        }
    }

  private:
    CipherState state;
    bool active = false;
};

static_assert(sizeof(DayValue) % CipherBlockBytes == 0);
static_assert(sizeof(NotePage) % CipherBlockBytes == 0);

/// A file open for reading. Others may read it meanwhile, but not write. Closing keeps the last
/// error, which holds the reason of a refusal.
class InputFile {
  public:
    explicit InputFile(const WCHAR* path)
        : file(::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {}
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() {
        if (IsOpen()) {
            const DWORD error = ::GetLastError();
            ::CloseHandle(file);
            ::SetLastError(error);
        }
    }

    bool IsOpen() const { return file != INVALID_HANDLE_VALUE; }

    /// Reads up to `bytes` bytes and sets `got` to how many they were. False on an error.
    [[nodiscard]] bool Read(void* buffer, std::size_t bytes, std::size_t& got) const {
        DWORD read = 0;
        const BOOL done = ::ReadFile(file, buffer, static_cast<DWORD>(bytes), &read, nullptr);
        got = read;
        return done != FALSE;
    }

    /// In bytes, or -1 when the system cannot tell.
    std::int64_t Size() const {
        LARGE_INTEGER size{};
        return ::GetFileSizeEx(file, &size) != FALSE ? size.QuadPart : -1;
    }

  private:
    HANDLE file;
};

/// Memory for records. Wiped and freed when it ends, unless a list has taken it over.
template <typename Record>
class RecordBlock {
  public:
    RecordBlock() = default;
    RecordBlock(const RecordBlock&) = delete;
    RecordBlock& operator=(const RecordBlock&) = delete;
    ~RecordBlock() {
        if (records != nullptr) {
            ::SecureZeroMemory(records, static_cast<std::size_t>(used) * sizeof(Record));
            std::free(records);
        }
    }

    /// Called once, with newCapacity >= 0. False without memory.
    [[nodiscard]] bool Allocate(std::int64_t newCapacity) {
        if (newCapacity == 0) {
            return true;
        }
        if (static_cast<std::uint64_t>(newCapacity) >
            std::numeric_limits<std::size_t>::max() / sizeof(Record)) {
            return false;
        }
        capacity = static_cast<std::int32_t>(newCapacity);
        records = static_cast<Record*>(
            std::malloc(static_cast<std::size_t>(newCapacity) * sizeof(Record)));
        return records != nullptr;
    }

    /// Gives the first `used` records to the list, whose free records must be zero.
    template <typename List>
    void HandTo(List& list) {
        std::fill(records + used, records + capacity, Record{});
        list.Adopt(records, used, capacity);
        records = nullptr;
    }

    Record* records = nullptr;
    std::int32_t used = 0;  // of `capacity`
    std::int32_t capacity = 0;
};

// The rules for each kind of record: the dates of day values ascend; pages keep the order of entry.

constexpr std::int64_t MostRecords(const DayValue* /*kind*/) { return MostDayValues; }
constexpr std::int64_t MostRecords(const NotePage* /*kind*/) {
    return std::numeric_limits<std::int32_t>::max();
}

// `previous` is null for the first record.

bool MayFollow(const DayValue* previous, const DayValue& next) {
    const std::int32_t before = previous != nullptr ? static_cast<std::int32_t>(previous->date) : 0;
    return IsRecordDate(next.date) && static_cast<std::int32_t>(next.date) > before;
}
bool MayFollow(const NotePage* /*previous*/, const NotePage& next) {
    return IsRecordDate(next.date);
}

std::int32_t CapacityStep(const DayValueList& /*list*/) { return SortedListStep; }
std::int32_t CapacityStep(const NotePageList& list) { return list.GrowthStep(); }

void SortForSave(DayValueList& list) {
    if (list.IsUnsorted()) {
        list.Sort();
    }
}
void SortForSave(NotePageList& /*list*/) {}

/// Checks the header and sets `count` to the number of records behind it. 0 when the file is
/// refused, with the reason in the last error.
int ReadHeader(const InputFile& file, std::size_t recordBytes, std::int64_t& count) {
    unsigned char header[sizeof(Header)] = {};
    std::size_t got = 0;
    if (!file.Read(header, sizeof(header), got)) {
        return Refuse(DataFileCorrupt);
    }
    if (got < sizeof(header)) {
        return Refuse(ERROR_SUCCESS);  // too short to be anything: refused without a reason
    }
    if (header[0] != Header[0] || header[1] != Header[1]) {
        return Refuse(DataFileForeign);
    }
    if ((unsigned{header[2]} << 8 | header[3]) > NewestVersion) {
        return Refuse(DataFileTooNew);
    }
    const std::int64_t bytes = file.Size() - static_cast<std::int64_t>(sizeof(header));
    if (bytes < 0 || bytes % static_cast<std::int64_t>(recordBytes) != 0) {
        return Refuse(DataFileCorrupt);
    }
    count = bytes / static_cast<std::int64_t>(recordBytes);
    return 1;
}

/// Reads, deciphers and checks `count` records into the block, which has room for them. 0 when the
/// file is refused.
template <typename Record>
int ReadRecords(const InputFile& file, std::int32_t count, const WCHAR* password,
                RecordBlock<Record>& block) {
    const RecordCipher cipher(password);
    const Record* previous = nullptr;
    while (block.used < count) {
        Record* piece = block.records + block.used;
        const auto records =
            std::min(count - block.used, static_cast<std::int32_t>(ReadBytes / sizeof(Record)));
        const std::size_t bytes = static_cast<std::size_t>(records) * sizeof(Record);
        std::size_t got = 0;
        block.used += records;
        if (!file.Read(piece, bytes, got) || got < bytes) {
            return Refuse(DataFileCorrupt);
        }
        cipher.Decipher(piece, bytes);
        for (const Record* next = piece; next < piece + records; previous = next++) {
            if (!MayFollow(previous, *next)) {
                return Refuse(DataFileWrongPassword);
            }
        }
    }
    return 1;
}

template <typename Record, typename List>
int LoadList(List& list, const WCHAR* path, const WCHAR* password) {
    list.Clear();
    list.dirty = false;
    ::SetLastError(ERROR_SUCCESS);  // on success, an earlier error must not remain
    const InputFile file(path);
    if (!file.IsOpen()) {
        const DWORD error = ::GetLastError();
        if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) {
            // The file exists. Taken for missing, it would be overwritten by the next save.
            return Refuse(DataFileCorrupt);
        }
        ::SetLastError(DataFileMissing);
        return 1;
    }
    std::int64_t count = 0;
    if (ReadHeader(file, sizeof(Record), count) == 0) {
        return 0;
    }
    const std::int64_t step = CapacityStep(list);
    if (count > std::numeric_limits<std::int32_t>::max() - step) {
        return Refuse(DataFileCorrupt);
    }
    if (count > MostRecords(static_cast<const Record*>(nullptr))) {
        return Refuse(DataFileWrongPassword);
    }
    RecordBlock<Record> block;
    if (!block.Allocate((count + step - 1) / step * step)) {
        return Refuse(DataFileCorrupt);
    }
    if (count > 0) {
        if (ReadRecords(file, static_cast<std::int32_t>(count), password, block) == 0) {
            return 0;
        }
        block.HandTo(list);
    }
    return 1;
}

/// Copies of records on their way through the cipher. Wiped when it ends.
template <typename Record>
struct Scratch {
    static constexpr std::size_t Capacity = ScratchBytes / sizeof(Record);

    Scratch() = default;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled before use
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() { ::SecureZeroMemory(records, used * sizeof(Record)); }

    Record records[Capacity];
    std::size_t used = 0;  // records that ever held a copy
};

template <typename Record>
int WriteRecords(ReplacementFile& file, const Record* records, std::size_t count,
                 const WCHAR* password) {
    const RecordCipher cipher(password);
    if (!cipher.IsActive()) {
        return file.Write(records, count * sizeof(Record));
    }
    Scratch<Record> scratch;
    while (count > 0) {
        const std::size_t piece = std::min(count, Scratch<Record>::Capacity);
        std::copy_n(records, piece, scratch.records);
        scratch.used = std::max(scratch.used, piece);
        cipher.Encipher(scratch.records, piece * sizeof(Record));
        if (file.Write(scratch.records, piece * sizeof(Record)) == 0) {
            return 0;
        }
        records += piece;
        count -= piece;
    }
    return 1;
}

template <typename List>
int WriteList(List& list, ReplacementFile& file, const WCHAR* password) {
    if (file.Create() == 0 || file.Write(Header, sizeof(Header)) == 0) {
        return 0;
    }
    SortForSave(list);
    const auto count = static_cast<std::size_t>(list.Count());
    return WriteRecords(file, list.begin(), count, password) != 0 && file.FlushAndClose() != 0 ? 1
                                                                                               : 0;
}

template <typename List>
int SaveList(List& list, const WCHAR* path, const WCHAR* password) {
    if (!list.dirty) {
        return 1;
    }
    if (list.Count() == 0) {
        RemoveWithSibling(path);
        list.dirty = false;
        return 1;
    }
    ReplacementFile file(path);
    if (WriteList(list, file, password) == 0 || file.PutInPlace() == 0) {
        return 0;
    }
    list.dirty = false;
    return 1;
}

}  // namespace

int LoadDayValues(DayValueList& list, const WCHAR* path, const WCHAR* password) {
    return LoadList<DayValue>(list, path, password);
}

int LoadNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return LoadList<NotePage>(list, path, password);
}

int WriteDayValues(DayValueList& list, ReplacementFile& file, const WCHAR* password) {
    return WriteList(list, file, password);
}

int WriteNotePages(NotePageList& list, ReplacementFile& file, const WCHAR* password) {
    return WriteList(list, file, password);
}

int SaveDayValues(DayValueList& list, const WCHAR* path, const WCHAR* password) {
    return SaveList(list, path, password);
}

int SaveNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return SaveList(list, path, password);
}

}  // namespace lunara
