#include "platform/clock.h"
#include "tools/lunara-cli/commands.h"
#include "tools/lunara-cli/diary_folder.h"
#include "tools/lunara-cli/sample_diary.h"

namespace lunara {

int RunSample(const Options& options, const WideString& password, const Streams& streams) {
    if (const std::optional<Failure> failure = MendDiary(options.folder)) {
        return Report(*failure, streams);
    }
    for (const DataFile file : AllDataFiles) {
        const WideString path = PathInFolder(options.folder, file);
        if (FileExists(path)) {
            return Report({path, "there is a diary already, which the sample would replace"},
                          streams);
        }
    }
    UserData data;
    if (FillSampleDiary(data, LocalNow()) == 0) {
        return Report({options.folder, "the sample would begin before 1601"}, streams);
    }
    if (const std::optional<Failure> failure = SaveDiary(data, options.folder, password)) {
        return Report(*failure, streams);
    }
    return ExitDone;
}

}  // namespace lunara
