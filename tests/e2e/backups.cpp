#include "tests/e2e/backups.h"

#include <shlobj.h>

#include <filesystem>

#include "tests/driver/menus.h"
#include "tests/driver/steps.h"
#include "tests/driver/wait.h"

namespace lunara::test {

namespace {

namespace fs = std::filesystem;

bool IsListOpen(HWND list) { return ::SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != 0; }

}  // namespace

std::wstring BackupRoot() {
    PWSTR documents = nullptr;
    ::SHGetKnownFolderPath(FOLDERID_Documents, 0, nullptr, &documents);
    std::wstring root = documents == nullptr ? L"" : std::wstring(documents) + L"\\LunaraBackup";
    ::CoTaskMemFree(documents);
    return root;
}

void ForgetBackups() {
    std::error_code ignored;
    fs::remove_all(BackupRoot(), ignored);
}

std::vector<std::wstring> DiaryFoldersBelow(const std::wstring& folder) {
    std::vector<std::wstring> folders;
    if (!fs::is_directory(folder)) {
        return folders;
    }
    const auto addIfDiary = [&](const fs::path& candidate) {
        for (const auto& entry : fs::directory_iterator(candidate)) {
            if (entry.path().extension() == L".dat") {
                folders.push_back(candidate.native());
                return;
            }
        }
    };
    addIfDiary(folder);
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_directory()) {
            addIfDiary(entry.path());
        }
    }
    return folders;
}

bool BeginBackup(Program& program, const std::wstring& name, bool saveFirst) {
    if (!ChooseFromMenu(program, CommandBackup)) {
        return false;
    }
    const HWND dialog = program.WaitForDialog(L"Backup");
    if (dialog == nullptr) {
        return false;
    }
    if (!name.empty() && !TypeInto(program, ::GetDlgItem(dialog, BackupName), name)) {
        return false;
    }
    const HWND box = ::GetDlgItem(dialog, BackupSaveFirst);
    const LRESULT wanted = saveFirst ? BST_CHECKED : BST_UNCHECKED;
    if (::SendMessageW(box, BM_GETCHECK, 0, 0) != wanted) {
        program.Click(box);
    }
    return WaitFor([&] { return ::SendMessageW(box, BM_GETCHECK, 0, 0) == wanted; }) &&
           program.Leave(dialog, ControlOk);
}

HWND OpenBackupList(Program& program) {
    if (!ChooseFromMenu(program, CommandRestore)) {
        return nullptr;
    }
    const HWND dialog = program.WaitForDialog(L"Restore");
    const HWND list = ::GetDlgItem(dialog, RestoreList);
    return dialog != nullptr && program.Click(list) &&
                   WaitFor([list] { return IsListOpen(list); }) && program.Settle()
               ? dialog
               : nullptr;
}

HWND ChooseBackup(Program& program, const std::wstring& name) {
    const HWND dialog = OpenBackupList(program);
    const HWND list = ::GetDlgItem(dialog, RestoreList);
    if (dialog == nullptr) {
        return nullptr;
    }
    program.Type(name.substr(0, 1));
    if (!program.Settle()) {
        return nullptr;
    }
    if (IsListOpen(list)) {  // on some systems a letter closes the list
        program.Press(VK_RETURN);
    }
    return WaitFor([&] { return !IsListOpen(list) && Program::TextOf(list) == name; }) ? dialog
                                                                                       : nullptr;
}

}  // namespace lunara::test
