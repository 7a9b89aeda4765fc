/* Implementations are registered as OPERATION/WAY or OPERATION/WAY/ARGUMENT. */
#ifndef WAYS_H
#define WAYS_H

#include "inputs.h"

#include <benchmark/benchmark.h>

/* Calls once(i) for each input, repeatedly. The compiler must assume that its results are used. */
template <typename Once> void each(benchmark::State& state, Once once)
{
    for (auto _ : state) {
        for (size_t i = 0; i < INPUTS; i++) {
            benchmark::DoNotOptimize(once(i));
        }
    }
    state.SetItemsProcessed(state.iterations() * int64_t{INPUTS});
}

#endif
