#pragma once

// Base of the tests of backup and restore, which work on real folders: a documents folder and a
// user's folder of the test's own. Their data files hold short texts that tell where they came
// from, such as "old notes".

#include <string>
#include <vector>

#include "storage/replacement_file.h"
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

/// Counts moves of files and folders while it lives, and makes one of them fail, two in a row, or
/// all from one on.
class FailingMoves : public FileCalls {
  public:
    enum class Way { OneMove, TwoMoves, FromThereOn };

    /// `failingMove`: index of the first move that fails; negative for none.
    FailingMoves(int failingMove, Way failingWay);
    FailingMoves(const FailingMoves&) = delete;
    FailingMoves& operator=(const FailingMoves&) = delete;
    ~FailingMoves() override;

    BOOL Replace(const WCHAR* from, const WCHAR* to) override;
    BOOL MoveFolder(const WCHAR* from, const WCHAR* to) override;

    /// The number of moves, failed ones included.
    int Count() const { return count; }

  private:
    bool Fails();

    int failAt;
    Way way;
    int count = 0;
};

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
