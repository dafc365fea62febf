#include <ostream>

#include "tools/lunara-cli/commands.h"
#include "tools/lunara-cli/diary_folder.h"
#include "tools/lunara-cli/prediction_report.h"

namespace lunara {

int RunPredict(const Options& options, const WideString& password, const Streams& streams) {
    if (const std::optional<Failure> failure = CheckFolder(options.folder)) {
        return Report(*failure, streams);
    }
    UserData data;
    if (const std::optional<Failure> failure = LoadDiary(data, options.folder, password)) {
        return Report(*failure, streams);
    }
    const PredictionReport report = MakePredictionReport(data);
    streams.out << (options.json ? ReportAsJson(report) : ReportAsTable(report));
    return ExitDone;
}

}  // namespace lunara
