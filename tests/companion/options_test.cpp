#include "tools/lunara-cli/options.h"

#include <gtest/gtest.h>

#include "tools/lunara-cli/companion.h"

namespace lunara::test {
namespace {

TEST(Options, EveryCommandTakesAFolder) {
    const std::pair<std::vector<std::string>, Command> lines[] = {
        {{"predict", "d"}, Command::Predict},
        {{"export", "d", "--csv", "f"}, Command::Export},
        {{"import", "d", "--csv", "f"}, Command::Import},
        {{"check", "d"}, Command::Check},
        {{"sample", "d"}, Command::Sample},
    };
    for (const auto& [arguments, command] : lines) {
        const ParsedOptions parsed = ParseOptions(arguments);
        ASSERT_TRUE(parsed.options) << arguments[0] << parsed.text;
        EXPECT_EQ(parsed.options->command, command);
        EXPECT_EQ(parsed.options->folder, TEXT("d"));
        EXPECT_FALSE(parsed.options->passwordFile);
        EXPECT_FALSE(parsed.options->today);
        EXPECT_FALSE(parsed.options->json);
    }
}

TEST(Options, PredictTakesAllItsOptions) {
    const ParsedOptions parsed =
        ParseOptions({"predict", "--json", "--today", "2004-02-29", "d", "--password-file", "p"});
    ASSERT_TRUE(parsed.options) << parsed.text;
    EXPECT_TRUE(parsed.options->json);
    EXPECT_EQ(parsed.options->today, MakeDateKey(2004, 2, 29));
    EXPECT_EQ(parsed.options->passwordFile, WideString(TEXT("p")));
}

TEST(Options, DashStandsForAStandardStream) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"export", "d", "--csv", "-"}, {"export", "--csv=-", "d"}}) {
        const ParsedOptions parsed = ParseOptions(arguments);
        ASSERT_TRUE(parsed.options) << parsed.text;
        EXPECT_EQ(parsed.options->csv, TEXT("-"));
    }
}

TEST(Options, SeparatorsBehindTheFolderAreDropped) {
    const std::pair<const char*, const WCHAR*> folders[] = {
        {"/a/b", TEXT("/a/b")},
        {"a/", TEXT("a")},
        {"a\\", TEXT("a")},
        {"a//", TEXT("a")},
        {"/", TEXT("/")},
        {"C:\\", TEXT("C:")},
        {"caf\xC3\xA9", TEXT("caf\u00E9")},
    };
    for (const auto& [argument, folder] : folders) {
        const ParsedOptions parsed = ParseOptions({"check", argument});
        ASSERT_TRUE(parsed.options) << argument << parsed.text;
        EXPECT_EQ(parsed.options->folder, folder) << argument;
    }
}

struct WrongLine {
    const char* label;
    std::vector<std::string> arguments;
};

TEST(Options, WrongUsageIsExitCode2) {
    const WrongLine lines[] = {
        {"nothing", {}},
        {"unknown command", {"burn", "d"}},
        {"two commands", {"check", "d", "sample", "d"}},
        {"no folder", {"check"}},
        {"empty folder", {"check", ""}},
        {"two folders", {"check", "d", "e"}},
        {"unknown option", {"check", "d", "--fast"}},
        {"unknown short option", {"check", "d", "-x"}},
        {"password on the command line", {"check", "d", "--password", "p"}},
        {"option without its value", {"check", "d", "--password-file"}},
        {"export without --csv", {"export", "d"}},
        {"import without --csv", {"import", "d"}},
        {"--csv without its value", {"export", "d", "--csv"}},
        {"--csv empty", {"export", "d", "--csv", ""}},
        {"--csv empty for import", {"import", "d", "--csv="}},
        {"--password-file empty", {"check", "d", "--password-file", ""}},
        {"--csv twice", {"export", "d", "--csv", "a", "--csv", "b"}},
        {"--csv for check", {"check", "d", "--csv", "f"}},
        {"--json for check", {"check", "d", "--json"}},
        {"--today for export", {"export", "d", "--csv", "f", "--today", "2006-01-02"}},
        {"--today with no such day", {"predict", "d", "--today", "2006-02-29"}},
        {"--today with a word", {"predict", "d", "--today", "tomorrow"}},
        {"--today empty", {"predict", "d", "--today", ""}},
        {"--today with one digit", {"predict", "d", "--today", "2006-1-2"}},
        {"--today before 1601", {"predict", "d", "--today", "1600-12-31"}},
        {"--today after 2500", {"predict", "d", "--today", "2501-01-01"}},
        {"--today with more behind it", {"predict", "d", "--today", "2006-01-021"}},
        {"folder that is not UTF-8", {"check", "caf\xE9"}},
        {"file that is not UTF-8", {"export", "d", "--csv", "caf\xE9"}},
        {"folder with half a surrogate pair", {"check", "d\xED\xA0\x80"}},
        {"file with half a surrogate pair", {"export", "d", "--csv", "\xED\xB0\x80.csv"}},
        {"surrogates one by one", {"export", "d", "--csv", "\xED\xA0\xBD\xED\xB0\x80"}},
    };
    for (const WrongLine& line : lines) {
        const ParsedOptions parsed = ParseOptions(line.arguments);
        EXPECT_FALSE(parsed.options) << line.label;
        EXPECT_EQ(parsed.exitCode, ExitUsage) << line.label;
        EXPECT_EQ(parsed.text.rfind("lunara-cli: ", 0), 0U) << line.label << ": " << parsed.text;
    }
}

TEST(Options, HelpIsNoError) {
    const ParsedOptions all = ParseOptions({"--help"});
    EXPECT_EQ(all.exitCode, ExitDone);
    for (const char* command : {"predict", "export", "import", "check", "sample"}) {
        EXPECT_NE(all.text.find(command), std::string::npos) << command;
        const ParsedOptions one = ParseOptions({command, "--help"});
        EXPECT_EQ(one.exitCode, ExitDone) << command;
        EXPECT_NE(one.text.find("Usage: lunara-cli " + std::string(command)), std::string::npos)
            << one.text;
        EXPECT_NE(one.text.find("--password-file"), std::string::npos) << command;
    }
}

}  // namespace
}  // namespace lunara::test
