#include <array>
#include <cstdlib>

#include "platform/app_folder.h"
#include "platform/text.h"
#include "tests/companion/fixture.h"
#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

/// Runs the built program through the system's shell, its standard streams redirected to files in
/// the test's folder.
class Program : public CompanionTest {
  protected:
    Outcome RunProgram(const std::string& arguments, const std::string& input = "") {
        std::array<WCHAR, PathCapacity> folder{};
        GetAppFolder(folder.data(), PathCapacity);
        const auto program =
            (std::filesystem::path(folder.data()) / LUNARA_CLI_FROM_TESTS).lexically_normal();
        Beside("stdin", input);
        std::string line = Quoted(program);
        line.append(" ").append(arguments);
        line.append(" <").append(Quoted(root / "stdin"));
        line.append(" >").append(Quoted(root / "stdout"));
        line.append(" 2>").append(Quoted(root / "stderr"));
        if (std::filesystem::path::preferred_separator != '/') {
            // The shell of Windows strips the first and the last quote of a line.
            line.insert(0, 1, '"').push_back('"');
        }
        const int status = std::system(line.c_str());
        Outcome outcome;
        outcome.code =
            status > 0xFF ? status >> 8 : status;  // POSIX has the exit code in the second byte
        outcome.out = ReadBytes(root / "stdout");
        outcome.err = ReadBytes(root / "stderr");
        return outcome;
    }

    static std::string Quoted(const std::filesystem::path& path) {
        std::string quoted(1, '"');
        return quoted.append(Utf8(path)).append(1, '"');
    }

    std::string InTests(const char* name) const { return Quoted(root / name); }
};

TEST_F(Program, ExitCodesReachTheShell) {
    EXPECT_EQ(RunProgram("sample " + InTests("diary") + " --today 2006-11-20").code, ExitDone);
    const Outcome again = RunProgram("sample " + InTests("diary"));
    EXPECT_EQ(again.code, ExitData);
    EXPECT_NE(again.err.find("Temperature.dat: there is a diary already"), std::string::npos);
    EXPECT_EQ(RunProgram("").code, ExitUsage);
    EXPECT_EQ(RunProgram("check " + InTests("diary") + " --fast").code, ExitUsage);
    const Outcome missing = RunProgram("check " + InTests("missing"));
    EXPECT_EQ(missing.code, ExitData);
    EXPECT_NE(missing.err.find("missing: The file does not exist\n"), std::string::npos);
    const Outcome check = RunProgram("check " + InTests("diary"));
    EXPECT_EQ(check.code, ExitDone);
    EXPECT_EQ(check.out.rfind("Temperature.dat: good, ", 0), 0U) << check.out;
}

TEST_F(Program, LineEndsPassTheStandardStreamsUnchanged) {
    // A text stream of Windows would double the CR and end at the control character 0x1A.
    const std::string csv = std::string(Header) + "2006-01-02,3,,,,\"a\rb\x1A\r\nc\"\r\n";
    ASSERT_EQ(RunProgram("import " + InTests("diary") + " --csv -", csv).code, ExitDone);
    EXPECT_EQ(RunProgram("export " + InTests("diary") + " --csv -").out, csv);
}

}  // namespace
}  // namespace lunara::test
