// hot_paths ROUNDS: runs each hot path in a loop. Under callgrind each loop writes a dump, from
// which gate.py computes the cost of a round.
#include "inputs.h"

#include <cstdio>
#include <cstdlib>
#include <valgrind/callgrind.h>

namespace {

size_t rounds;

/* Callgrind reads the name when the program ends: it must be static. */
template <typename Once> void measure(const char* name, Once once)
{
    once(0); // excludes the cost of the first use
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    for (size_t i = 0; i < rounds; i++) {
        asm volatile("" : : "r"(once(i % INPUTS)) : "memory"); // uses the result
    }
    CALLGRIND_DUMP_STATS_AT(name);
    CALLGRIND_STOP_INSTRUMENTATION;
}

void measure_events()
{
    adviser_init();
    register_up_to(1);
    measure("event, 1 callback", [](size_t) { return adviser_process_event(EVENT, &sum); });
    register_up_to(8);
    measure("event, 8 callbacks", [](size_t) { return adviser_process_event(EVENT, &sum); });
    measure("event, register and deregister", [](size_t) {
        adviser_register_event(KY_ACCESS_CMD_ADD, EVENT, callbacks[8]);
        return adviser_register_event(KY_ACCESS_CMD_DELETE, EVENT, callbacks[8]);
    });
    adviser_deinit();
}

/* Lookups are of random keys, so that branch prediction learns nothing. */
void measure_maps()
{
    const auto keys = random_keys(10000 + rounds + 1);
    const auto few = values_below(255, rounds + 1);
    const auto any = values_below(10000, rounds + 1);
    std::vector<cl_map_item_t> items(keys.size());
    cl_map_item_t* item = nullptr;
    cl_qmap_t map;
    cl_qmap_init(&map);
    size_t filed = 0;
    size_t next = 0;
    const auto key_of = [&](const auto& order) { return keys[order[next++ % order.size()]]; };
    const auto file = [&] {
        filed++;
        return utils_db_qmap_item_ins(keys[filed - 1], &map, &items[filed - 1]);
    };
    while (filed < 255) {
        file();
    }
    measure("lookup in a map, 255 keys", [&](size_t) {
        return utils_qmap_get(&map, key_of(few), &item);
    });
    while (filed < 10000) {
        file();
    }
    measure("lookup in a map, 10,000 keys", [&](size_t) {
        return utils_qmap_get(&map, key_of(any), &item);
    });
    measure("key_exists in a map, 10,000 keys", [&](size_t) {
        return utils_qmap_key_exists(&map, key_of(any), &item);
    });
    measure("insert into a map, from 10,000 keys", [&](size_t) { return file(); });
    measure("remove from a map, to 10,000 keys", [&](size_t) {
        return utils_qmap_remove(&map, keys[--filed], &item);
    });
}

} // namespace

int main(int, char** argv)
{
    rounds = strtoul(argv[1], nullptr, 10);
    utils_log_verbosity_level_set(0);
    uint32_t level = 0;
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    for_each_operation([](const char* name, auto once) { measure(name, once); });
    measure_events();
    measure_maps();
    puts(COMPILER);
    return 0;
}
