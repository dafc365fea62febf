#include <ostream>

#include "tools/lunara-cli/commands.h"
#include "tools/lunara-cli/diary_folder.h"

namespace lunara {
namespace {

std::string Verdict(DataFile file, const UserData& data, const WideString& folder) {
    if (!FileExists(PathInFolder(folder, file))) {
        return "no file, nothing recorded";
    }
    const std::int32_t count = data.Count(file);
    return "good, " + std::to_string(count) + (count == 1 ? " record" : " records");
}

}  // namespace

int RunCheck(const Options& options, const WideString& password, const Streams& streams) {
    if (const std::optional<Failure> failure = CheckFolder(options.folder)) {
        return Report(*failure, streams);
    }
    if (const std::optional<Failure> failure = MendDiary(options.folder)) {
        return Report(*failure, streams);
    }
    UserData data;
    for (const DataFile file : AllDataFiles) {
        const std::optional<Failure> failure = LoadDiaryFile(file, data, options.folder, password);
        if (failure) {
            streams.out.flush();
            return Report(*failure, streams);
        }
        streams.out << ToUtf8(DataFileName(file)) << ": " << Verdict(file, data, options.folder)
                    << '\n';
    }
    return ExitDone;
}

}  // namespace lunara
