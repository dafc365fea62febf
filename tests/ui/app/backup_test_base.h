#pragma once

// Backup and restore on real folders: the documents folder and the user's folder are the test's
// own. Data files hold short texts there, which tell whose they are.

#include <string>
#include <vector>

#include "storage/replacement_file.h"
#include "tests/ui/app/main_window_test_base.h"

namespace lunara::test {

using Texts = std::vector<std::wstring>;

/// Keeps a file open so that nobody can delete, move or replace it.
class LockedFile {
  public:
    explicit LockedFile(const std::wstring& path);
    LockedFile(const LockedFile&) = delete;
    LockedFile& operator=(const LockedFile&) = delete;
    ~LockedFile();

  private:
    HANDLE file;
};

/// Moves of files and folders, counted; one of them fails, two in a row, or all from one on.
class FailingMoves : public FileCalls {
  public:
    enum class Way { OneMove, TwoMoves, FromThereOn };

    /// `failingMove` counts from 0; none fails when it is negative.
    FailingMoves(int failingMove, Way failingWay);
    FailingMoves(const FailingMoves&) = delete;
    FailingMoves& operator=(const FailingMoves&) = delete;
    ~FailingMoves() override;

    BOOL Replace(const WCHAR* from, const WCHAR* to) override;
    BOOL MoveFolder(const WCHAR* from, const WCHAR* to) override;

    /// How many moves there were, failed ones included.
    int Count() const { return count; }

  private:
    bool Fails();

    int failAt;
    Way way;
    int count = 0;
};

class BackupTest : public MainWindowTest {
  protected:
    /// What the name of a folder beside the user's ends with while a restore is under way: the
    /// copies, her files while they are moved, all of them.
    static constexpr wchar_t Staged[] = L"%7Erestore";
    static constexpr wchar_t Aside[] = L"%7Easide";
    static constexpr wchar_t Before[] = L"%7Ebefore";

    void SetUp() override;
    void TearDown() override;

    /// Stands for the documents folder.
    static std::wstring Documents();
    static std::wstring UserFile(const std::wstring& name);
    static std::wstring BackupFile(const std::wstring& name);
    /// In the folder beside the user's that has this suffix.
    static std::wstring FileBeside(const wchar_t* suffix, const std::wstring& name);

    static void RemoveTree(const std::wstring& folder);
    static void MakeFolder(const std::wstring& folder);
    /// Replaces what is there.
    static void Write(const std::wstring& path, const std::string& text);
    /// "(none)" without such a file.
    static std::string Read(const std::wstring& path);
    /// Writes a file in the folder beside the user's, made when it is missing; "" is her own.
    static void Put(const wchar_t* suffix, const wchar_t* name, const std::string& text);

    /// The user's files: "old bleeding" and "old notes".
    static void PutUserFiles();
    /// A backup of "saved bleeding" and "saved temperature".
    static void PutBackup(const std::wstring& name);
    static void ExpectOldDiary();
    static void ExpectRestoredDiary();
    /// No folder of a restore is left.
    static void ExpectNothingBeside();

    Texts BoxTexts() const;
};

}  // namespace lunara::test
