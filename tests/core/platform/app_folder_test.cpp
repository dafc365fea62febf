#include "platform/app_folder.h"

#include <gtest/gtest.h>

namespace lunara::test {
namespace {

TEST(FolderOfModule, EndsWithTheLastSeparator) {
    const struct {
        const WCHAR* path;
        const char* folder;
    } cases[] = {
        {TEXT("C:\\Tools\\Lunara.exe"), "C:\\Tools\\"},
        {TEXT("/home/her/lunara"), "/home/her/"},
        {TEXT("Lunara.exe"), ""},
        {TEXT(""), ""},
    };
    for (const auto& [path, folder] : cases) {
        const auto length = static_cast<DWORD>(WideView(path).size());
        EXPECT_EQ(ToUtf8(FolderOfModule(path, length, PathCapacity)), folder);
    }
}

TEST(FolderOfModule, PathThatWasCutHasNone) {
    WideString path = TEXT("C:\\diaries\\");
    path.append(PathCapacity - path.size() - 1, 'x');
    const auto length = static_cast<DWORD>(path.size());
    EXPECT_EQ(ToUtf8(FolderOfModule(path.c_str(), length, PathCapacity)), "C:\\diaries\\");
    EXPECT_EQ(ToUtf8(FolderOfModule(path.c_str(), length + 1, PathCapacity)), "");
}

}  // namespace
}  // namespace lunara::test
