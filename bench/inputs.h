/* The operations of the library that the gate counts and the benchmarks time. Their inputs are the
 * same in each process, in random order. */
#ifndef INPUTS_H
#define INPUTS_H

#include <ky_adviser.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>
#include <ky_values.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

#define KY_LOG_MODULE "BENCH"
#define KY_LOG_VERBOSITY verbosity

inline uint32_t verbosity = KY_LOG_LEVEL_DEFAULT;
constexpr size_t INPUTS = 256;

inline std::vector<uint32_t> values_below(uint32_t bound, size_t count = INPUTS)
{
    std::minstd_rand random(bound);
    std::vector<uint32_t> values(count);
    for (uint32_t& value : values) {
        value = static_cast<uint32_t>(random() % bound);
    }
    return values;
}

/* The keys of a map. */
inline std::vector<uint64_t> random_keys(size_t count)
{
    std::vector<uint64_t> keys(count);
    std::generate(keys.begin(), keys.end(), std::mt19937_64(count));
    return keys;
}

/* Rows of the dictionary of port types, each with a port that it accepts. */
inline std::vector<std::pair<uint32_t, uint32_t>> accepted_ports()
{
    std::vector<std::pair<uint32_t, uint32_t>> accepted;
    port_type_validate_log_verbosity_level_set(0); // rejected ports are checked, too
    for (const uint32_t value : values_below(0x7FFFFFFE, 32 * INPUTS)) {
        const uint32_t enum_id = 1 + value % (PORT_TYPE_VALIDATION_ROWS - 2);
        const uint32_t log_port = value << 20 | 0x10001;
        if (is_port_type_valid(enum_id, log_port) != 0) {
            accepted.emplace_back(enum_id, log_port);
        }
    }
    return accepted; // many more than INPUTS
}

/* Keys with prefixes of all lengths from 8 bits. */
inline std::vector<ky_mc_route_key_t> route_keys(ky_ip_version_t version)
{
    std::vector<ky_mc_route_key_t> keys;
    for (const uint32_t value : values_below(0x7FFFFFFE)) {
        ky_mc_route_key_t key = {};
        auto& [source, group] = key;
        source.version = group.version = version;
        const uint32_t last_mask = ~uint32_t{0} << value % 25;
        if (version == KY_IP_VERSION_IPV4) {
            source.prefix.ipv4 = {value & last_mask, last_mask};
            group.prefix.ipv4 = {(0xE0000000 | value >> 4) & last_mask, last_mask};
        } else {
            const size_t last = value % 4; // the word that the prefix ends in
            for (size_t word = 0; word <= last; word++) {
                const uint32_t mask = word < last ? ~uint32_t{0} : last_mask;
                source.prefix.ipv6.addr[word] = value & mask;
                group.prefix.ipv6.addr[word] = (word == 0 ? value | 0xFF000000 : value) & mask;
                source.prefix.ipv6.mask[word] = group.prefix.ipv6.mask[word] = mask;
            }
        }
        keys.push_back(key);
    }
    return keys;
}

inline ky_status_t validate_key(const ky_mc_route_key_t& key)
{
    return ky_router_utils_validate_mc_route_counter_bind_get(0, &key, nullptr);
}

/* Validates a route that is valid with every key. */
inline ky_status_t validate_route(const ky_mc_route_key_t& key)
{
    constexpr static ky_mc_route_attr_t ATTRIBUTES = {
        .rpf_action = KY_ROUTER_RPF_ACTION_TRAP_LIST,
        .ttl_cmd = KY_MC_ROUTER_TTL_CMD_DEC,
        .router_word_1 = 0,
        .prio_type = KY_ROUTER_PRIO_TYPE_LPM,
        .router_word_2 = 0,
        .rpf_group_id = 511,
        .user_token_valid = 1,
        .user_token_value = 1,
        .user_token_mask = 0xFFF};
    constexpr static ky_mc_route_data_t DATA = {4, 3, 0};
    return ky_router_utils_validate_mc_route_set(KY_ACCESS_CMD_ADD, 0, &key, &ATTRIBUTES, &DATA);
}

#define FOUR(LOG) LOG("port") LOG("lag") LOG("tunnel") LOG("route")
#define LOG_BY_LIBRARY(text) KY_LOG_DEBUG(text " %u of %u is up\n", a, b), a += b;

/* Eight suppressed log statements of a module's function. */
[[gnu::noinline]] inline uint32_t log_by_library(uint32_t a, uint32_t b)
{
    FOUR(LOG_BY_LIBRARY);
    FOUR(LOG_BY_LIBRARY);
    return a;
}

inline ky_status_t block_of_library(size_t)
{
    void* block = nullptr;
    utils_memory_get(&block, 100, KY_MEM_TYPE_COS);
    return utils_memory_put(block, KY_MEM_TYPE_COS);
}

inline cl_pool_item_t* object_of_library(cl_qpool_t* pool)
{
    cl_pool_item_t* item = nullptr;
    utils_qpool_get(&item, pool);
    cl_qpool_put(pool, item);
    return item;
}

/* Callbacks, each a separate function, like those of the SDK's modules. */
template <size_t I> ky_status_t callback(adviser_event_t, void* event_data)
{
    *static_cast<size_t*>(event_data) += I;
    return KY_STATUS_SUCCESS;
}

template <size_t... I> constexpr auto make_callbacks(std::index_sequence<I...>)
{
    return std::array<adviser_cb_t, sizeof...(I)>{callback<I>...};
}

constexpr auto callbacks = make_callbacks(std::make_index_sequence<255>());
constexpr adviser_event_t EVENT = ADVISER_EVENT_PORT_ADDED;
inline size_t sum = 0;

/* Registers callbacks for the event, up to a number. */
inline void register_up_to(size_t count)
{
    for (size_t i = 0; i < count; i++) {
        adviser_register_event(KY_ACCESS_CMD_ADD, EVENT, callbacks[i]);
    }
}

/* Calls visit(name, once) for each operation that takes nothing but an input, by its index. */
template <typename Visit> void for_each_operation(Visit visit)
{
    static const auto values = values_below(105);
    static const auto ports = accepted_ports();
    static const auto ipv4 = route_keys(KY_IP_VERSION_IPV4);
    static const auto ipv6 = route_keys(KY_IP_VERSION_IPV6);
    static cl_qpool_t pool;
    cl_qpool_init(&pool, 16, 16, 0, 64, nullptr, nullptr, nullptr);
    visit("nothing, an empty loop", [](size_t i) { return values[i]; });
    visit("name of a value", [](size_t i) { return ky_host_ifc_trap_id_str(values[i]); });
    visit("eight suppressed log statements", [](size_t i) { return log_by_library(values[i], 1); });
    visit("traced setter", [](size_t i) { return utils_use_xm_set(values[i]); });
    visit("argument check", [](size_t i) {
        return utils_check_device_id(static_cast<uint8_t>(values[i] + 1));
    });
    visit(
        "port type", [](size_t i) { return is_port_type_valid(ports[i].first, ports[i].second); });
    visit("multicast key, IPv4", [](size_t i) { return validate_key(ipv4[i]); });
    visit("multicast key, IPv6", [](size_t i) { return validate_key(ipv6[i]); });
    visit("multicast route, IPv4", [](size_t i) { return validate_route(ipv4[i]); });
    visit("multicast route, IPv6", [](size_t i) { return validate_route(ipv6[i]); });
    visit("memory, get and put", block_of_library);
    visit("pool, get and put", [](size_t) { return object_of_library(&pool); });
}

#endif
