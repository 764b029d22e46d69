// Look-ups of 100,000 keys in a string table, beside std::unordered_map: with short
// buckets, and as the table grows by its own rule. Prints, as JSON, nanoseconds of
// processor time a look-up, the best of several turns, and how full the buckets are.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "support/strtab.h"

namespace {

constexpr int kTurns = 7;

std::vector<std::string> random_keys(std::size_t count) {
    std::mt19937 random(3);
    std::vector<std::string> keys;
    for (std::size_t i = 0; i < count; ++i) {
        keys.push_back("property_" + std::to_string(random()) + "_" + std::to_string(i));
    }
    return keys;
}

// "Ab" and "BA" have one hash, and so has every row of them.
std::string key_of_one_hash(std::size_t number) {
    std::string key;
    for (unsigned bit = 0; bit < 20; ++bit) {
        key += (number >> bit & 1U) != 0 ? "BA" : "Ab";
    }
    return key;
}

// A table of at least so many buckets, and empty.
strtab_t* table_with_buckets(std::uint32_t buckets) {
    strtab_t* const table = strtab_New();
    std::size_t number = 0;
    while (table->mask + 1 < buckets) {
        strtab_Set(table, key_of_one_hash(number++).c_str(), "");
    }
    while (number > 0) {
        strtab_Remove(table, key_of_one_hash(--number).c_str());
    }
    return table;
}

void fill(strtab_t* table, const std::vector<std::string>& keys) {
    for (const std::string& key : keys) {
        if (strtab_Set(table, key.c_str(), key.c_str()) != 1) {
            std::exit(1);
        }
    }
}

template <typename Find>
double nanoseconds(const std::vector<std::string>& keys, Find find) {
    double best = std::numeric_limits<double>::max();
    const std::size_t rounds = std::max<std::size_t>(1, 100'000 / keys.size());
    for (int turn = 0; turn < kTurns; ++turn) {
        const std::clock_t start = std::clock();
        std::size_t found = 0;
        for (std::size_t round = 0; round < rounds; ++round) {
            for (const std::string& key : keys) {
                found += find(key) ? 1U : 0U;
            }
        }
        const auto ticks = static_cast<double>(std::clock() - start);
        if (found != keys.size() * rounds) {
            std::exit(1);
        }
        best = std::min(best, ticks / CLOCKS_PER_SEC * 1e9 / static_cast<double>(found));
    }
    return best;
}

void report(const char* name, strtab_t* table, const std::vector<std::string>& in_order,
            const char* end) {
    fill(table, in_order);
    std::unordered_map<std::string, std::string> peer;
    for (const std::string& key : in_order) {
        peer[key] = key;
    }
    std::vector<std::string> keys = in_order;
    std::shuffle(keys.begin(), keys.end(), std::mt19937(5));
    const double ours = nanoseconds(
        keys, [&](const std::string& key) { return strtab_Get(table, key.c_str()) != nullptr; });
    const double theirs =
        nanoseconds(keys, [&](const std::string& key) { return peer.find(key) != peer.end(); });
    std::printf("\"%s %zu\": {\"buckets\": %u, \"ours_ns\": %.1f, \"peer_ns\": %.1f}%s\n", name,
                keys.size(), table->mask + 1, ours, theirs, end);
    strtab_Free(table);
}

}  // namespace

int main() {
    std::puts("{");
    report("short buckets", table_with_buckets(65'536), random_keys(100'000), ",");
    for (const std::size_t count : {100U, 1'000U, 10'000U, 100'000U}) {
        report("grown by itself", strtab_New(), random_keys(count), ",");
    }
    report("grown by itself", strtab_New(), random_keys(400'000), "");
    std::puts("}");
    return 0;
}
