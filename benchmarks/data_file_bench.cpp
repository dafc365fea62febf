// Times loading and saving the enciphered diary of 40 years. The peers move the same bytes without
// enciphering, or decipher them with another library.

#include "storage/data_file.h"

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp

#include <filesystem>
#include <fstream>
#include <memory>

#include "benchmarks/blowfish_peers.h"
#include "benchmarks/forty_years.h"
#include "benchmarks/lunara_ciphers.h"
#include "benchmarks/report.h"
#include "storage/data_file_set.h"

namespace lunara::bench {
namespace {

/// The diary of 40 years in memory, and its three files in a new temporary folder, which is removed
/// at the end.
class Diary {
  public:
    Diary() {
        std::string pattern = std::filesystem::temp_directory_path() / "lunara-bench-XXXXXX";
        Require(::mkdtemp(pattern.data()) != nullptr, "mkdtemp");
        folder = pattern;
        Require(FillFortyYears(temperature, bleeding, notes), "note pages");
        Save(DiaryPassword);
    }
    Diary(const Diary&) = delete;
    Diary& operator=(const Diary&) = delete;
    ~Diary() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    WideString Path(const char* name) const { return (folder / name).u16string(); }

    /// Saves all files by the steps of UserData::SaveFolder.
    void Save(const WCHAR* password) {
        DataFileSet files(folder.u16string().c_str());
        Require(WriteDayValues(temperature, *files.Replace(DataFile::Temperature), password) == 1 &&
                    WriteDayValues(bleeding, *files.Replace(DataFile::Bleeding), password) == 1 &&
                    WriteNotePages(notes, *files.Replace(DataFile::NotePages), password) == 1 &&
                    files.PutInPlace() == 1,
                "save");
    }

    void Load() {
        Require(LoadDayValues(temperature, Path(Files[0]).c_str(), DiaryPassword) == 1 &&
                    LoadDayValues(bleeding, Path(Files[1]).c_str(), DiaryPassword) == 1 &&
                    LoadNotePages(notes, Path(Files[2]).c_str(), DiaryPassword) == 1 &&
                    notes.Count() == NotePages,
                "load");
    }

    static constexpr const char* Files[] = {"Temperature.dat", "Bleeding.dat", "NotePages.dat"};

  private:
    std::filesystem::path folder;
    DayValueList temperature;
    DayValueList bleeding;
    NotePageList notes{10};
};

/// Reads a whole file into new memory, without deciphering; `length` is its size in bytes.
std::unique_ptr<unsigned char[]> ReadPlain(const WCHAR* path, std::size_t& length) {
    const HANDLE file = ::CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    LARGE_INTEGER size{};
    DWORD got = 0;
    Require(file != INVALID_HANDLE_VALUE && ::GetFileSizeEx(file, &size) != FALSE, "open");
    length = static_cast<std::size_t>(size.QuadPart);
    std::unique_ptr<unsigned char[]> bytes(new unsigned char[length]);
    Require(::ReadFile(file, bytes.get(), static_cast<DWORD>(length), &got, nullptr) != FALSE &&
                got == length,
            "read");
    ::CloseHandle(file);
    return bytes;
}

void AddLoad() {
    AddCase("load/lunara, enciphered", Time::Processor, [](benchmark::State& state) {
        Diary diary;
        for (auto _ : state) {
            diary.Load();
        }
        state.SetBytesProcessed(state.iterations() * DiaryBytes);
    });
    AddCase("load/plain bytes", Time::Processor, [](benchmark::State& state) {
        const Diary diary;
        for (auto _ : state) {
            for (const char* name : Diary::Files) {
                std::size_t length = 0;
                benchmark::DoNotOptimize(ReadPlain(diary.Path(name).c_str(), length));
            }
        }
        state.SetBytesProcessed(state.iterations() * DiaryBytes);
    });
}

/// The comparison favours the peer: its key is set up once, outside the measured time, ours for
/// each file, inside it.
template <typename Peer>
void AddPeerLoad() {
    AddCase(std::string("load/plain bytes, deciphered by ") + Peer::Name, Time::Processor,
            [](benchmark::State& state) {
                const Diary diary;
                Peer peer;
                for (auto _ : state) {
                    for (const char* name : Diary::Files) {
                        std::size_t length = 0;
                        const auto bytes = ReadPlain(diary.Path(name).c_str(), length);
                        peer.Decipher(bytes.get() + 4, length - 4);
                        benchmark::DoNotOptimize(bytes.get());
                    }
                }
                state.SetBytesProcessed(state.iterations() * DiaryBytes);
            });
}

void AddSave() {
    constexpr double Seconds = 0.3;  // longer than usual: the times of the disk's flushes vary
    const auto lunaraSave = [](const WCHAR* password) {
        return [password](benchmark::State& state) {
            Diary diary;
            for (auto _ : state) {
                diary.Save(password);
            }
            state.SetBytesProcessed(state.iterations() * DiaryBytes);
        };
    };
    AddCase(
        "save/plain bytes, same flushes", Time::Clock,
        [](benchmark::State& state) {
            const Diary diary;
            std::vector<std::pair<std::unique_ptr<unsigned char[]>, std::size_t>> contents;
            for (const char* name : Diary::Files) {
                std::size_t length = 0;
                auto bytes = ReadPlain(diary.Path(name).c_str(), length);
                contents.emplace_back(std::move(bytes), length);
            }
            for (auto _ : state) {
                for (std::size_t i = 0; i < contents.size(); ++i) {
                    ReplacementFile file(diary.Path(Diary::Files[i]).c_str());
                    Require(file.Create() == 1 &&
                                file.Write(contents[i].first.get(), contents[i].second) == 1 &&
                                file.PutInPlace() == 1,
                            "write");
                }
            }
            state.SetBytesProcessed(state.iterations() * DiaryBytes);
        },
        Seconds);
    AddCase("save/lunara, enciphered", Time::Clock, lunaraSave(DiaryPassword), Seconds);
    AddCase("save/lunara, without password", Time::Clock, lunaraSave(TEXT("")), Seconds);
}

}  // namespace
}  // namespace lunara::bench

int main(int argc, char** argv) {
    using namespace lunara::bench;
    AddLoad();
    AddPeerLoad<LunaraCipher>();
    AddPeerLoad<LunaraInLanes>();
    AddPeerLoad<LunaraPlain>();
    AddPeerLoad<OpenSslBlowfish>();
    AddPeerLoad<GcryptBlowfish<GCRY_CIPHER_MODE_ECB>>();
    AddPeerLoad<NettleBlowfish>();
    AddSave();
    return RunAll(argc, argv, DiaryDescription);
}
