#include "tools/lunara-cli/companion.h"

#include <exception>
#include <new>
#include <ostream>

#include "platform/clock.h"
#include "tools/lunara-cli/commands.h"
#include "tools/lunara-cli/password_file.h"

namespace lunara {
namespace {

constexpr WORD Noon = 12;

/// Fixes the clock at noon of `today`, if given, until the scope ends.
class TodayScope {
  public:
    explicit TodayScope(std::optional<DateKey> today) : isSet(today.has_value()) {
        if (isSet) {
            SYSTEMTIME date{};
            FromDateKey(*today, date);
            date.wHour = Noon;
            SetLocalNow(date);
        }
    }
    TodayScope(const TodayScope&) = delete;
    TodayScope& operator=(const TodayScope&) = delete;
    ~TodayScope() {
        if (isSet) {
            ReleaseClock();
        }
    }

  private:
    bool isSet;
};

/// A password that is overwritten in memory when it goes out of scope.
struct Password {
    Password() = default;
    Password(const Password&) = delete;
    Password& operator=(const Password&) = delete;
    ~Password() { ::SecureZeroMemory(text.data(), text.size() * sizeof(WCHAR)); }

    WideString text;
};

int RunCommand(const Options& options, const Streams& streams) {
    Password password;
    if (options.passwordFile) {
        const std::optional<Failure> failure =
            ReadPasswordFile(*options.passwordFile, password.text);
        if (failure) {
            return Report(*failure, streams);
        }
    }
    const TodayScope today(options.today);
    switch (options.command) {
        case Command::Predict:
            return RunPredict(options, password.text, streams);
        case Command::Export:
            return RunExport(options, password.text, streams);
        case Command::Import:
            return RunImport(options, password.text, streams);
        case Command::Check:
            return RunCheck(options, password.text, streams);
        case Command::Sample:
            return RunSample(options, password.text, streams);
    }
    return ExitUsage;
}

}  // namespace

int Report(const Failure& failure, const Streams& streams) {
    streams.err << ToUtf8(failure.path) << ": " << failure.reason << '\n';
    return ExitData;
}

int RunCompanion(const std::vector<std::string>& arguments, const Streams& streams) {
    try {
        const ParsedOptions parsed = ParseOptions(arguments);
        int code = parsed.exitCode;
        if (parsed.options) {
            code = RunCommand(*parsed.options, streams);
        } else {
            (code == ExitDone ? streams.out : streams.err) << parsed.text;
        }
        if (!streams.out.flush() && code == ExitDone) {
            return Report({TEXT("-"), "standard output could not be written"}, streams);
        }
        return code;
    } catch (const std::bad_alloc&) {
        return Report({TEXT("lunara-cli"), "not enough memory"}, streams);
    } catch (const std::exception& error) {  // thrown by std::filesystem
        return Report({TEXT("lunara-cli"), error.what()}, streams);
    }
}

}  // namespace lunara
