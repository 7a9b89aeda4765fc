// The benchmark program. Its arguments are Google Benchmark's; with "--count OPERATION..." it
// counts instead, under callgrind: one dump for each way to do one of them, of what its run
// executes.
#include "bench.h"

#include <algorithm>
#include <deque>
#include <random>
#include <valgrind/callgrind.h>

namespace {

std::vector<Way>& ways()
{
    static std::vector<Way> all;
    return all;
}

std::string title_of(const Way& way)
{
    return way.operation + "/" + way.name;
}

void clock_runs(benchmark::State& state, const Way& way)
{
    Prepared prepared = way.prepare();
    for (auto _ : state) {
        if (prepared.restore) {
            state.PauseTiming();
            prepared.restore();
            state.ResumeTiming();
        }
        prepared.run();
    }
    state.counters["times"] =
        benchmark::Counter(static_cast<double>(way.times), benchmark::Counter::kAvgThreads);
}

void count_run(const Way& way)
{
    Prepared prepared = way.prepare();
    const auto restore = [&prepared] {
        if (prepared.restore) {
            prepared.restore();
        }
    };
    restore();
    prepared.run(); // whatever is done at first use alone
    restore();
    static std::deque<std::string> dump_names; // callgrind reads them when it dumps, which is later
    dump_names.push_back(title_of(way) + "/" + std::to_string(way.times));
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    prepared.run();
    CALLGRIND_DUMP_STATS_AT(dump_names.back().c_str());
    CALLGRIND_STOP_INSTRUMENTATION;
}

} // namespace

void enter(Way way)
{
    ways().push_back(std::move(way));
}

std::vector<uint32_t> values_below(uint32_t bound, size_t count)
{
    std::minstd_rand random(bound);
    std::vector<uint32_t> values(count);
    for (uint32_t& value : values) {
        value = static_cast<uint32_t>(random() % bound);
    }
    return values;
}

int main(int argc, char** argv)
{
    enter_names();
    enter_statements();
    enter_checks();
    enter_memory();
    enter_maps();
    enter_pools();
    enter_events();
    enter_routes();
    enter_ports();

    if (argc > 1 && std::string(argv[1]) == "--count") {
        for (const Way& way : ways()) {
            if (way.threads == 1 &&
                std::find(argv + 2, argv + argc, way.operation) != argv + argc) {
                count_run(way);
            }
        }
        return 0;
    }
    for (const Way& way : ways()) {
        auto* registered = benchmark::RegisterBenchmark(title_of(way).c_str(), clock_runs, way);
        if (way.threads > 1) {
            registered->Threads(way.threads)->UseRealTime();
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    benchmark::AddCustomContext("not_installed", PEERS_MISSING);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
