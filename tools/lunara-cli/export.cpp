#include <filesystem>
#include <ostream>

#include "commands.h"
#include "diary_csv.h"
#include "diary_folder.h"

namespace lunara {
namespace {

/// The data file that the path names, if it names one: CSV must not take its place.
bool IsDataFile(const WideString& path, const WideString& folder) {
    for (const DiaryFile& file : DiaryFiles()) {
        std::error_code error;
        if (std::filesystem::equivalent(path, PathInFolder(folder, file.name), error)) {
            return true;
        }
    }
    return false;
}

}  // namespace

int RunExport(const Options& options, const WideString& password, const Streams& streams) {
    if (const std::optional<Failure> failure = CheckFolder(options.folder)) {
        return Report(*failure, streams);
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
    if (IsDataFile(options.csv, options.folder)) {
        return Report({options.csv, "a data file of the diary itself"}, streams);
    }
    if (!ReplaceWholeFile(options.csv, text)) {
        return Report({options.csv, ReasonText(::GetLastError())}, streams);
    }
    return ExitDone;
}

}  // namespace lunara
