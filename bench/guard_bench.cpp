// What the frame costs: a call through the flat library beside the same call on the
// model underneath, with the call log off, in time and in allocations.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "api/zolExportedApi_ReadOnly.h"
#include "bench/counted_new.h"
#include "platform/zolBlockExport.h"

namespace {

using zol::model::block::Model;

// A name that a std::string holds in itself, and one that it has to allocate for.
constexpr const char* kShortName = "Estimate";
constexpr const char* kLongName = "EstimationVariance";

std::string sample_file;

struct Flat {
    BlockModelHandle* model = ZOL_BlockModel_Open(sample_file.c_str());

    Flat() { ZOL_BlockModel_FirstBlock(model); }
    Flat(const Flat&) = delete;
    Flat& operator=(const Flat&) = delete;
    ~Flat() { ZOL_BlockModel_Close(model); }

    bool IsEof() { return ZOL_BlockModel_IsEof(model) == 1; }
    std::int64_t NBlocks() { return ZOL_BlockModel_NBlocks(model); }
    double Number(const char* name) {
        double value = 0.0;
        ZOL_BlockModel_GetNumber(model, name, &value);
        return value;
    }
};

struct Underneath {
    Model model{sample_file, "r"};

    Underneath() { model.FindFirst(); }

    bool IsEof() { return model.IsEof(); }
    std::int64_t NBlocks() { return model.NBlocks(); }
    // A text made for each call is part of what the contract asks of a caller.
    double Number(const char* name) { return model.Get(name); }
};

template <class Side, class Call>
void measure(benchmark::State& state, Call call) {
    Side side;
    // The first read decodes the column; that is not what is measured.
    benchmark::DoNotOptimize(call(side));
    const std::int64_t before = allocations();
    for (auto _ : state) {
        benchmark::DoNotOptimize(call(side));
    }
    state.counters["allocations"] =
        static_cast<double>(allocations() - before) / static_cast<double>(state.iterations());
}

template <class Call>
void add_pair(const std::string& name, Call call) {
    benchmark::RegisterBenchmark((name + "/flat").c_str(),
                                 [call](benchmark::State& state) { measure<Flat>(state, call); });
    benchmark::RegisterBenchmark((name + "/underneath").c_str(), [call](benchmark::State& state) {
        measure<Underneath>(state, call);
    });
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: guard_bench [--benchmark_...] gslib_kriging_50x50.out\n");
        return 2;
    }
    sample_file = argv[1];
    ZOL_API_Init();
    if (!Model(sample_file, "r").IsOpen()) {
        std::fprintf(stderr, "guard_bench: %s does not open\n", argv[1]);
        return 1;
    }
    add_pair("IsEof", [](auto& side) { return side.IsEof(); });
    add_pair("NBlocks", [](auto& side) { return side.NBlocks(); });
    add_pair("GetNumber, short name", [](auto& side) { return side.Number(kShortName); });
    add_pair("GetNumber, long name", [](auto& side) { return side.Number(kLongName); });
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
