#pragma once

// The five commands of lunara-cli. Each takes the parsed options and the password ("" for none),
// and returns ExitDone, or ExitData after saying on `streams.err` why it failed.

#include "tools/lunara-cli/companion.h"
#include "tools/lunara-cli/files.h"
#include "tools/lunara-cli/options.h"

namespace lunara {

int RunPredict(const Options& options, const WideString& password, const Streams& streams);
int RunExport(const Options& options, const WideString& password, const Streams& streams);
int RunImport(const Options& options, const WideString& password, const Streams& streams);
int RunCheck(const Options& options, const WideString& password, const Streams& streams);
int RunSample(const Options& options, const WideString& password, const Streams& streams);

/// Prints "path: reason" to `streams.err` and returns ExitData.
int Report(const Failure& failure, const Streams& streams);

}  // namespace lunara
