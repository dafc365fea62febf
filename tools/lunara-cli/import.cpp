#include <istream>
#include <ostream>

#include "exchange/diary_csv.h"
#include "exchange/import_changes.h"
#include "storage/data_file.h"
#include "tools/lunara-cli/commands.h"
#include "tools/lunara-cli/diary_folder.h"

namespace lunara {
namespace {

// Longest CSV accepted, in bytes: more than the longest diary that the data files can hold.
constexpr std::size_t LargestCsv = std::size_t{256} * 1024 * 1024;

std::optional<Failure> ReadCsvText(const WideString& path, std::istream& in, std::string& text) {
    if (path == TEXT("-")) {
        if (ReadWholeStream(in, LargestCsv, text)) {
            return std::nullopt;
        }
        return Failure{path, "standard input could not be read, or is too long"};
    }
    if (ReadWholeFile(path, LargestCsv, text)) {
        return std::nullopt;
    }
    const DWORD error = ::GetLastError();
    const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return Failure{path, ReasonText(missing ? DWORD{DataFileMissing} : error)};
}

Failure FaultIn(const WideString& path, const CsvFault& fault) {
    return {path, "line " + std::to_string(fault.line) + ", column " +
                      std::to_string(fault.column) + ": " + fault.reason};
}

}  // namespace

int RunImport(const Options& options, const WideString& password, const Streams& streams) {
    std::string text;
    if (const std::optional<Failure> failure = ReadCsvText(options.csv, streams.in, text)) {
        return Report(*failure, streams);
    }
    DiaryCsv csv;
    CsvFault fault;
    if (!ReadDiaryCsv(text, csv, fault)) {
        return Report(FaultIn(options.csv, fault), streams);
    }
    UserData data;
    if (FileExists(options.folder)) {
        if (const std::optional<Failure> failure = LoadDiary(data, options.folder, password)) {
            return Report(*failure, streams);
        }
    }
    if (!ApplyChanges(data, csv.changes)) {
        return Report({options.folder, "not enough memory"}, streams);
    }
    if (const std::optional<Failure> failure = SaveDiary(data, options.folder, password)) {
        return Report(*failure, streams);
    }
    for (const CsvFault& oddity : csv.oddities) {
        Report(FaultIn(options.csv, oddity), streams);
    }
    return ExitDone;
}

}  // namespace lunara
