/* How a way to do an operation is registered: OPERATION/WAY, or OPERATION/WAY/ARGUMENT. */
#ifndef WAYS_H
#define WAYS_H

#include "inputs.h"

#include <benchmark/benchmark.h>

/* Calls once(i) for each of the inputs, over and over. What it returns is taken to be used. */
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
