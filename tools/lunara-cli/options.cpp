#include "tools/lunara-cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "exchange/iso_date.h"
#include "tools/lunara-cli/companion.h"

namespace lunara {
namespace {

/// Option values as given on the command line, not yet checked.
struct RawOptions {
    std::string folder;
    std::string passwordFile;
    std::string today;
    std::string csv;
    bool json = false;
};

CLI::App* AddCommand(CLI::App& app, const char* name, const char* purpose, RawOptions& raw) {
    CLI::App* command = app.add_subcommand(name, purpose);
    command->add_option("DIR", raw.folder, "The data folder of one user")->required();
    command->add_option("--password-file", raw.passwordFile,
                        "A UTF-8 file with the password; without it the password is empty");
    return command;
}

void AddToday(CLI::App* command, RawOptions& raw) {
    command->add_option("--today", raw.today, "The day to take for today, YYYY-MM-DD");
}

/// Converts an argument to UTF-16, or throws a usage error when it is not UTF-8 or holds a zero
/// character. Encoded surrogates are refused, too: the system's own path functions would stop at
/// them.
WideString WideArgument(const std::string& argument) {
    std::optional<WideString> wide = FromStrictUtf8(argument);
    if (!wide || wide->find(WCHAR{0}) != WideString::npos) {
        throw CLI::ValidationError("an argument is not UTF-8");
    }
    return *wide;
}

WideString NameArgument(const std::string& argument, const std::string& option) {
    if (argument.empty()) {
        throw CLI::ValidationError(option + " is empty");
    }
    return WideArgument(argument);
}

WideString FolderArgument(const std::string& argument) {
    WideString folder = NameArgument(argument, "DIR");
    // Strips separators at the end, but keeps one when there is nothing else: the root folder.
    const std::size_t last = folder.find_last_not_of(TEXT("/\\"));
    folder.resize(last == WideString::npos ? 1 : last + 1);
    return folder;
}

DateKey TodayArgument(const std::string& argument) {
    const std::optional<DateKey> key = ParseIsoDate(argument);
    if (!key || !IsRealDay(*key)) {
        throw CLI::ValidationError("--today: not a day from 1601-01-01 to 2500-12-31: " + argument);
    }
    return *key;
}

Options TakeOptions(const CLI::App& used, Command command, const RawOptions& raw) {
    Options options;
    options.command = command;
    options.json = raw.json;
    options.folder = FolderArgument(raw.folder);
    if (used.count("--password-file") != 0) {
        options.passwordFile = NameArgument(raw.passwordFile, "--password-file");
    }
    const CLI::Option* today = used.get_option_no_throw("--today");
    if (today != nullptr && today->count() != 0) {
        options.today = TodayArgument(raw.today);
    }
    if (used.get_option_no_throw("--csv") != nullptr) {
        options.csv = NameArgument(raw.csv, "--csv");
    }
    return options;
}

}  // namespace

ParsedOptions ParseOptions(std::vector<std::string> arguments) {
    CLI::App app("Lunara's companion: one user's diary for scripts and other programs.",
                 "lunara-cli");
    // On Windows the parser would otherwise take a folder that begins with '/' for an option.
    app.allow_windows_style_options(false);
    app.require_subcommand(1);
    app.footer("Exit code: 0 done, 1 data could not be read or written, 2 wrong usage.");

    RawOptions raw;
    const std::pair<CLI::App*, Command> commands[] = {
        {AddCommand(app, "predict", "Print what the diary predicts", raw), Command::Predict},
        {AddCommand(app, "export", "Write the diary as CSV", raw), Command::Export},
        {AddCommand(app, "import", "Put a CSV file's days into the diary", raw), Command::Import},
        {AddCommand(app, "check", "Read the data files, one line for each", raw), Command::Check},
        {AddCommand(app, "sample", "Write a two-year example diary", raw), Command::Sample},
    };
    AddToday(app.get_subcommand("predict"), raw);
    AddToday(app.get_subcommand("sample"), raw);
    app.get_subcommand("predict")->add_flag("--json", raw.json, "One JSON object");
    app.get_subcommand("export")
        ->add_option("--csv", raw.csv, "The file to write, - for standard output")
        ->required();
    app.get_subcommand("import")
        ->add_option("--csv", raw.csv, "The file to read, - for standard input")
        ->required();

    ParsedOptions parsed;
    try {
        std::reverse(arguments.begin(), arguments.end());  // the parser takes the last one first
        app.parse(std::move(arguments));
        for (const auto& [used, command] : commands) {
            if (used->parsed()) {
                parsed.options = TakeOptions(*used, command, raw);
            }
        }
    } catch (const CLI::CallForHelp&) {
        parsed.text = app.help();  // the command's help when one was given, else the program's
    } catch (const CLI::Error& error) {
        parsed.exitCode = ExitUsage;
        parsed.text =
            std::string("lunara-cli: ") + error.what() + "\nRun lunara-cli --help for the usage.\n";
    }
    return parsed;
}

}  // namespace lunara
