// SPDX-License-Identifier: MIT
// Replaces libFuzzer in ordinary builds: runs every seed unchanged, cut short, and with changed
// bytes. The mutations are the same in every run.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
// A harness may have no initialisation.
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int *argc, char ***argv);

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kCuts = 40;
constexpr int kDamagedCopies = 60;
constexpr int kMostChanges = 8;
constexpr std::uint8_t kTellingBytes[] = {0x00, 0x01, 0x7F, 0x80, 0xFE, 0xFF};

Bytes readAll(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void run(const Bytes &input)
{
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

void runCuts(const Bytes &seed)
{
    for (std::size_t i = 0; i < kCuts; ++i) {
        run(Bytes(seed.begin(),
                  seed.begin() + static_cast<std::ptrdiff_t>(seed.size() * i / kCuts)));
    }
}

/// Half of the changes hit the first eighth, where formats keep their sizes and counts.
Bytes damaged(const Bytes &seed, std::mt19937 &random)
{
    Bytes copy = seed;
    const std::size_t changes = 1 + random() % kMostChanges;
    for (std::size_t i = 0; i < changes && !copy.empty(); ++i) {
        const std::size_t reach
            = random() % 2 == 0 ? std::max<std::size_t>(1, copy.size() / 8) : copy.size();
        copy[random() % reach] = random() % 2 == 0
            ? kTellingBytes[random() % std::size(kTellingBytes)]
            : static_cast<std::uint8_t>(random());
    }
    return copy;
}

/// The number of seeds; 0 without the folder.
int runFolder(const char *folder)
{
    int seeds = 0;
    // NOLINTNEXTLINE(bugprone-random-generator-seed): every run is to be the same
    std::mt19937 random(1);
    std::error_code missing;
    for (const auto &entry : std::filesystem::directory_iterator(folder, missing)) {
        const Bytes seed = readAll(entry.path());
        std::fprintf(stderr, "%s\n", entry.path().filename().c_str());
        run(seed);
        runCuts(seed);
        for (int copy = 0; copy < kDamagedCopies; ++copy) {
            run(damaged(seed, random));
        }
        ++seeds;
    }
    return seeds;
}

} // namespace

int main(int argc, char **argv)
{
    if (LLVMFuzzerInitialize != nullptr) {
        LLVMFuzzerInitialize(&argc, &argv);
    }
    int seeds = 0;
    for (int i = 1; i < argc; ++i) {
        seeds += runFolder(argv[i]);
    }
    if (seeds == 0) {
        std::fprintf(stderr, "no seeds\n");
        return 1;
    }
    return 0;
}
