#pragma once

// The five commands. Each returns the exit code, ExitDone or ExitData, and says on `streams.err`
// why it failed.

#include "tools/lunara-cli/companion.h"
#include "tools/lunara-cli/files.h"
#include "tools/lunara-cli/options.h"

namespace lunara {

int RunPredict(const Options& options, const WideString& password, const Streams& streams);
int RunExport(const Options& options, const WideString& password, const Streams& streams);
int RunImport(const Options& options, const WideString& password, const Streams& streams);
int RunCheck(const Options& options, const WideString& password, const Streams& streams);
int RunSample(const Options& options, const WideString& password, const Streams& streams);

/// "path: reason" on `err`; returns ExitData.
int Report(const Failure& failure, const Streams& streams);

}  // namespace lunara
