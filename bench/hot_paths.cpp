// Runs each hot path in a loop of 1,000 rounds and in one of 5,000. Under callgrind each loop
// writes a dump, from which gate.py computes the cost of a round.
#include "inputs.h"

#include <cstdio>
#include <ky_names.h>
#include <ky_utils.h>
#include <valgrind/callgrind.h>

#define KY_LOG_MODULE "BENCH"
#define KY_LOG_VERBOSITY verbosity

namespace {

[[gnu::used]] uint32_t verbosity = KY_LOG_LEVEL_DEFAULT;

/* Uses a result, so that the compiler keeps the call. */
template <typename Value> void keep(Value value)
{
    asm volatile("" : : "r"(value) : "memory");
}

template <typename Once> void loop(uint32_t rounds, const char* dump, Once once)
{
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
    for (uint32_t i = 0; i < rounds; i++) {
        once(i % INPUTS);
    }
    CALLGRIND_DUMP_STATS_AT(dump);
    CALLGRIND_STOP_INSTRUMENTATION;
}

/* How often each hot path runs. */
constexpr size_t ROUNDS = 1 + 1000 + 5000;

/* Callgrind reads the names of dumps when the program ends: they must be static. */
#define MEASURE(name, ...)                                                   \
    do {                                                                     \
        const auto once = [&]([[maybe_unused]] uint32_t i) { __VA_ARGS__; }; \
        once(0); /* excludes the cost of the first use */                    \
        loop(1000, name ": 1000", once);                                     \
        loop(5000, name ": 5000", once);                                     \
    } while (false)

/* A log statement in a module's function. */
[[gnu::noinline]] uint32_t add(uint32_t a, uint32_t b)
{
    KY_LOG_DEBUG("%u and %u\n", a, b);
    return a + b;
}

// clang-format off
void measure_checks()
{
    const auto values = values_below(105);
    const auto ports = accepted_ports();
    MEASURE("loop", keep(values[i]));
    MEASURE("ky_host_ifc_trap_id_str", keep(ky_host_ifc_trap_id_str(values[i])));
    MEASURE("a suppressed KY_LOG_DEBUG", keep(add(values[i], i)));
    MEASURE("utils_use_xm_set", keep(utils_use_xm_set(values[i])));
    MEASURE("utils_check_device_id",
            keep(utils_check_device_id(static_cast<uint8_t>(values[i] + 1))));
    MEASURE("is_port_type_valid", keep(is_port_type_valid(ports[i].enum_id, ports[i].log_port)));
}

void measure_routes()
{
    const auto ipv4 = route_keys(1);
    const auto ipv6 = route_keys(2);
#define KEY(keys) keep(ky_router_utils_validate_mc_route_counter_bind_get(0, &(keys)[i], nullptr))
    MEASURE("ky_router_utils_validate_mc_route_counter_bind_get, IPv4", KEY(ipv4));
    MEASURE("ky_router_utils_validate_mc_route_counter_bind_get, IPv6", KEY(ipv6));
#define ROUTE(keys) keep(ky_router_utils_validate_mc_route_set( \
        KY_ACCESS_CMD_ADD, 0, &(keys)[i], &ATTRIBUTES, &DATA))
    MEASURE("ky_router_utils_validate_mc_route_set, IPv4", ROUTE(ipv4));
    MEASURE("ky_router_utils_validate_mc_route_set, IPv6", ROUTE(ipv6));
}

void measure_events()
{
    constexpr adviser_event_t EVENT = ADVISER_EVENT_PORT_ADDED;
    size_t sum = 0;
    adviser_init();
    adviser_register_event(KY_ACCESS_CMD_ADD, EVENT, callbacks[0]);
    MEASURE("adviser_process_event, 1 callback", keep(adviser_process_event(EVENT, &sum)));
    for (size_t i = 1; i < 8; i++) {
        adviser_register_event(KY_ACCESS_CMD_ADD, EVENT, callbacks[i]);
    }
    MEASURE("adviser_process_event, 8 callbacks", keep(adviser_process_event(EVENT, &sum)));
    MEASURE("adviser_register_event, add and delete",
            keep(adviser_register_event(KY_ACCESS_CMD_ADD, EVENT, callbacks[8]));
            keep(adviser_register_event(KY_ACCESS_CMD_DELETE, EVENT, callbacks[8])));
    adviser_deinit();
}

void measure_memory_and_pools()
{
    void* block = nullptr;
    MEASURE("utils_memory_get and _put",
            utils_memory_get(&block, 100, 1);
            keep(utils_memory_put(block, 1)));
    cl_qpool_t pool;
    cl_pool_item_t* item = nullptr;
    utils_qpool_init(&pool, 16, 16, 0, 64, "BENCH");
    MEASURE("utils_qpool_get and cl_qpool_put",
            keep(utils_qpool_get(&item, &pool));
            cl_qpool_put(&pool, item));
    cl_qpool_destroy(&pool);
}

/* Lookups are of random keys, so that branch prediction learns nothing. */
void measure_maps()
{
    const auto keys = random_keys(10000 + ROUNDS);
    const auto few = values_below(255, ROUNDS);
    const auto any = values_below(10000, ROUNDS);
    std::vector<cl_map_item_t> items(keys.size());
    cl_map_item_t* item = nullptr;
    cl_qmap_t map;
    cl_qmap_init(&map);
    size_t filed = 0;
    const auto file = [&] {
        filed++;
        return utils_db_qmap_item_ins(keys[filed - 1], &map, &items[filed - 1]);
    };
    size_t next = 0;
    while (filed < 255) {
        file();
    }
    MEASURE("utils_qmap_get, 255 keys", keep(utils_qmap_get(&map, keys[few[next++ % ROUNDS]], &item)));
    while (filed < 10000) {
        file();
    }
    MEASURE("utils_qmap_get, 10,000 keys",
            keep(utils_qmap_get(&map, keys[any[next++ % ROUNDS]], &item)));
    MEASURE("utils_qmap_key_exists, 10,000 keys",
            keep(utils_qmap_key_exists(&map, keys[any[next++ % ROUNDS]], &item)));
    MEASURE("utils_db_qmap_item_ins, from 10,000 keys", keep(file()));
    MEASURE("utils_qmap_remove, to 10,000 keys",
            keep(utils_qmap_remove(&map, keys[--filed], &item)));
}
// clang-format on

} // namespace

int main()
{
    uint32_t level = 0;
    utils_log_verbosity_level_set(level);
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    measure_checks();
    measure_routes();
    measure_events();
    measure_memory_and_pools();
    measure_maps();
#if defined(__x86_64__) && !defined(__clang__)
    printf("GCC %d on x86-64\n", __GNUC__);
#else
    puts("another compiler or processor");
#endif
    return 0;
}
