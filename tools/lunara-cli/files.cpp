#include "tools/lunara-cli/files.h"

#include <algorithm>
#include <istream>
#include <limits>
#include <string>

#include "platform/arguments.h"
#include "platform/message_text.h"
#include "storage/replacement_file.h"

namespace lunara {
namespace {

constexpr DWORD FileTooLarge = 223;   // ERROR_FILE_TOO_LARGE
constexpr DWORD BadPathSyntax = 123;  // ERROR_INVALID_NAME
constexpr DWORD FirstMessageId = 57344;
constexpr DWORD LastMessageId = 57359;
constexpr int ReasonCapacity = 512;
constexpr std::size_t ChunkBytes = std::size_t{64} * 1024;

struct KnownReason {
    DWORD code;
    const char* text;
};

// Common file errors in fixed English words, so that they read the same on every system and match
// the language of all other messages.
constexpr KnownReason KnownReasons[] = {
    {ERROR_FILE_NOT_FOUND, "there is no such file or folder"},
    {ERROR_PATH_NOT_FOUND, "there is no such folder"},
    {ERROR_ACCESS_DENIED, "access is denied"},
    {ERROR_WRITE_FAULT, "it cannot be written"},
    {ERROR_READ_FAULT, "it cannot be read"},
    {ERROR_SHARING_VIOLATION, "another program uses it"},
    {ERROR_DISK_FULL, "there is no room left on the disk"},
    {BadPathSyntax, "no file can have such a name"},
    {ERROR_ALREADY_EXISTS, "there is something of this name already"},
    {ERROR_FILENAME_EXCED_RANGE, "the path is too long"},
    {FileTooLarge, "it is too long"},
};

/// Opens an existing file and closes it at the end of the scope. A successful close leaves the last
/// error of the calls before it.
class OpenFile {
  public:
    OpenFile(const WideString& path, DWORD access)
        : handle(::CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { Close(); }

    bool IsOpen() const { return handle != INVALID_HANDLE_VALUE; }
    HANDLE Handle() const { return handle; }

    bool Close() {
        if (!IsOpen()) {
            return true;
        }
        const DWORD error = ::GetLastError();
        const bool closed = ::CloseHandle(handle) != 0;
        handle = INVALID_HANDLE_VALUE;
        if (closed) {
            ::SetLastError(error);
        }
        return closed;
    }

  private:
    HANDLE handle;
};

bool WriteBytes(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto wanted = static_cast<DWORD>(std::min<std::size_t>(
            bytes.size(), static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())));
        DWORD written = 0;
        if (::WriteFile(file, bytes.data(), wanted, &written, nullptr) == 0) {
            return false;
        }
        if (written == 0) {
            ::SetLastError(ERROR_WRITE_FAULT);
            return false;
        }
        bytes.remove_prefix(written);
    }
    return true;
}

/// Whether the path names a pipe, a device or the like: something that is written to, and must not
/// be replaced by a file.
bool IsSpecialFile(const std::filesystem::path& path) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    return !error && std::filesystem::exists(status) && !std::filesystem::is_regular_file(status) &&
           !std::filesystem::is_directory(status);
}

bool WriteToSpecialFile(const WideString& path, std::string_view bytes) {
    OpenFile file(path, GENERIC_WRITE);
    return file.IsOpen() && WriteBytes(file.Handle(), bytes) && file.Close();
}

/// The path as UTF-16, as the program's own file calls take it; "" when it does not convert.
WideString WideOf(const std::filesystem::path& path) {
    const std::u8string bytes = path.u8string();
    return FromUtf8({reinterpret_cast<const char*>(bytes.data()), bytes.size()}).value_or(TEXT(""));
}

/// Returns a path beside `path` that nothing has: the sibling path of a save, else `path` with
/// ".2.new", ".3.new", ... appended. The user may keep a file of any of these names.
WideString FreeSiblingOf(const WideString& path) {
    WideString sibling = SiblingPath(path);
    const auto isTaken = [&sibling] {
        std::error_code error;
        return std::filesystem::exists(
            std::filesystem::symlink_status(std::filesystem::path(sibling), error));
    };
    for (int number = 2; isTaken(); ++number) {
        std::string extension = std::to_string(number);
        extension.insert(0, 1, '.').append(".new");
        sibling = path + WideString(extension.begin(), extension.end());
    }
    return sibling;
}

}  // namespace

std::string ReasonText(DWORD code) {
    WCHAR text[ReasonCapacity] = {};
    if (code >= FirstMessageId && code <= LastMessageId &&
        ::LoadStringW(nullptr, code, text, ReasonCapacity) > 0) {
        return ToUtf8(text);
    }
    for (const KnownReason& known : KnownReasons) {
        if (known.code == code) {
            return known.text;
        }
    }
    MessageText message(ReasonCapacity);
    message.FormatSystem(&MessageText::Set, code);
    WideString line = message.Text();
    std::replace_if(
        line.begin(), line.end(), [](WCHAR unit) { return unit < ' '; }, WCHAR{' '});
    line.erase(line.find_last_not_of(WCHAR{' '}) + 1);
    return ToUtf8(line);
}

bool ReadWholeFile(const WideString& path, std::size_t limit, std::string& bytes) {
    bytes.clear();
    const OpenFile file(path, GENERIC_READ);
    if (!file.IsOpen()) {
        return false;
    }
    while (true) {
        const std::size_t length = bytes.size();
        bytes.resize(length + ChunkBytes);
        DWORD read = 0;
        if (::ReadFile(file.Handle(), bytes.data() + length, ChunkBytes, &read, nullptr) == 0) {
            return false;
        }
        bytes.resize(length + read);
        if (bytes.size() > limit) {
            ::SetLastError(FileTooLarge);
            return false;
        }
        if (read == 0) {
            return true;
        }
    }
}

bool ReadWholeStream(std::istream& stream, std::size_t limit, std::string& bytes) {
    bytes.clear();
    while (stream) {
        const std::size_t length = bytes.size();
        bytes.resize(length + ChunkBytes);
        stream.read(bytes.data() + length, ChunkBytes);
        bytes.resize(length + static_cast<std::size_t>(stream.gcount()));
        if (bytes.size() > limit) {
            return false;
        }
    }
    return stream.eof() && !stream.bad();
}

std::filesystem::path TargetOf(const WideString& path) {
    constexpr int MostLinks = 40;  // as many as Linux follows
    WideString plain = path;
    std::replace_if(
        plain.begin(), plain.end(), [](WCHAR unit) { return unit == '/' || unit == '\\'; },
        static_cast<WCHAR>(PathSeparator));
    std::filesystem::path target(plain);
    std::error_code error;
    for (int i = 0; i < MostLinks && std::filesystem::is_symlink(target, error); ++i) {
        target = target.parent_path() / std::filesystem::read_symlink(target, error);
    }
    return target;
}

bool ReplaceWholeFile(const WideString& path, std::string_view bytes) {
    const std::filesystem::path target = TargetOf(path);
    if (IsSpecialFile(target)) {
        return WriteToSpecialFile(path, bytes);
    }
    const WideString wide = WideOf(target);
    ReplacementFile file(wide, FreeSiblingOf(wide));
    return file.Create() != 0 && file.Write(bytes.data(), bytes.size()) != 0 &&
           file.PutInPlace() != 0;
}

}  // namespace lunara
