#pragma once

// Base of the tests of backup and restore, which work on real folders: a documents folder and a
// user's folder of the test's own. Their data files hold short texts that tell where they came
// from, such as "old notes".

#include <string>
#include <vector>

#include "tests/support/failing_file_calls.h"
#include "tests/ui/app/main_window_test_base.h"

namespace lunara::test {

using Texts = std::vector<std::wstring>;

/// Holds a file open without sharing, so that it cannot be read, deleted, moved or replaced.
class LockedFile {
  public:
    explicit LockedFile(const std::wstring& path);
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile();

  private:
    HANDLE file;
};

/// A fault that strikes `times` moves of files and folders (FromThereOn for all) from the one with
/// index `at` on.
inline FileFault FailingMoves(int at, int times) {
    return {.kinds = ReplaceCall | MoveFolderCall,
            .at = at,
            .times = times,
            .error = ERROR_ACCESS_DENIED};
}

class BackupTest : public MainWindowTest {
  protected:
    // Suffixes of the folders beside the user's during a restore.
    static constexpr wchar_t Staged[] = L"%7Erestore";  // the copies that are to go in
    static constexpr wchar_t Aside[] = L"%7Easide";     // the user's files while they are moved out
    static constexpr wchar_t Before[] = L"%7Ebefore";   // the user's files once all are out

    void SetUp() override;
    void TearDown() override;

    /// The folder that stands in for the documents folder.
    static std::wstring Documents();
    // Paths of a file in the user's folder, under the user's backups, and in the folder beside the
    // user's that has this suffix.
    static std::wstring UserFile(const std::wstring& name);
    static std::wstring BackupFile(const std::wstring& name);
    static std::wstring FileBeside(const wchar_t* suffix, const std::wstring& name);

    /// Removes a folder with everything in it, read-only files included.
    static void RemoveTree(const std::wstring& folder);
    /// Makes a folder with its parents.
    static void MakeFolder(const std::wstring& folder);
    /// Writes a file in the folder beside the user's with this suffix, which is made when missing.
    /// The suffix "" means the user's own folder.
    static void Put(const wchar_t* suffix, const wchar_t* name, const std::string& text);

    /// Gives the user two files, "old bleeding" and "old notes".
    static void PutUserFiles();
    /// Makes a backup of two files, "saved bleeding" and "saved temperature".
    static void PutBackup(const std::wstring& name);
    /// The user's folder holds what PutUserFiles wrote, and no file of the backup.
    static void ExpectOldDiary();
    /// The user's folder holds what PutBackup wrote, and no old file.
    static void ExpectRestoredDiary();
    /// No folder of a restore is left beside the user's.
    static void ExpectNothingBeside();

    /// The texts of the message boxes shown, in order.
    Texts BoxTexts() const;
};

}  // namespace lunara::test
