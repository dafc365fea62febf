// Times backup and restore of the enciphered diary of 40 years, with the functions that the two
// commands call. The peer in the same run is a plain copy of the same files into a new folder.

#include "benchmarks/forty_years.h"
#include "benchmarks/spread.h"
#include "diary/diary_edit.h"
#include "diary/note_texts.h"
#include "platform/documents_folder.h"
#include "storage/backup_files.h"
#include "storage/data_folder.h"
#include "window/window.h"

namespace lunara::bench {
namespace {

constexpr int Rounds = 100;
constexpr double MostTimesCopying = 3.0;
constexpr WCHAR UserName[] = TEXT("backup-bench");
constexpr WCHAR KeptBackup[] = TEXT("kept");
constexpr WCHAR NewBackup[] = TEXT("new");
constexpr const WCHAR* Files[] = {TEXT("Temperature.dat"), TEXT("Bleeding.dat"),
                                  TEXT("NotePages.dat")};

void RemoveFolder(const WideString& folder) {
    for (const WCHAR* name : Files) {
        ::DeleteFileW((folder + TEXT("\\") + name).c_str());
    }
    ::RemoveDirectoryW(folder.c_str());
}

/// Flushes the files just written to `folder`, and with them the file system's pending metadata, to
/// the disk. Run before each case, because a backup starts with an idle disk, too: otherwise a case
/// waits for what the one before left unwritten, above all where it deletes files.
bool Settle(const WideString& folder) {
    bool settled = true;
    for (const WCHAR* name : Files) {
        const HANDLE file =
            ::CreateFileW((folder + TEXT("\\") + name).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                          nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        settled = settled && file != INVALID_HANDLE_VALUE && ::FlushFileBuffers(file) != FALSE;
        ::CloseHandle(file);
    }
    return settled;
}

/// Copies the files, over existing ones of the same name. Neither searches for files nor keeps the
/// old ones.
bool CopyFiles(const WideString& source, const WideString& target) {
    bool copied = true;
    for (const WCHAR* name : Files) {
        const WideString separated = WideString(TEXT("\\")) + name;
        copied = copied && ::CopyFileW((source + separated).c_str(), (target + separated).c_str(),
                                       FALSE) != FALSE;
    }
    return copied;
}

bool CopyIntoNewFolder(const WideString& source, const WideString& target) {
    return ::CreateDirectoryW(target.c_str(), nullptr) != FALSE && CopyFiles(source, target);
}

/// The folders of a run: the user's folder beside this program, and the copies and backups beside
/// that. Removes them all at the end.
class Places {
  public:
    Places()
        : user(DataFolderOfUser(UserName)),
          plain(user + TEXT("-copy")),
          replaced(user + TEXT("-replaced")) {
        SetDocumentsFolder(user + TEXT("-documents"));
        RemoveAll();  // what an interrupted run left behind
    }
    Places(const Places&) = delete;
    Places& operator=(const Places&) = delete;
    ~Places() { RemoveAll(); }

    WideString Backup(const WCHAR* name) const {
        return BackupsFolderOfUser(UserName) + TEXT("\\") + name;
    }

    const WideString user;
    const WideString plain;     // target of copies into a new folder, removed after each round
    const WideString replaced;  // target of copies over the files of the round before

  private:
    void RemoveAll() const {
        RemoveFolder(user);
        RemoveFolder(plain);
        RemoveFolder(replaced);
        RemoveFolder(Backup(KeptBackup));
        RemoveFolder(Backup(NewBackup));
        RemoveFolder(BackupsFolderOfUser(UserName));
        RemoveFolder(DocumentsFolder() + TEXT("\\LunaraBackup"));
        RemoveFolder(DocumentsFolder());
    }
};

/// Prints and returns whether the case's median is at most MostTimesCopying times that of copying.
bool Keeps(const char* name, const Spread& spread, const Spread& copying) {
    const double ratio = spread.median / copying.median;
    const bool isKept = ratio <= MostTimesCopying;
    std::printf("%s: %.2f times copying the files; at most %.0f allowed: %s\n", name, ratio,
                MostTimesCopying, isKept ? "kept" : "EXCEEDED");
    return isKept;
}

/// Times of the cases in ms. The cases take turns, so that a change of the machine's load hits them
/// all alike.
struct Times {
    std::vector<double> copying;
    std::vector<double> replacing;
    std::vector<double> backup;
    std::vector<double> restore;
};

bool MeasureAll(const Places& places, Times& times) {
    bool done = true;
    for (int round = -1; round < Rounds && done; ++round) {  // round -1 warms the caches
        const double copying =
            TimeOf([&] { done &= CopyIntoNewFolder(places.user, places.plain); });
        done = done && Settle(places.plain);
        const double replacing = TimeOf([&] { done &= CopyFiles(places.user, places.replaced); });
        done = done && Settle(places.replaced);
        const double backup =
            TimeOf([&] { done &= BackupFiles(UserName, NewBackup) == BackupResult::Done; });
        done = done && Settle(places.Backup(NewBackup));
        const double restore =
            TimeOf([&] { done &= RestoreFiles(UserName, KeptBackup).isRestored; });
        RemoveFolder(places.plain);
        RemoveFolder(places.Backup(NewBackup));
        done = done && Settle(places.user);
        if (round >= 0) {
            times.copying.push_back(copying);
            times.replacing.push_back(replacing);
            times.backup.push_back(backup);
            times.restore.push_back(restore);
        }
    }
    return done;
}

/// The same records as the other benchmarks have.
bool FillDiary(UserData& diary) {
    DayValueList temperature;
    DayValueList bleeding;
    NotePageList notes(10);
    if (!FillFortyYears(temperature, bleeding, notes)) {
        return false;
    }
    DiaryEdit edit(diary);
    for (const DayValue& record : temperature) {
        edit.SetTemperature(record.date, record.value);
    }
    for (const DayValue& record : bleeding) {
        edit.SetBleeding(record.date, record.value);
    }
    for (const auto& [date, text] : NoteTexts(notes)) {
        edit.SetNoteText(date, text);
    }
    return edit.Store();
}

int Run() {
    const Places places;
    UserData diary;
    if (!FillDiary(diary) || diary.Save(UserName, DiaryPassword) == 0 ||
        BackupFiles(UserName, KeptBackup) != BackupResult::Done ||
        !CopyIntoNewFolder(places.user, places.replaced)) {
        std::fprintf(stderr, "the diary could not be made\n");
        return 2;
    }
    Times times;
    if (!MeasureAll(places, times) || diary.Load(UserName, DiaryPassword) == 0 ||
        diary.NotePages().Count() != NotePages) {
        std::fprintf(stderr, "a copy, a backup or a restore failed\n");
        return 2;
    }
    const Spread copying = SpreadOf(times.copying);
    const Spread replacing = SpreadOf(times.replacing);
    const Spread backup = SpreadOf(times.backup);
    const Spread restore = SpreadOf(times.restore);
    std::printf("g++ %s, %d rounds; %s\n", __VERSION__, Rounds, DiaryDescription);
    Print("copy the files", copying);
    Print("copy over files that are there", replacing);
    Print("backup", backup);
    Print("restore", restore);
    std::printf("restore: %.2f times copying over files that are there\n",
                restore.median / replacing.median);
    // Both are printed, whatever the first one says.
    const bool isBackupKept = Keeps("backup", backup, copying);
    const bool isRestoreKept = Keeps("restore", restore, copying);
    return isBackupKept && isRestoreKept ? 0 : 1;
}

}  // namespace
}  // namespace lunara::bench

int main() {
    lunara::SetAppInstance(::GetModuleHandleW(nullptr));
    return lunara::bench::Run();
}
