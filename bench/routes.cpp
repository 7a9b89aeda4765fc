// The validation of multicast routes that pass.
#include "bench.h"

#include "callees/floor.h"
#include "callees/peers.h"

#include <cstdlib>

namespace {

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

uint32_t mask_of(uint32_t length)
{
    return length == 0 ? 0 : ~uint32_t{0} << (32 - length);
}

/* Keys of prefixes of all lengths from 8 on. */
std::vector<ky_mc_route_key_t> make_keys(ky_ip_version_t version)
{
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

template <typename Check>
void enter_check(
    const std::string& operation, const char* name, ky_ip_version_t version, Check check)
{
    enter(operation, name, [check, keys = make_keys(version)](size_t i) {
        if (!check(&keys[i])) {
            abort();
        }
    });
}

} // namespace

void enter_routes()
{
    for (const ky_ip_version_t version : {1U, 2U}) {
        const std::string ip = version == 1 ? "IPv4" : "IPv6";

        std::string operation = "multicast route added, " + ip;
        enter_check(operation, "library", version, [](const ky_mc_route_key_t* key) {
            return ky_router_utils_validate_mc_route_set(
                       KY_ACCESS_CMD_ADD, 0, key, &ATTRIBUTES, &DATA) == KY_STATUS_SUCCESS;
        });
        enter_check(operation, "floor", version, [](const ky_mc_route_key_t* key) {
            return floor_route_set(KY_ACCESS_CMD_ADD, key, &ATTRIBUTES, &DATA) != 0;
        });

        operation = "multicast key, " + ip;
        enter_check(operation, "library", version, [](const ky_mc_route_key_t* key) {
            return ky_router_utils_validate_mc_route_counter_bind_get(0, key, nullptr) ==
                   KY_STATUS_SUCCESS;
        });
        enter_check(operation, "floor", version, [](const ky_mc_route_key_t* key) {
            return floor_route_key(key) != 0;
        });
#if PEER_BOOST
        enter_check(operation, "Boost.Asio", version, peer_route_key_by_asio);
#endif
    }
}
