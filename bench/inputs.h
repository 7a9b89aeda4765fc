/* The inputs of operations: the same in each process, in random order. */
#ifndef INPUTS_H
#define INPUTS_H

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>

#include <array>
#include <cstddef>
#include <random>
#include <utility>
#include <vector>

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
    std::mt19937_64 random(count);
    std::vector<uint64_t> keys(count);
    for (uint64_t& key : keys) {
        key = random();
    }
    return keys;
}

/* A function of the SDK and a port that it accepts. */
struct PortQuestion {
    uint32_t enum_id;
    uint32_t log_port;
};

inline std::vector<PortQuestion> accepted_ports()
{
    std::vector<PortQuestion> accepted;
    port_type_validate_log_verbosity_level_set(0); // rejected ports are checked, too
    for (uint32_t enum_id = 1; enum_id < PORT_TYPE_VALIDATION_ROWS - 1; enum_id++) {
        for (uint32_t type = 0; type < 16; type++) {
            if (is_port_type_valid(enum_id, type << 28) != 0) {
                accepted.push_back({enum_id, type << 28 | 0x10001});
            }
        }
    }
    std::vector<PortQuestion> questions;
    for (const uint32_t i : values_below(static_cast<uint32_t>(accepted.size()))) {
        questions.push_back(accepted[i]);
    }
    return questions;
}

/* A route that is valid with every key. */
constexpr ky_mc_route_attr_t ATTRIBUTES = {
    .rpf_action = 5,
    .ttl_cmd = 1,
    .router_word_1 = 0,
    .prio_type = 2,
    .router_word_2 = 0,
    .rpf_group_id = 511,
    .user_token_valid = 1,
    .user_token_value = 1,
    .user_token_mask = 0xFFF,
};
constexpr ky_mc_route_data_t DATA = {.action = 4, .egress_rif_cnt = 3, .egress_container_id = 0};

/* Keys with prefixes of all lengths from 8 bits. */
inline std::vector<ky_mc_route_key_t> route_keys(ky_ip_version_t version)
{
    const auto mask_of = [](uint32_t length) { return ~uint32_t{0} << (32 - length); };
    std::vector<ky_mc_route_key_t> keys;
    for (const uint32_t value : values_below(0x7FFFFFFE)) {
        ky_mc_route_key_t key = {};
        key.source_addr.version = key.mc_group_addr.version = version;
        auto& source = key.source_addr.prefix;
        auto& group = key.mc_group_addr.prefix;
        const uint32_t length = 8 + value % 25;
        if (version == 1) {
            source.ipv4 = {value & mask_of(length), mask_of(length)};
            group.ipv4 = {(value | 0xE0000000) & 0xEFFFFFFF & mask_of(length), mask_of(length)};
        } else {
            const size_t last = value % 4; // the word that the prefix ends in
            for (size_t word = 0; word <= last; word++) {
                const uint32_t mask = word < last ? ~uint32_t{0} : mask_of(length);
                source.ipv6.addr[word] = value & mask;
                source.ipv6.mask[word] = mask;
                group.ipv6.addr[word] = (word == 0 ? value | 0xFF000000 : value) & mask;
                group.ipv6.mask[word] = mask;
            }
        }
        keys.push_back(key);
    }
    return keys;
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

#endif
