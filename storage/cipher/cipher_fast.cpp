#include "storage/cipher/cipher_fast.h"

#include <algorithm>
#include <iterator>

#include "platform/win32.h"
#include "storage/cipher/cipher_gather.h"
#include "storage/cipher/cipher_lanes.h"

namespace lunara {
namespace {

/// Times both routines on a few blocks. Repeats each, because a processor needs a few runs to reach
/// its speed, and compares the best times, because interruptions only ever make a run longer.
bool AreGathersFaster() {
    if (!HasGathers()) {
        return false;
    }
    constexpr int Tries = 8;
    unsigned char bytes[GatherBlocks * LaneBlocks * CipherBlockBytes] = {};  // whole groups of both
    const auto fewestCycles = [&bytes](auto run) {
        std::uint64_t fewest = ~std::uint64_t{0};
        for (int i = 0; i < Tries; ++i) {
            const std::uint64_t start = ReadCycles();
            static_cast<void>(
                run(PublishedTables.subkeys, PublishedTables.boxes, bytes, sizeof(bytes)));
            fewest = std::min(fewest, ReadCycles() - start);
        }
        return fewest;
    };
    return fewestCycles(RunBlocksGathered) < fewestCycles(RunBlocksInLanes);
}

/// `subkeys` in the order of their use.
std::size_t RunManyBlocks(const std::uint32_t* subkeys, const CipherBoxes& boxes,
                          unsigned char* bytes, std::size_t length) {
    std::size_t done = 0;
    if (length >= GatherBlocks * CipherBlockBytes) {
        static const bool areGathersFaster = AreGathersFaster();
        if (areGathersFaster) {
            done = RunBlocksGathered(subkeys, boxes, bytes, length);
        }
    }
    return done + RunBlocksInLanes(subkeys, boxes, bytes + done, length - done);
}

}  // namespace

std::size_t EncipherManyBlocks(const CipherState& state, unsigned char* bytes, std::size_t length) {
    return RunManyBlocks(state.subkeys, state.boxes, bytes, length);
}

std::size_t DecipherManyBlocks(const CipherState& state, unsigned char* bytes, std::size_t length) {
    std::uint32_t subkeys[CipherSubkeys];
    std::reverse_copy(std::begin(state.subkeys), std::end(state.subkeys), std::begin(subkeys));
    const std::size_t done = RunManyBlocks(subkeys, state.boxes, bytes, length);
    ::SecureZeroMemory(subkeys, sizeof(subkeys));
    return done;
}

}  // namespace lunara
