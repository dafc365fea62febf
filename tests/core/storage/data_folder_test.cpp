#include "storage/data_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <map>

#include "platform/app_folder.h"
#include "tests/core/storage/file_support.h"

namespace lunara::test {
namespace {

TEST(FolderName, OrdinaryNamesStayAsTheyAre) {
    for (const WCHAR* name : {TEXT("Anna"),
                              TEXT("Anna Maria"),
                              TEXT(" Anna"),
                              TEXT("Zo\u00EB & Co. (2)"),
                              TEXT("100%"),
                              TEXT("5% a"),
                              TEXT("%G0"),
                              TEXT("%4"),
                              TEXT("a.b"),
                              TEXT(".hidden"),
                              TEXT("..a"),
                              TEXT("\u043B\u0443\u043D\u0430"),
                              TEXT("\U0001F319"),
                              TEXT("\x7F"),
                              TEXT("CONSTANCE"),
                              TEXT("COM"),
                              TEXT("COM10"),
                              TEXT("LPTX"),
                              TEXT("my con"),
                              TEXT("Lunara"),
                              TEXT("")}) {
        EXPECT_EQ(ToUtf8(FolderNameOfUser(name)), ToUtf8(name));
    }
}

struct EscapeCase {
    const WCHAR* name;
    const char* folder;
};

void ExpectEscapes(std::initializer_list<EscapeCase> cases) {
    for (const auto& [name, folder] : cases) {
        EXPECT_EQ(ToUtf8(FolderNameOfUser(name)), folder);
    }
}

TEST(FolderName, CharactersThatAFolderCannotHaveAreEscaped) {
    ExpectEscapes({
        {TEXT("a/b\\c"), "a%2Fb%5Cc"},
        {TEXT(":*?\"<>|"), "%3A%2A%3F%22%3C%3E%7C"},
        {TEXT("a\tb\x01\x1F"), "a%09b%01%1F"},
        {TEXT("C:\\Windows"), "C%3A%5CWindows"},
    });
}

TEST(FolderName, NoNameReachesOutOfTheFolder) {
    ExpectEscapes({
        {TEXT("."), "%2E"},
        {TEXT(".."), ".%2E"},
        {TEXT("../.."), "..%2F.%2E"},
        {TEXT("\\Windows"), "%5CWindows"},
    });
}

TEST(FolderName, DotOrBlankAtTheEndIsEscaped) {
    ExpectEscapes({
        {TEXT("Anna."), "Anna%2E"},
        {TEXT("Anna "), "Anna%20"},
        {TEXT("Anna. "), "Anna.%20"},
        {TEXT("Anna.."), "Anna.%2E"},
        {TEXT(" "), "%20"},
    });
}

TEST(FolderName, DeviceNamesAreEscapedWhateverFollowsTheDot) {
    ExpectEscapes({
        {TEXT("CON"), "%43ON"},
        {TEXT("con"), "%63on"},
        {TEXT("Prn"), "%50rn"},
        {TEXT("aux"), "%61ux"},
        {TEXT("NUL.txt"), "%4EUL.txt"},
        {TEXT("nul.a.b"), "%6Eul.a.b"},
        {TEXT("con .txt"), "%63on .txt"},
        {TEXT("CON "), "%43ON%20"},
        {TEXT("com0"), "%63om0"},
        {TEXT("COM9"), "%43OM9"},
        {TEXT("LPT1.dat"), "%4CPT1.dat"},
        {TEXT("lpt\u00B9"), "%6Cpt\xC2\xB9"},
        {TEXT("COM\u00B2"), "%43OM\xC2\xB2"},
        {TEXT("com\u00B3"), "%63om\xC2\xB3"},
        {TEXT("conin$"), "%63onin$"},
        {TEXT("CONOUT$"), "%43ONOUT$"},
    });
}

TEST(FolderName, PercentIsEscapedOnlyWhereItReadsAsAnEscape) {
    ExpectEscapes({
        {TEXT("%41"), "%2541"},
        {TEXT("%ef"), "%25ef"},
        {TEXT("100%25"), "100%2525"},
        {TEXT("%%41"), "%%2541"},
        {TEXT("%4."), "%4%2E"},
        {TEXT("%63on"), "%2563on"},
    });
}

TEST(FolderName, SurrogateWithoutItsPartnerIsEscapedAsThreeBytes) {
    ExpectEscapes({
        {TEXT("\xD83D"), "%ED%A0%BD"},
        {TEXT("\xDE00 \xD83D x"), "%ED%B8%80 %ED%A0%BD x"},
        {TEXT("\xD83D\xD83D\xDE00"), "%ED%A0%BD\xF0\x9F\x98\x80"},
        {TEXT("\xD83D\xDE00\xDE00"), "\xF0\x9F\x98\x80%ED%B8%80"},
        {TEXT("%ED%A0%BD"), "%25ED%25A0%25BD"},
    });
}

/// File name of the running program.
WideString ModuleName() {
    std::array<WCHAR, PathCapacity> path{};
    ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    const WideString whole(path.data());
    return whole.substr(whole.find_last_of(TEXT("\\/")) + 1);
}

TEST(FolderName, TheProgramsOwnFileIsNoFolder) {
    ExpectEscapes({
        {TEXT("Lunara.exe"), "%4Cunara.exe"},
        {TEXT("LUNARA.EXE"), "%4CUNARA.EXE"},
        {TEXT("lunara.exe"), "%6Cunara.exe"},
    });
    const std::string own = ToUtf8(FolderNameOfUser(ModuleName()));
    EXPECT_EQ(own, "%6C" + ToUtf8(ModuleName()).substr(1));  // "l" of the test's own name
}

TEST(FolderName, TwoNamesNeverShareAFolder) {
    // All names of up to five characters from those that matter to escaping.
    const WideString alphabet = TEXT("%25Ee./ ");
    std::map<WideString, WideString> nameOfFolder;
    std::vector<WideString> names{TEXT("")};
    for (std::size_t done = 0; done < names.size(); ++done) {
        const WideString name = names[done];
        const auto [entry, isNew] = nameOfFolder.emplace(FolderNameOfUser(name), name);
        ASSERT_TRUE(isNew) << ToUtf8(name) << " and " << ToUtf8(entry->second);
        for (const WCHAR unit : alphabet) {
            if (name.size() < 5) {
                names.push_back(name + unit);
            }
        }
    }
    EXPECT_EQ(nameOfFolder.size(), 37449U);
}

TEST(DataFolder, IsTheProgramsFolderAndTheEscapedName) {
    std::array<WCHAR, PathCapacity> appFolder{};
    GetAppFolder(appFolder.data(), static_cast<int>(appFolder.size()));
    EXPECT_EQ(ToUtf8(DataFolderOfUser(TEXT("a/b"))), ToUtf8(appFolder.data()) + "a%2Fb");
    EXPECT_EQ(DataFolderOfUser(WideString(400, 'x')).size(), PathCapacity - 1);
}

TEST(CreateDirectoryTree, CreatesMissingParentsWithEitherSeparator) {
    const ScratchFolder scratch;
    for (const WCHAR* below : {TEXT("/a/b/c"), TEXT("\\d\\e"), TEXT("/f\\g/"), TEXT("/a/b/h\\")}) {
        const WideString folder = Wide(scratch.Root()) + below;
        EXPECT_EQ(CreateDirectoryTree(folder.c_str()), 1);
        EXPECT_NE(::GetFileAttributesW(folder.c_str()) & FILE_ATTRIBUTE_DIRECTORY, 0U);
        EXPECT_NE(::GetFileAttributesW(folder.c_str()), INVALID_FILE_ATTRIBUTES);
    }
    EXPECT_TRUE(std::filesystem::is_directory(scratch.Root() / "a" / "b" / "c"));
    EXPECT_TRUE(std::filesystem::is_directory(scratch.Root() / "f" / "g"));
}

TEST(CreateDirectoryTree, FolderThatIsThereIsFine) {
    const ScratchFolder scratch;
    EXPECT_EQ(CreateDirectoryTree(Wide(scratch.Root()).c_str()), 1);
    EXPECT_EQ(CreateDirectoryTree((Wide(scratch.Root()) + TEXT("/")).c_str()), 1);
    EXPECT_EQ(CreateDirectoryTree(TEXT("/")), 1);
}

TEST(CreateDirectoryTree, FileInTheWayFailsWithTheSystemsError) {
    const ScratchFolder scratch;
    WriteBytes(scratch.File("file"), {1, 2, 3});
    for (const WCHAR* below : {TEXT("/file"), TEXT("/file/a"), TEXT("/file/a/b")}) {
        ::SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(CreateDirectoryTree((Wide(scratch.Root()) + below).c_str()), 0);
        EXPECT_NE(::GetLastError(), ERROR_SUCCESS);
    }
    EXPECT_EQ(ReadBytes(scratch.File("file")), (Bytes{1, 2, 3}));
    EXPECT_EQ(CreateDirectoryTree(TEXT("")), 0);
}

TEST(CreateDirectoryTree, EscapedNamesCanBeFolders) {
    const ScratchFolder scratch;
    int count = 0;
    for (const WCHAR* name : {TEXT(".."), TEXT("CON"), TEXT("a/b"), TEXT("Anna. "), TEXT("\xD83D"),
                              TEXT("nul.txt"), TEXT(":"), TEXT("\x01")}) {
        const WideString folder = Wide(scratch.Root()) + TEXT("/") + FolderNameOfUser(name);
        EXPECT_EQ(CreateDirectoryTree(folder.c_str()), 1) << ToUtf8(folder);
        ++count;
        EXPECT_EQ(scratch.Names().size(), static_cast<std::size_t>(count)) << ToUtf8(folder);
    }
}

}  // namespace
}  // namespace lunara::test
