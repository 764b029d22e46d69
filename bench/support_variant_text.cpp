// A variant text of 50 MB, read and written, beside nlohmann-json with the same data as
// JSON. support_variant_text FOLDER prints the best of several turns each, as JSON, in
// seconds of processor time: both sides work on one thread.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>
#include <string>

#include "support/variant.h"

namespace {

using Json = nlohmann::json;

constexpr int kTurns = 5;
constexpr std::uintmax_t kSize = 50'000'000;

/// What is in the texts, built through the same few calls on both sides.
template <typename Value>
using Fill = void (*)(Value& item, std::mt19937& random);

MVariant& element(MVariant& value, int index) {
    return value[index];
}

Json& element(Json& value, int index) {
    return value[static_cast<std::size_t>(index)];
}

double measured(std::mt19937& random) {
    return static_cast<double>(random() % 100'000'000) / 1e4;
}

/// A sample of a drill hole.
template <typename Value>
void fill_record(Value& item, std::mt19937& random) {
    static const char* const kRocks[] = {"oxide", "transitional", "fresh, massive", "waste"};
    item["hole"] = "DH" + std::to_string(random() % 10000);
    item["from"] = measured(random);
    item["to"] = measured(random);
    item["sample"] = static_cast<std::int64_t>(random() % 1'000'000);
    item["lithology"] = kRocks[random() % 4];
    for (int i = 0; i < 4; ++i) {
        element(item["assays"], i) = measured(random);
    }
    item["checked"]["by"] = "geologist on shift";
    item["checked"]["count"] = static_cast<int>(random() % 3);
}

template <typename Value>
void fill_numbers(Value& item, std::mt19937& random) {
    for (int i = 0; i < 100; ++i) {
        element(item, i) = measured(random);
    }
}

template <typename Value>
void fill_texts(Value& item, std::mt19937& random) {
    for (int i = 0; i < 20; ++i) {
        std::string text = "a remark of usual length";
        for (std::size_t words = random() % 20; words > 0; --words) {
            text += words == 3 ? ", the \"old\" one" : ", and more";
        }
        element(item, i) = text;
    }
}

/// The same numbers in the same order for both kinds of value.
template <typename Value>
Value built(Fill<Value> fill, int items) {
    std::mt19937 random(1);
    Value value;
    for (int i = 0; i < items; ++i) {
        fill(element(value, i), random);
    }
    return value;
}

/// The best of several turns, one after another: from the second on a reader works in the
/// memory that the turn before has freed, as it does in a process that has run for a while.
double best_of(const std::function<void()>& work, const std::function<void()>& afterwards) {
    double best = std::numeric_limits<double>::infinity();
    for (int turn = 0; turn < kTurns; ++turn) {
        const std::clock_t begin = std::clock();
        work();
        best = std::min(best, static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
        afterwards();
    }
    return best;
}

// As people do who want it fast: in one piece, and not through a stream.
void write_json(const Json& json, const std::string& path) {
    const std::string text = json.dump();
    std::ofstream(path, std::ios::binary)
        .write(text.data(), static_cast<std::streamsize>(text.size()));
}

Json read_json(const std::string& path) {
    std::string text(std::filesystem::file_size(path), '\0');
    std::ifstream(path, std::ios::binary)
        .read(text.data(), static_cast<std::streamsize>(text.size()));
    return Json::parse(text);
}

void print(const char* name, const char* what, double ours, double theirs, const char* end) {
    std::printf("  \"%s_%s\": {\"ours_s\": %.4f, \"nlohmann_s\": %.4f, \"ratio\": %.2f}%s\n", name,
                what, ours, theirs, theirs / ours, end);
}

bool compare(const char* name, Fill<MVariant> fill, Fill<Json> fill_json,
             const std::filesystem::path& folder, const char* end) {
    const std::string text = folder / "values.txt";
    const std::string json_text = folder / "values.json";
    constexpr int kTrial = 1000;
    built(fill, kTrial).WriteText(text.c_str());
    const auto items = static_cast<int>(kSize * kTrial / std::filesystem::file_size(text));
    const MVariant value = built(fill, items);
    const Json json = built(fill_json, items);

    const auto nothing = [] {};
    const double write = best_of([&] { value.WriteText(text.c_str()); }, nothing);
    const double json_write = best_of([&] { write_json(json, json_text); }, nothing);
    MVariant again;
    MVariant errors;
    bool agree = true;
    const double read = best_of([&] { again.ReadText(text.c_str(), errors); },
                                [&] {
                                    agree = agree && again == value;
                                    again.Clear();
                                });
    Json json_again;
    const double json_read = best_of([&] { json_again = read_json(json_text); },
                                     [&] {
                                         agree = agree && json_again == json;
                                         json_again = nullptr;
                                     });
    print(name, "write", write, json_write, ",");
    print(name, "read", read, json_read, end);
    if (!agree) {
        std::fprintf(stderr, "%s: not read as written %s\n", name, errors.AsCString());
    }
    return agree;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: support_variant_text FOLDER\n");
        return 2;
    }
    std::printf("{\n");
    const bool agree =
        compare("records", fill_record<MVariant>, fill_record<Json>, argv[1], ",") &&
        compare("numbers", fill_numbers<MVariant>, fill_numbers<Json>, argv[1], ",") &&
        compare("texts", fill_texts<MVariant>, fill_texts<Json>, argv[1], "");
    std::printf("}\n");
    return agree ? 0 : 1;
}
