/* How a way to do an operation is entered into the benchmark, to be timed and to be counted. */
#ifndef BENCH_H
#define BENCH_H

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/* A way to do an operation, ready to be run. */
struct Prepared {
    std::function<void()> run;          // does it as often as was entered
    std::function<void()> restore = {}; // brings back, off the clock, what a run has used up
};

struct Way {
    std::string operation; // its table in the report
    std::string name;      // "library", "floor", or whose
    size_t times;          // how often a run does the operation
    std::function<Prepared()> prepare;
    int threads = 1; // all of which do it at the same time
};

void enter(Way way);

constexpr size_t TIMES = 256;

/* Enters a way that needs no preparation: once(i) does the operation, for i from 0 to 255. */
template <typename Once> void enter(const std::string& operation, const char* name, Once once)
{
    enter({operation, name, TIMES, [once] {
               return Prepared{[once] {
                   for (size_t i = 0; i < TIMES; i++) {
                       once(i);
                   }
               }};
           }});
}

/* Values below a bound, in an order without a pattern that is the same in each process. */
std::vector<uint32_t> values_below(uint32_t bound, size_t count = TIMES);

/* Each enters the ways to do the operations that its source is about. */
void enter_names();
void enter_statements();
void enter_checks();
void enter_memory();
void enter_maps();
void enter_pools();
void enter_events();
void enter_routes();
void enter_ports();

#endif
