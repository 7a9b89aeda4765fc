// An event with 1 to 255 callbacks.
#include "floor.h"
#include "ways.h"

#include <sigc++/sigc++.h>

namespace {

constexpr adviser_event_t EVENT = ADVISER_EVENT_PORT_ADDED;

size_t sum = 0;

void library(benchmark::State& state)
{
    uint32_t level = 0;
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    adviser_init();
    for (int64_t i = 0; i < state.range(0); i++) {
        adviser_register_event(KY_ACCESS_CMD_ADD, EVENT, callbacks[static_cast<size_t>(i)]);
    }
    each(state, [](size_t) { return adviser_process_event(EVENT, &sum); });
    adviser_deinit();
}

void floor(benchmark::State& state)
{
    std::array<FloorAdvisor, callbacks.size()> advisors;
    cl_qmap_t map;
    cl_qmap_init(&map);
    for (size_t i = 0; i < static_cast<size_t>(state.range(0)); i++) {
        advisors[i].callback = callbacks[i];
        cl_qmap_insert(&map, reinterpret_cast<uintptr_t>(callbacks[i]), &advisors[i].map_item);
    }
    each(state, [&map](size_t) { return floor_event(&map, EVENT, &sum); });
}

void libsigcxx(benchmark::State& state)
{
    sigc::signal<ky_status_t(adviser_event_t, void*)> signal;
    for (int64_t i = 0; i < state.range(0); i++) {
        signal.connect(sigc::ptr_fun(callbacks[static_cast<size_t>(i)]));
    }
    each(state, [&signal](size_t) { return signal.emit(EVENT, &sum); });
}

void counts(benchmark::internal::Benchmark* way)
{
    way->Arg(1)->Arg(8)->Arg(32)->Arg(128)->Arg(255);
}

} // namespace

BENCHMARK(library)->Name("event/library")->Apply(counts);
BENCHMARK(floor)->Name("event/floor")->Apply(counts);
BENCHMARK(libsigcxx)->Name("event/libsigc++")->Apply(counts);
