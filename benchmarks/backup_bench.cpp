// What it costs to back up and to restore the enciphered diary of 40 years, with the functions that
// the two commands call, beside plainly copying the same files into a new folder in the same run.

#include "benchmarks/forty_years.h"
#include "benchmarks/spread.h"
#include "diary/diary_edit.h"
#include "diary/note_texts.h"
#include "platform/pocketpc/documents_folder.h"
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

/// Waits until the files just written to the folder, and what the file system noted meanwhile, lie
/// on the disk. Each case starts so, as a backup does: otherwise it would wait for what the case
/// before it left to be written, above all where it deletes.
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

/// The files as they are, over those that are there: nothing is looked for or kept.
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

/// The user's folder beside this program, the backups beside it, and nothing left at the end.
class Places {
  public:
    Places()
        : user(DataFolderOfUser(UserName)),
          plain(user + TEXT("-copy")),
          replaced(user + TEXT("-replaced")) {
        SetDocumentsFolder(user + TEXT("-documents"));
        RemoveAll();  // a run that was stopped left them
    }
    Places(const Places&) = delete;
    Places& operator=(const Places&) = delete;
    ~Places() { RemoveAll(); }

    WideString Backup(const WCHAR* name) const {
        return BackupsFolderOfUser(UserName) + TEXT("\\") + name;
    }

    const WideString user;
    const WideString plain;     // new in each round
    const WideString replaced;  // has the files of the round before

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

/// Prints and returns whether the case's median is within what is allowed.
bool Keeps(const char* name, const Spread& spread, const Spread& copying) {
    const double ratio = spread.median / copying.median;
    const bool isKept = ratio <= MostTimesCopying;
    std::printf("%s: %.2f times copying the files; at most %.0f allowed: %s\n", name, ratio,
                MostTimesCopying, isKept ? "kept" : "EXCEEDED");
    return isKept;
}

/// The times of the cases, which take turns: none has the machine's quiet minute to itself.
struct Times {
    std::vector<double> copying;
    std::vector<double> replacing;
    std::vector<double> backup;
    std::vector<double> restore;
};

bool MeasureAll(const Places& places, Times& times) {
    bool done = true;
    for (int round = -1; round < Rounds && done; ++round) {  // the first one warms the caches
        const double copying =
            TimeOf([&] { done &= CopyIntoNewFolder(places.user, places.plain); });
        done = done && Settle(places.plain);
        const double replacing = TimeOf([&] { done &= CopyFiles(places.user, places.replaced); });
        done = done && Settle(places.replaced);
        const double backup = TimeOf([&] { done &= BackupFiles(UserName, NewBackup) == 1; });
        done = done && Settle(places.Backup(NewBackup));
        const double restore = TimeOf([&] { done &= RestoreFiles(UserName, KeptBackup) == 1; });
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
        BackupFiles(UserName, KeptBackup) == 0 ||
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
    const bool isKept = Keeps("backup", backup, copying) & Keeps("restore", restore, copying);
    return isKept ? 0 : 1;
}

}  // namespace
}  // namespace lunara::bench

int main() {
    lunara::SetAppInstance(::GetModuleHandleW(nullptr));
    return lunara::bench::Run();
}
