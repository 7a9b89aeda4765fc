// What processing an event costs beside a bare walk over the same callbacks: the price of traces that
// are off, and of walks that callbacks cannot break.
#include "floor.h"

#include <benchmark/benchmark.h>

#include <array>
#include <utility>

namespace {

constexpr adviser_event_t EVENT = ADVISER_EVENT_PORT_ADDED;
constexpr size_t CALLBACKS_MAX = 255;

/* Each is a function of its own, as those of the SDK's modules are. */
template <size_t I> ky_status_t callback(adviser_event_t, void* event_data)
{
    *static_cast<size_t*>(event_data) += I;
    return KY_STATUS_SUCCESS;
}

template <size_t... I> constexpr auto make_callbacks(std::index_sequence<I...>)
{
    return std::array<adviser_cb_t, sizeof...(I)>{callback<I>...};
}

constexpr auto callbacks = make_callbacks(std::make_index_sequence<CALLBACKS_MAX>());

void library(benchmark::State& state)
{
    const auto count = static_cast<size_t>(state.range(0));
    uint32_t level = 0;
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    adviser_init();
    for (size_t i = 0; i < count; i++) {
        adviser_register_event(KY_ACCESS_CMD_ADD, EVENT, callbacks[i]);
    }
    size_t sum = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(adviser_process_event(EVENT, &sum));
    }
    adviser_deinit();
}

void floor(benchmark::State& state)
{
    const auto count = static_cast<size_t>(state.range(0));
    cl_qmap_t map;
    cl_qmap_init(&map);
    std::array<floor_advisor_t, CALLBACKS_MAX> advisors;
    for (size_t i = 0; i < count; i++) {
        advisors[i].callback = callbacks[i];
        cl_qmap_insert(&map, reinterpret_cast<uintptr_t>(callbacks[i]), &advisors[i].map_item);
    }
    size_t sum = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(floor_process_event(&map, EVENT, &sum));
    }
}

} // namespace

BENCHMARK(floor)->Arg(1)->Arg(8)->Arg(64)->Arg(255);
BENCHMARK(library)->Arg(1)->Arg(8)->Arg(64)->Arg(255);
BENCHMARK_MAIN();
