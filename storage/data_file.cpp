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

// Records are read and deciphered in pieces that stay in the processor's cache, and a wrong
// password is found out at the first of them.
constexpr std::size_t ReadBytes = std::size_t{128} * 1024;
constexpr std::size_t ScratchBytes = std::size_t{32} * 1024;

// With one record a day at most, no file of day values can hold more and still be in order.
constexpr std::int64_t MostDayValues = std::int64_t{LastRecordYear - FirstRecordYear + 1} * 12 * 31;

int Refuse(DWORD error) {
    ::SetLastError(error);
    return 0;
}

/// The cipher with a password's key, or nothing at all for an empty password. The state is wiped at
/// its end.
class RecordCipher {
  public:
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the state is set when it is used
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

    // A record is a whole number of blocks and blocks do not depend on each other, so that any
    // number of records is done at once.
    void Encipher(void* records, std::size_t bytes) const { EncipherBlocks(state, records, bytes); }
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

class InputFile {
  public:
    explicit InputFile(const WCHAR* path)
        : file(::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {}
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() {
        if (IsOpen()) {
            // The reason of a refusal outlives the closing of its file.
            const DWORD error = ::GetLastError();
            ::CloseHandle(file);
            ::SetLastError(error);
        }
    }

    bool IsOpen() const { return file != INVALID_HANDLE_VALUE; }

    /// Bytes read, up to `bytes`; false on a reading error.
    bool Read(void* buffer, std::size_t bytes, std::size_t& got) const {
        DWORD read = 0;
        const BOOL done = ::ReadFile(file, buffer, static_cast<DWORD>(bytes), &read, nullptr);
        got = read;
        return done != FALSE;
    }

    /// -1 when the system does not know it.
    std::int64_t Size() const {
        LARGE_INTEGER size{};
        return ::GetFileSizeEx(file, &size) != FALSE ? size.QuadPart : -1;
    }

  private:
    HANDLE file;
};

/// Memory for records, wiped and freed at its end unless a list took it over.
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

    /// False without memory.
    bool Allocate(std::int64_t newCapacity) {
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

    template <typename List>
    void HandTo(List& list) {
        std::fill(records + used, records + capacity, Record{});
        list.Adopt(records, used, capacity);
        records = nullptr;
    }

    Record* records = nullptr;
    std::int32_t used = 0;
    std::int32_t capacity = 0;
};

// What a file may hold depends on its kind of record: day values ascend, pages do not.

constexpr std::int64_t MostRecords(const DayValue* /*kind*/) { return MostDayValues; }
constexpr std::int64_t MostRecords(const NotePage* /*kind*/) {
    return std::numeric_limits<std::int32_t>::max();
}

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
void SortForSave(NotePageList& /*list*/) {}  // pages keep the order of entry

/// Reads the header and counts the records behind it. 0 when the file is refused.
int ReadHeader(const InputFile& file, std::size_t recordBytes, std::int64_t& count) {
    unsigned char header[sizeof(Header)] = {};
    std::size_t got = 0;
    if (!file.Read(header, sizeof(header), got)) {
        return Refuse(DataFileCorrupt);
    }
    if (got < sizeof(header)) {
        return Refuse(ERROR_SUCCESS);  // too short to say what it is: no code of its own
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

/// Reads, deciphers and checks `count` records.
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
    ::SetLastError(ERROR_SUCCESS);  // so that a short header does not report an earlier error
    const InputFile file(path);
    if (!file.IsOpen()) {
        const DWORD error = ::GetLastError();
        if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) {
            return Refuse(
                DataFileCorrupt);  // it is there: taken as missing, it would be overwritten
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

/// Records on their way through the cipher, wiped at the end.
template <typename Record>
struct Scratch {
    static constexpr std::size_t Capacity = ScratchBytes / sizeof(Record);

    Scratch() = default;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled before use
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() { ::SecureZeroMemory(records, used * sizeof(Record)); }

    Record records[Capacity];
    std::size_t used = 0;
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
    return WriteRecords(file, list.begin(), count, password) != 0 && file.Complete() != 0 ? 1 : 0;
}

template <typename List>
int SaveList(List& list, const WCHAR* path, const WCHAR* password) {
    if (!list.dirty) {
        return 1;
    }
    if (list.Count() == 0) {
        // Whatever comes of it: an empty diary has nothing to lose. A sibling that a crash left
        // behind may hold what has been deleted since.
        CurrentFileCalls().Remove(path);
        CurrentFileCalls().Remove(SiblingPath(path).c_str());
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

int SaveDayValues(DayValueList& list, const WCHAR* path, const WCHAR* password) {
    return SaveList(list, path, password);
}

int LoadNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return LoadList<NotePage>(list, path, password);
}

int SaveNotePages(NotePageList& list, const WCHAR* path, const WCHAR* password) {
    return SaveList(list, path, password);
}

int WriteDayValues(DayValueList& list, ReplacementFile& file, const WCHAR* password) {
    return WriteList(list, file, password);
}

int WriteNotePages(NotePageList& list, ReplacementFile& file, const WCHAR* password) {
    return WriteList(list, file, password);
}

}  // namespace lunara
