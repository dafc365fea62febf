#include "storage/data_file.h"

#include <gtest/gtest.h>

#include <functional>

#include "diary/user_data.h"
#include "tests/core/storage/file_support.h"
#include "tests/support/user_data_access.h"

namespace lunara::test {
namespace {

using std::filesystem::path;

constexpr const WCHAR* NoPassword = TEXT("");

/// A last error that no call under test sets.
constexpr DWORD EarlierError = 4242;

void AppendWord(Bytes& bytes, std::uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<unsigned char>(word >> shift));
    }
}

Bytes Header() { return {'L', 'U', 1, 0}; }

/// A file of day values without a password, each value 1.
Bytes PlainDays(std::initializer_list<DateKey> dates) {
    Bytes bytes = Header();
    for (const DateKey date : dates) {
        AppendWord(bytes, date);
        AppendWord(bytes, 1);
    }
    return bytes;
}

/// A file of empty pages without a password.
Bytes PlainPages(std::initializer_list<DateKey> dates) {
    Bytes bytes = Header();
    for (const DateKey date : dates) {
        AppendWord(bytes, date);
        bytes.resize(bytes.size() + sizeof(NotePage::text));
    }
    return bytes;
}

struct Outcome {
    int result;
    DWORD error;

    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
    return stream << outcome.result << " with last error " << outcome.error;
}

constexpr Outcome Loaded{1, ERROR_SUCCESS};

Outcome Load(DayValueList& list, const path& file, const WCHAR* password) {
    ::SetLastError(EarlierError);
    const int result = LoadDayValues(list, Wide(file).c_str(), password);
    return {result, ::GetLastError()};
}

Outcome Load(NotePageList& list, const path& file, const WCHAR* password) {
    ::SetLastError(EarlierError);
    const int result = LoadNotePages(list, Wide(file).c_str(), password);
    return {result, ::GetLastError()};
}

/// Adds `count` days from 1 January 1700, every month with 28 of them.
void FillWithDays(DayValueList& list, std::int32_t count) {
    for (std::int32_t i = 0; i < count; ++i) {
        const auto day = static_cast<unsigned>(i);
        list.Set(MakeDateKey(1700 + day / 336, 1 + day / 28 % 12, 1 + day % 28), i);
    }
    list.dirty = true;
}

class DataFileTest : public testing::Test {
  protected:
    DataFileTest() {
        days.Set(MakeDateKey(1999, 9, 9), 9);  // every load must clear the lists
        days.dirty = true;
        const NotePage page{MakeDateKey(1999, 9, 9), {}};
        pages.SetAt(0, page);
        pages.dirty = true;
    }

    Outcome LoadDays(const Bytes& bytes, const WCHAR* password = NoPassword) {
        WriteBytes(file, bytes);
        return Load(days, file, password);
    }

    Outcome LoadPages(const Bytes& bytes, const WCHAR* password = NoPassword) {
        WriteBytes(file, bytes);
        return Load(pages, file, password);
    }

    /// Saves what is dirty, as the program does.
    int Save(UserData& data, const WCHAR* password) const {
        return data.SaveFolder(Wide(scratch.Root()).c_str(), password);
    }

    /// Saves so many days as `file`.
    int SaveDays(std::int32_t count, const WCHAR* password) const {
        UserData data;
        FillWithDays(UserDataTestAccess::Bleeding(data), count);
        return Save(data, password);
    }

    ScratchFolder scratch;
    path file = scratch.File("Bleeding.dat");
    DayValueList days;
    NotePageList pages{10};
};

// ---- Golden files ----

const WCHAR* const SecretPassword = TEXT("secret");

const struct {
    const char* name;
    const WCHAR* password;
} GoldenDays[] = {
    {"days_plain", NoPassword},
    {"days_secret", SecretPassword},
    {"days_latin1", TEXT("Gr\u00FC\u00DFe, \u00C5sa \u00FF")},
    {"days_windows1252", TEXT("\u20AC5 \u201Eja\u201C \u0178 \u0081\u009D")},
    {"days_utf8", TEXT("\u043F\u0430\u0440\u043E\u043B\u044C \u00FC \U0001F600")},
    {"days_55_bytes", TEXT("01234567890123456789012345678901234567890123456789abcde")},
    {"days_utf8_cut",
     TEXT("\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F"
          "\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F\u044F"
          "\u044F\u044F\u044F\u044F")},
};

const DayValue GoldenRecords[] = {
    {MakeDateKey(1601, 1, 1), 1},
    {MakeDateKey(2006, 2, 28), 2},
    {MakeDateKey(2006, 2, 31), -1},
    {MakeDateKey(2006, 3, 1), 9750},
    {MakeDateKey(2500, 12, 31), 0x7FFFFFFF},
};

void FillWithGoldenPages(NotePageList& pages) {
    const WideString first = TEXT("Thirty-four units make two pages.\u2026");
    const WideString second = TEXT("M\u00FCde, \U0001F600");
    pages.AppendText(MakeDateKey(2006, 3, 1), first.c_str(), static_cast<int>(first.size()));
    pages.AppendText(MakeDateKey(2006, 2, 28), second.c_str(), static_cast<int>(second.size()));
}

TEST_F(DataFileTest, SavedDaysAreTheGoldenBytes) {
    for (const auto& [name, password] : GoldenDays) {
        UserData data;
        for (const DayValue& record : GoldenRecords) {
            UserDataTestAccess::Bleeding(data).Set(record.date, record.value);
        }
        UserDataTestAccess::Bleeding(data).dirty = true;
        ASSERT_EQ(Save(data, password), 1) << name;
        EXPECT_EQ(ReadBytes(file), GoldenBytes(name)) << name;
        EXPECT_FALSE(data.IsDirty()) << name;
    }
}

TEST_F(DataFileTest, GoldenDaysAreRead) {
    for (const auto& [name, password] : GoldenDays) {
        ASSERT_EQ(LoadDays(GoldenBytes(name), password), Loaded) << name;
        ASSERT_EQ(days.Count(), 5) << name;
        for (std::int32_t i = 0; i < 5; ++i) {
            EXPECT_EQ(days.At(i).date, GoldenRecords[i].date) << name;
            EXPECT_EQ(days.At(i).value, GoldenRecords[i].value) << name;
        }
        EXPECT_FALSE(days.dirty);
        EXPECT_FALSE(days.IsUnsorted());
    }
}

TEST_F(DataFileTest, SavedPagesAreTheGoldenBytes) {
    for (const auto& [name, password] :
         {std::pair{"pages_plain", NoPassword}, std::pair{"pages_secret", SecretPassword}}) {
        UserData data;
        FillWithGoldenPages(UserDataTestAccess::NotePages(data));
        UserDataTestAccess::NotePages(data).dirty = true;
        ASSERT_EQ(Save(data, password), 1) << name;
        EXPECT_EQ(ReadBytes(scratch.File("NotePages.dat")), GoldenBytes(name)) << name;
        EXPECT_FALSE(data.IsDirty()) << name;
    }
}

TEST_F(DataFileTest, GoldenPagesAreReadInOrderOfEntry) {
    NotePageList expected{10};
    FillWithGoldenPages(expected);
    for (const auto& [name, password] :
         {std::pair{"pages_plain", NoPassword}, std::pair{"pages_secret", SecretPassword}}) {
        ASSERT_EQ(LoadPages(GoldenBytes(name), password), Loaded) << name;
        ASSERT_EQ(pages.Count(), 3) << name;
        EXPECT_EQ(std::memcmp(&pages.At(0), &expected.At(0), 3 * sizeof(NotePage)), 0) << name;
        EXPECT_FALSE(pages.dirty);
    }
}

TEST_F(DataFileTest, PasswordsThatAgreeIn55BytesOpenTheSameFile) {
    const Bytes golden = GoldenBytes("days_55_bytes");
    const WideString key = GoldenDays[5].password;
    EXPECT_EQ(LoadDays(golden, (key + TEXT("f")).c_str()), Loaded);
    EXPECT_EQ(LoadDays(golden, (key + WideString(100, 'x')).c_str()), Loaded);
    EXPECT_EQ(LoadDays(golden, key.substr(0, 54).c_str()), (Outcome{0, DataFileWrongPassword}));
    EXPECT_EQ(LoadDays(golden, (key.substr(0, 54) + TEXT("f")).c_str()),
              (Outcome{0, DataFileWrongPassword}));
}

// ---- Loading ----

TEST_F(DataFileTest, MissingFileIsAnEmptyCollectionForAnyPassword) {
    for (const WCHAR* password : {NoPassword, SecretPassword}) {
        EXPECT_EQ(Load(days, scratch.File("none.dat"), password), (Outcome{1, DataFileMissing}));
        EXPECT_EQ(Load(pages, scratch.File("none.dat"), password), (Outcome{1, DataFileMissing}));
        EXPECT_EQ(Load(days, scratch.File("none") / "none.dat", password),
                  (Outcome{1, DataFileMissing}));
        EXPECT_EQ(days.Count() + days.Capacity() + pages.Count() + pages.Capacity(), 0);
        EXPECT_FALSE(days.dirty || pages.dirty);
    }
}

TEST_F(DataFileTest, HeaderAloneIsAnEmptyCollectionForAnyPassword) {
    for (const WCHAR* password : {NoPassword, SecretPassword}) {
        EXPECT_EQ(LoadDays(Header(), password), Loaded);
        EXPECT_EQ(LoadPages(Header(), password), Loaded);
        EXPECT_EQ(days.Count() + days.Capacity() + pages.Count() + pages.Capacity(), 0);
        EXPECT_FALSE(days.dirty || pages.dirty);
    }
    UserData data;
    EXPECT_EQ(Save(data, NoPassword), 1);  // not dirty: left alone
    EXPECT_EQ(ReadBytes(file), Header());
    UserDataTestAccess::Bleeding(data).dirty = true;
    EXPECT_EQ(Save(data, NoPassword), 1);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(DataFileTest, ShortHeaderLeavesNoErrorCode) {
    for (std::size_t length = 0; length < 4; ++length) {
        const Bytes whole = Header();
        const Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_EQ(LoadDays(bytes), (Outcome{0, ERROR_SUCCESS})) << length;
        EXPECT_EQ(LoadPages(bytes, SecretPassword), (Outcome{0, ERROR_SUCCESS})) << length;
        EXPECT_EQ(days.Count() + pages.Count(), 0);
    }
}

TEST_F(DataFileTest, HeadersAreAcceptedUpToTheCurrentVersion) {
    const struct {
        const char* label;
        Bytes header;
        Outcome outcome;
    } cases[] = {
        {"current version", {'L', 'U', 1, 0}, Loaded},
        {"older version", {'L', 'U', 0, 5}, Loaded},
        {"oldest version", {'L', 'U', 0, 0}, Loaded},
        {"last older version", {'L', 'U', 0, 0xFF}, Loaded},
        {"next minor version", {'L', 'U', 1, 1}, {0, DataFileTooNew}},
        {"next major version", {'L', 'U', 2, 0}, {0, DataFileTooNew}},
        {"newest version", {'L', 'U', 0xFF, 0xFF}, {0, DataFileTooNew}},
        {"first letter", {'l', 'U', 1, 0}, {0, DataFileForeign}},
        {"second letter", {'L', 'V', 1, 0}, {0, DataFileForeign}},
        {"letters exchanged", {'U', 'L', 1, 0}, {0, DataFileForeign}},
        {"foreign and too new", {'P', 'K', 3, 4}, {0, DataFileForeign}},
    };
    for (const auto& [label, header, outcome] : cases) {
        EXPECT_EQ(LoadDays(header), outcome) << label;
        EXPECT_EQ(LoadPages(header, SecretPassword), outcome) << label;
    }
}

TEST_F(DataFileTest, WrongLengthForItsKindIsCorruptWhateverThePassword) {
    for (const WCHAR* password : {NoPassword, SecretPassword}) {
        for (std::size_t length = 4; length <= 4 + 3 * 72; ++length) {
            Bytes bytes = PlainPages(
                {MakeDateKey(2006, 1, 1), MakeDateKey(2006, 1, 1), MakeDateKey(2006, 1, 1)});
            bytes.resize(length);
            EXPECT_EQ(LoadDays(bytes, password).error == DataFileCorrupt, (length - 4) % 8 != 0);
            EXPECT_EQ(LoadPages(bytes, password).error == DataFileCorrupt, (length - 4) % 72 != 0);
        }
    }
    EXPECT_EQ(LoadDays(Bytes{'L', 'U', 1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}),
              (Outcome{0, DataFileCorrupt}));
}

TEST_F(DataFileTest, HundredAndFortyFourBytesAreTwoPages) {
    EXPECT_EQ(LoadPages(PlainPages({MakeDateKey(2006, 5, 2), MakeDateKey(2006, 5, 1)})), Loaded);
    EXPECT_EQ(pages.Count(), 2);
    EXPECT_EQ(pages.At(0).date, MakeDateKey(2006, 5, 2));
    EXPECT_EQ(pages.At(1).date, MakeDateKey(2006, 5, 1));
}

TEST_F(DataFileTest, OnlyTheRangesOfADateAreTested) {
    const struct {
        const char* label;
        DateKey date;
        bool isAccepted;
    } cases[] = {
        {"first day", MakeDateKey(1601, 1, 1), true},
        {"last day", MakeDateKey(2500, 12, 31), true},
        {"31 February", MakeDateKey(2006, 2, 31), true},
        {"year 1600", MakeDateKey(1600, 12, 31), false},
        {"year 2501", MakeDateKey(2501, 1, 1), false},
        {"month 0", MakeDateKey(2006, 0, 1), false},
        {"month 13", MakeDateKey(2006, 13, 1), false},
        {"day 0", MakeDateKey(2006, 1, 0), false},
        {"day 32", MakeDateKey(2006, 1, 32), false},
        {"zero", 0, false},
        {"negative", 0x8000'0000U | MakeDateKey(2006, 1, 1), false},
    };
    for (const auto& [label, date, isAccepted] : cases) {
        const Outcome expected = isAccepted ? Loaded : Outcome{0, DataFileWrongPassword};
        EXPECT_EQ(LoadDays(PlainDays({date})), expected) << label;
        EXPECT_EQ(LoadPages(PlainPages({date})), expected) << label;
        EXPECT_EQ(days.Count(), isAccepted ? 1 : 0) << label;
        EXPECT_EQ(pages.Count(), isAccepted ? 1 : 0) << label;
        EXPECT_EQ(LoadPages(PlainPages({MakeDateKey(2006, 1, 1), date})), expected)
            << label << " in the second record";
    }
}

TEST_F(DataFileTest, DayValuesMustAscendWhateverThePassword) {
    const DateKey day = MakeDateKey(2006, 2, 28);
    const struct {
        const char* label;
        Bytes bytes;
        bool isAccepted;
    } cases[] = {
        {"ascending", PlainDays({day, day + 1, day + 3}), true},
        {"same date twice", PlainDays({day, day}), false},
        {"same date twice at the end", PlainDays({day - 1, day, day}), false},
        {"out of order", PlainDays({day, day - 1}), false},
        {"out of order at the end", PlainDays({day, day + 2, day + 1}), false},
    };
    for (const auto& [label, bytes, isAccepted] : cases) {
        EXPECT_EQ(LoadDays(bytes), (isAccepted ? Loaded : Outcome{0, DataFileWrongPassword}))
            << label;
        EXPECT_EQ(LoadDays(bytes, SecretPassword), (Outcome{0, DataFileWrongPassword})) << label;
    }
    EXPECT_EQ(LoadPages(PlainPages({day, day, day - 1})), Loaded);
}

TEST_F(DataFileTest, DisorderIsFoundAcrossThePiecesInWhichAFileIsRead) {
    ASSERT_EQ(SaveDays(40'000, NoPassword), 1);
    Bytes bytes = ReadBytes(file);
    for (const std::size_t record : {16'383U, 16'384U, 16'385U, 32'768U, 39'999U}) {
        Bytes doubled = bytes;
        std::copy_n(&bytes[4 + 8 * (record - 1)], 8, &doubled[4 + 8 * record]);
        EXPECT_EQ(LoadDays(doubled), (Outcome{0, DataFileWrongPassword})) << record;
    }
    EXPECT_EQ(LoadDays(bytes), Loaded);
    EXPECT_EQ(days.Count(), 40'000);
}

TEST_F(DataFileTest, WrongPasswordIsRefusedOnEitherKindOfFile) {
    const struct {
        const char* label;
        const char* golden;
        const WCHAR* password;
    } cases[] = {
        {"another password", "days_secret", TEXT("Secret")},
        {"a longer password", "days_secret", TEXT("secret ")},
        {"the right password's start", "days_secret", TEXT("secre")},
        {"no password on an enciphered file", "days_secret", NoPassword},
        {"null on an enciphered file", "days_secret", nullptr},
        {"a password on a plain file", "days_plain", SecretPassword},
    };
    for (const auto& [label, golden, password] : cases) {
        EXPECT_EQ(LoadDays(GoldenBytes(golden), password), (Outcome{0, DataFileWrongPassword}))
            << label;
        EXPECT_EQ(days.Count() + days.Capacity(), 0) << label;
    }
    EXPECT_EQ(LoadPages(GoldenBytes("pages_secret"), TEXT("x")),
              (Outcome{0, DataFileWrongPassword}));
    EXPECT_EQ(LoadPages(GoldenBytes("pages_secret"), NoPassword),
              (Outcome{0, DataFileWrongPassword}));
    EXPECT_EQ(LoadPages(GoldenBytes("pages_plain"), SecretPassword),
              (Outcome{0, DataFileWrongPassword}));
    EXPECT_EQ(LoadDays(GoldenBytes("days_plain"), nullptr), Loaded);
}

TEST_F(DataFileTest, NoneOf100000WrongPasswordsOpensADiaryOf60Records) {
    ASSERT_EQ(SaveDays(60, SecretPassword), 1);
    const WideString name = Wide(file);
    int accepted = 0;
    for (int i = 0; i < 100'000; ++i) {
        WCHAR password[16];
        FormatText(password, std::size(password), TEXT("wrong %d"), i);
        accepted += LoadDayValues(days, name.c_str(), password);
    }
    EXPECT_EQ(accepted, 0);
    EXPECT_EQ(Load(days, file, SecretPassword), Loaded);
}

TEST_F(DataFileTest, CapacityGrowsByTheStepOfTheCollection) {
    for (const std::int32_t count : {1, 9, 10, 11, 20, 21}) {
        ASSERT_EQ(SaveDays(count, NoPassword), 1);
        ASSERT_EQ(Load(days, file, NoPassword), Loaded);
        EXPECT_EQ(days.Count(), count);
        EXPECT_EQ(days.Capacity(), (count + 9) / 10 * 10);
    }
    NotePageList inSevens{7};
    WriteBytes(file, GoldenBytes("pages_plain"));
    ASSERT_EQ(Load(inSevens, file, NoPassword), Loaded);
    EXPECT_EQ(inSevens.Count(), 3);
    EXPECT_EQ(inSevens.Capacity(), 7);
    NotePage free{1, {1}};
    inSevens.GetAt(3, free);
    EXPECT_EQ(free.date, 0U);  // new memory is zero
}

TEST_F(DataFileTest, FolderInTheFilesPlaceIsRefusedAndNotTakenAsMissing) {
    std::filesystem::create_directory(file);
    EXPECT_EQ(Load(days, file, NoPassword), (Outcome{0, DataFileCorrupt}));
    EXPECT_EQ(Load(pages, file, NoPassword), (Outcome{0, DataFileCorrupt}));
    EXPECT_EQ(days.Count() + pages.Count(), 0);
}

TEST_F(DataFileTest, FileThatCannotBeOpenedIsRefusedAndNotTakenAsMissing) {
    WriteBytes(file, GoldenBytes("days_plain"));
    const HANDLE lock = ::CreateFileW(Wide(file).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    if (LoadDayValues(days, Wide(file).c_str(), NoPassword) == 1) {
        // This system does not lock files. A link to itself exists and cannot be opened either.
        std::filesystem::remove(file);
        std::filesystem::create_symlink(file, file);
    }
    EXPECT_EQ(Load(days, file, NoPassword), (Outcome{0, DataFileCorrupt}));
    EXPECT_EQ(Load(pages, file, NoPassword), (Outcome{0, DataFileCorrupt}));
    ::CloseHandle(lock);
}

/// Writes a header and `bytes` zeros as a sparse file.
void WriteEmptyRecords(const path& file, std::int64_t bytes) {
    WriteBytes(file, Header());
    std::fstream stream(file, std::ios::binary | std::ios::in | std::ios::out);
    stream.seekp(static_cast<std::streamoff>(4 + bytes - 1));
    stream.put(0);
    EXPECT_TRUE(stream.flush());
}

TEST_F(DataFileTest, SizesBeyondAllSenseAreRefusedWithoutReading) {
    const struct {
        const char* label;
        std::int64_t records;
        DWORD error;
    } cases[] = {
        // One record more than 900 years of 12 months of 31 days have: some date must repeat.
        {"more records than days", 334'801, DataFileWrongPassword},
        {"the last count that fits", 0x7FFFFFFF - 10, DataFileWrongPassword},
        {"more than a capacity can count", 0x7FFFFFFF - 9, DataFileCorrupt},
        {"2^31", 0x80000000, DataFileCorrupt},
        {"2^32 and one", 0x100000001, DataFileCorrupt},
    };
    for (const auto& [label, records, error] : cases) {
        WriteEmptyRecords(file, 8 * records);
        EXPECT_EQ(Load(days, file, NoPassword), (Outcome{0, error})) << label;
    }
    WriteEmptyRecords(file, 72 * std::int64_t{0x80000000});
    EXPECT_EQ(Load(pages, file, NoPassword), (Outcome{0, DataFileCorrupt}));
}

// ---- Damaged files ----

/// What a load may come to, whatever the file holds: a sound list, or an empty one and a documented
/// last error.
template <typename List>
void ExpectSoundOutcome(const List& list, const Outcome& outcome, const std::string& label) {
    if (outcome == Loaded) {
        EXPECT_LE(list.Count(), list.Capacity()) << label;
        return;
    }
    EXPECT_EQ(outcome.result, 0) << label;
    EXPECT_TRUE(outcome.error == ERROR_SUCCESS || outcome.error == DataFileForeign ||
                outcome.error == DataFileTooNew || outcome.error == DataFileCorrupt ||
                outcome.error == DataFileWrongPassword)
        << label << ": " << outcome.error;
    EXPECT_EQ(list.Count() + list.Capacity(), 0) << label;
}

bool Ascends(const DayValueList& list) {
    return std::is_sorted(list.begin(), list.end(), [](const DayValue& a, const DayValue& b) {
        return a.date <= b.date;  // "<=": equal neighbours count as out of order
    });
}

TEST_F(DataFileTest, EveryTruncationIsRefusedOrAPrefix) {
    for (const auto& [name, password] :
         {std::pair{"days_plain", NoPassword}, std::pair{"days_secret", SecretPassword}}) {
        const Bytes whole = GoldenBytes(name);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            const Outcome expected = length < 4              ? Outcome{0, ERROR_SUCCESS}
                                     : (length - 4) % 8 != 0 ? Outcome{0, DataFileCorrupt}
                                                             : Loaded;
            EXPECT_EQ(LoadDays(bytes, password), expected) << name << ' ' << length;
            EXPECT_EQ(days.Count(), expected == Loaded ? static_cast<int>(length - 4) / 8 : 0);
        }
    }
    for (const auto& [name, password] :
         {std::pair{"pages_plain", NoPassword}, std::pair{"pages_secret", SecretPassword}}) {
        const Bytes whole = GoldenBytes(name);
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            const Outcome expected = length < 4               ? Outcome{0, ERROR_SUCCESS}
                                     : (length - 4) % 72 != 0 ? Outcome{0, DataFileCorrupt}
                                                              : Loaded;
            EXPECT_EQ(LoadPages(bytes, password), expected) << name << ' ' << length;
            EXPECT_EQ(pages.Count(), expected == Loaded ? static_cast<int>(length - 4) / 72 : 0);
        }
    }
}

TEST_F(DataFileTest, EveryFlippedByteGivesADocumentedOutcome) {
    for (const auto& [name, password] :
         {std::pair{"days_plain", NoPassword}, std::pair{"days_secret", SecretPassword}}) {
        const Bytes whole = GoldenBytes(name);
        for (std::size_t at = 0; at < whole.size(); ++at) {
            for (const int flip : {0x01, 0x10, 0x80, 0xFF}) {
                Bytes bytes = whole;
                bytes[at] = static_cast<unsigned char>(bytes[at] ^ flip);
                const std::string label = std::string(name) + " byte " + std::to_string(at);
                const Outcome outcome = LoadDays(bytes, password);
                ExpectSoundOutcome(days, outcome, label);
                EXPECT_TRUE(Ascends(days)) << label;
                if (at < 2) {
                    EXPECT_EQ(outcome, (Outcome{0, DataFileForeign})) << label;
                }
            }
        }
    }
    for (const auto& [name, password] :
         {std::pair{"pages_plain", NoPassword}, std::pair{"pages_secret", SecretPassword}}) {
        const Bytes whole = GoldenBytes(name);
        for (std::size_t at = 0; at < whole.size(); ++at) {
            Bytes bytes = whole;
            bytes[at] ^= 0xFF;
            const std::string label = std::string(name) + " byte " + std::to_string(at);
            ExpectSoundOutcome(pages, LoadPages(bytes, password), label);
        }
    }
}

}  // namespace
}  // namespace lunara::test
