// Allocates and frees blocks of 100 bytes: in a single-threaded process, beside a sleeping thread
// as in every process of the SDK, and in several threads at once.
#include "floor.h"
#include "ways.h"

#include <ky_utils.h>
#include <semaphore>
#include <talloc.h>
#include <thread>

namespace {

constexpr uint32_t SIZE = 100;
constexpr uint32_t TYPE = 8;

void library(benchmark::State& state)
{
    each(state, [](size_t) {
        void* block = nullptr;
        utils_memory_get(&block, SIZE, TYPE);
        return utils_memory_put(block, TYPE);
    });
}

void floor(benchmark::State& state)
{
    each(state, [](size_t) {
        void* block = floor_memory_get(SIZE, TYPE);
        benchmark::DoNotOptimize(block);
        floor_memory_put(block, TYPE);
        return 0;
    });
}

void by_talloc(benchmark::State& state)
{
    thread_local void* const context = talloc_new(nullptr); // not thread-safe
    each(state, [](size_t) {
        void* block = talloc_size(context, SIZE);
        benchmark::DoNotOptimize(block);
        return talloc_free(block);
    });
}

/* From the first of these on the process is multi-threaded for the C library. */
template <void (*MEASURED)(benchmark::State&)> void beside_another(benchmark::State& state)
{
    static std::binary_semaphore is_over(0);
    [[maybe_unused]] static std::thread* const sleeping =
        new std::thread([] { is_over.acquire(); });
    MEASURED(state);
}

} // namespace

BENCHMARK(library)->Name("memory, alone/library");
BENCHMARK(floor)->Name("memory, alone/floor");
BENCHMARK(by_talloc)->Name("memory, alone/talloc");
BENCHMARK(beside_another<library>)->Name("memory/library");
BENCHMARK(beside_another<floor>)->Name("memory/floor");
BENCHMARK(beside_another<by_talloc>)->Name("memory/talloc");
BENCHMARK(beside_another<library>)
    ->Name("memory by threads/library")
    ->ThreadRange(1, 8)
    ->UseRealTime();
BENCHMARK(beside_another<floor>)->Name("memory by threads/floor")->ThreadRange(1, 8)->UseRealTime();
BENCHMARK(beside_another<by_talloc>)
    ->Name("memory by threads/talloc")
    ->ThreadRange(1, 8)
    ->UseRealTime();
