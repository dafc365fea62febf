#include "tests/companion/fixture.h"
#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

class PasswordFile : public CompanionTest {
  protected:
    Outcome RunWith(std::vector<std::string> arguments, const std::string& passwordBytes,
                    const std::string& input = "") const {
        arguments.insert(arguments.end(), {"--password-file", Beside("password", passwordBytes)});
        return RunCli(arguments, input);
    }

    void MakeDiary(const std::string& passwordBytes) const {
        const Outcome outcome = RunWith({"import", Diary(), "--csv", "-"}, passwordBytes,
                                        "date,bleeding,note\n2006-01-02,3,secret words\n");
        ASSERT_EQ(outcome.code, ExitDone) << outcome.err;
    }
};

TEST_F(PasswordFile, DiaryOpensWithTheRightPasswordOnly) {
    MakeDiary("right\n");
    constexpr std::string_view PlainWord("s\0e\0c\0r\0e\0t", 11);
    EXPECT_EQ(ReadBytes(InDiary("NotePages.dat")).find(PlainWord), std::string::npos);
    EXPECT_EQ(RunWith({"check", Diary()}, "right").code, ExitDone);
    const Outcome read = RunWith({"export", Diary(), "--csv", "-"}, "right\r\n");
    EXPECT_EQ(read.out, std::string(Header) + "2006-01-02,3,,,,secret words\r\n");
    for (const char* wrong :
         {"wrong", "Right", "right ", "right\n\n", "right\n\r\n", "right\r", "", "\n"}) {
        const auto before = Snapshot();
        for (const char* command : {"check", "predict", "export", "import"}) {
            std::vector<std::string> line = {command, Diary()};
            if (command == std::string("export") || command == std::string("import")) {
                line.insert(line.end(), {"--csv", "-"});
            }
            const Outcome outcome = RunWith(line, wrong, "date,bleeding\n2006-01-03,3\n");
            EXPECT_EQ(outcome.code, ExitData) << command << " with " << wrong;
            EXPECT_EQ(outcome.err, Shown(Diary(), "Bleeding.dat") + ": User/Password invalid\n");
        }
        Beside("password", "right\r\n");
        EXPECT_EQ(Snapshot(), before);
    }
}

struct PasswordPair {
    const char* label;
    std::string written;
    std::string read;
};

TEST_F(PasswordFile, DifferentBytesMayHoldTheSamePassword) {
    const PasswordPair pairs[] = {
        {"LF", "word", "word\n"},
        {"CR LF", "word", "word\r\n"},
        {"only one line end is dropped", "word\n\n", "word\n\r\n"},
        {"byte order mark", "word", "\xEF\xBB\xBFword\n"},
        {"blanks belong to it", " wo rd ", " wo rd \n"},
        {"letters outside ASCII", "caf\xC3\xA9 \xE6\x9C\x88", "caf\xC3\xA9 \xE6\x9C\x88\n"},
        {"the first 55 bytes", std::string(55, 'p'), std::string(60, 'p') + "\n"},
    };
    for (const PasswordPair& pair : pairs) {
        MakeDiary(pair.written);
        const Outcome outcome = RunWith({"check", Diary()}, pair.read);
        EXPECT_EQ(outcome.code, ExitDone) << pair.label << ": " << outcome.err;
        EXPECT_EQ(RunCli({"check", Diary()}).code, ExitData) << pair.label;
        std::filesystem::remove_all(root / "diary");
    }
}

TEST_F(PasswordFile, EmptyFileIsTheEmptyPassword) {
    for (const char* empty : {"", "\n", "\r\n", "\xEF\xBB\xBF\r\n"}) {
        MakeDiary(empty);
        EXPECT_EQ(RunCli({"check", Diary()}).code, ExitDone);
        std::filesystem::remove_all(root / "diary");
    }
}

struct BadPassword {
    const char* label;
    std::string bytes;
    const char* reason;
};

TEST_F(PasswordFile, FileThatHoldsNoPasswordIsRefused) {
    const BadPassword bad[] = {
        {"Latin-1", "caf\xE9\n", "the password is not UTF-8"},
        {"cut sequence", "caf\xC3", "the password is not UTF-8"},
        {"overlong", "\xC0\xAF", "the password is not UTF-8"},
        {"surrogates as bytes", "\xED\xA0\xBC\xED\xBC\x99", "the password is not UTF-8"},
        {"UTF-16", std::string("\xFF\xFEw\0", 4), "the password is not UTF-8"},
        {"zero character", std::string("a\0b", 3), "a password cannot hold a zero character"},
        {"far too long", std::string(65537, 'p'), "it is too long"},
    };
    for (const BadPassword& password : bad) {
        const Outcome outcome =
            RunWith({"import", Diary(), "--csv", "-"}, password.bytes, "date\n");
        EXPECT_EQ(outcome.code, ExitData) << password.label;
        EXPECT_EQ(outcome.err, Utf8(root / "password") + ": " + password.reason + "\n")
            << password.label;
        EXPECT_FALSE(std::filesystem::exists(root / "diary")) << password.label;
    }
}

TEST_F(PasswordFile, MissingFileIsRefused) {
    const std::string missing = Utf8(root / "missing");
    const Outcome outcome = RunCli({"sample", Diary(), "--password-file", missing});
    EXPECT_EQ(outcome.code, ExitData);
    EXPECT_EQ(outcome.err, missing + ": The file does not exist\n");
    EXPECT_TRUE(Snapshot().empty());
}

}  // namespace
}  // namespace lunara::test
