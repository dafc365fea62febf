#include "tools/lunara-cli/password_file.h"

#include "storage/data_file.h"

namespace lunara {
namespace {

constexpr std::size_t LongestPasswordFile = std::size_t{64} * 1024;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

std::string_view WithoutLineEnd(std::string_view text) {
    if (!text.empty() && text.back() == '\n') {
        text.remove_suffix(1);
        if (!text.empty() && text.back() == '\r') {
            text.remove_suffix(1);
        }
    }
    return text;
}

/// Extracts the password from the file's bytes. Returns null, or why they hold none.
const char* TakePassword(std::string_view text, WideString& password) {
    if (text.substr(0, ByteOrderMark.size()) == ByteOrderMark) {
        text.remove_prefix(ByteOrderMark.size());
    }
    text = WithoutLineEnd(text);
    std::optional<WideString> wide = FromStrictUtf8(text);  // no editor writes encoded surrogates
    if (!wide) {
        return "the password is not UTF-8";
    }
    if (wide->find(WCHAR{0}) != WideString::npos) {
        return "a password cannot hold a zero character";
    }
    password.swap(*wide);
    return nullptr;
}

}  // namespace

std::optional<Failure> ReadPasswordFile(const WideString& path, WideString& password) {
    std::string bytes;
    if (!ReadWholeFile(path, LongestPasswordFile, bytes)) {
        const DWORD error = ::GetLastError();
        ::SecureZeroMemory(bytes.data(), bytes.size());
        const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
        return Failure{path, ReasonText(missing ? DWORD{DataFileMissing} : error)};
    }
    const char* reason = TakePassword(bytes, password);
    ::SecureZeroMemory(bytes.data(), bytes.size());
    return reason != nullptr ? std::optional(Failure{path, reason}) : std::nullopt;
}

}  // namespace lunara
