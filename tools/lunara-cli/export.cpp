#include <algorithm>
#include <filesystem>
#include <ostream>

#include "exchange/diary_csv.h"
#include "tools/lunara-cli/commands.h"
#include "tools/lunara-cli/diary_folder.h"

namespace lunara {
namespace {

/// Folds a file name as case-insensitive systems compare names: ASCII letters in lower case, no
/// dots and blanks at the end. Applied on every system, because the diary may move to one of those.
std::string ComparableName(const std::filesystem::path& name) {
    const std::u8string bytes = name.u8string();
    std::string text(bytes.begin(), bytes.end());
    text.erase(text.find_last_not_of(". ") + 1);
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

/// Whether a name is reserved in the diary's folder: that of a data file, existing or not, or of a
/// file that a save puts beside it.
bool IsDiaryName(const std::filesystem::path& name) {
    const std::string wanted = ComparableName(name);
    for (const DataFile file : AllDataFiles) {
        for (const char* extension : {".dat", ".new", ".old"}) {
            if (wanted ==
                ComparableName(
                    std::filesystem::path(DataFileName(file)).replace_extension(extension))) {
                return true;
            }
        }
    }
    return wanted == "save.set" || wanted == "save.end";
}

/// Whether the path names a file of the diary, under any spelling or link. The CSV must not replace
/// such a file.
bool IsDiaryFile(const WideString& path, const WideString& folder) {
    const std::filesystem::path target = TargetOf(path);
    const std::filesystem::path diary = TargetOf(folder);
    std::error_code error;
    for (const DataFile file : AllDataFiles) {
        if (std::filesystem::equivalent(target, diary / DataFileName(file), error)) {
            return true;
        }
    }
    const std::filesystem::path parent = target.has_parent_path() ? target.parent_path() : ".";
    return IsDiaryName(target.filename()) && std::filesystem::equivalent(parent, diary, error);
}

}  // namespace

int RunExport(const Options& options, const WideString& password, const Streams& streams) {
    if (const std::optional<Failure> failure = CheckFolder(options.folder)) {
        return Report(*failure, streams);
    }
    if (options.csv != TEXT("-") && IsDiaryFile(options.csv, options.folder)) {
        return Report({options.csv, "a data file of the diary itself"}, streams);
    }
    UserData data;
    if (const std::optional<Failure> failure = LoadDiary(data, options.folder, password)) {
        return Report(*failure, streams);
    }
    const std::string text = WriteDiaryCsv(data);
    if (options.csv == TEXT("-")) {
        streams.out << text;
        return ExitDone;
    }
    if (!ReplaceWholeFile(options.csv, text)) {
        return Report({options.csv, ReasonText(::GetLastError())}, streams);
    }
    return ExitDone;
}

}  // namespace lunara
