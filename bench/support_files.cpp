// Small reads of a record-structured file: the file layer beside the C library's streams.
// support_files FILE prints the best of several turns each, as JSON.
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <limits>

#include "support/file.h"

namespace {

constexpr int kReads = 200000;
constexpr std::uint32_t kRecord = 16;
constexpr int kTurns = 25;

/// What was read, so that neither reader's work can be left out.
struct Checksum {
    std::uint64_t bytes = 0;
    std::uint64_t sum = 0;

    void Add(const std::array<unsigned char, kRecord>& record, std::size_t count) {
        bytes += count;
        sum = sum * 31 + record[0] + record[kRecord - 1];
    }
};

Checksum read_by_layer(const char* path) {
    Checksum checksum;
    std::array<unsigned char, kRecord> record{};
    const file_handle file = file_Open(path, GENERIC_READ, OPEN_EXISTING);
    for (int i = 0; i < kReads; ++i) {
        checksum.Add(record, file_Read(file, record.data(), kRecord));
    }
    file_Close(file);
    return checksum;
}

Checksum read_by_stream(const char* path) {
    Checksum checksum;
    std::array<unsigned char, kRecord> record{};
    std::FILE* const file = std::fopen(path, "rb");
    for (int i = 0; file != nullptr && i < kReads; ++i) {
        checksum.Add(record, std::fread(record.data(), 1, kRecord, file));
    }
    if (file != nullptr) {
        std::fclose(file);
    }
    return checksum;
}

double seconds_of(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: support_files FILE\n");
        return 2;
    }
    double layer = std::numeric_limits<double>::infinity();
    double stream = layer;
    for (int turn = 0; turn < kTurns; ++turn) {
        Checksum ours;
        Checksum theirs;
        layer = std::min(layer, seconds_of([&] { ours = read_by_layer(argv[1]); }));
        stream = std::min(stream, seconds_of([&] { theirs = read_by_stream(argv[1]); }));
        if (ours.bytes != std::uint64_t{kReads} * kRecord || ours.bytes != theirs.bytes ||
            ours.sum != theirs.sum) {
            std::fprintf(stderr, "support_files: the file is too short, or the readers disagree\n");
            return 1;
        }
    }
    std::printf("{\"file_read_s\": %.6f, \"fread_s\": %.6f}\n", layer, stream);
    return 0;
}
