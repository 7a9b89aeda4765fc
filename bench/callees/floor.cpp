#include "floor.h"

#include <array>
#include <complib/cl_memory.h>
#include <complib/cl_spinlock.h>
#include <cstring>
#include <ky_port_type_validate.h>

#define COLD __attribute__((cold, noinline))

// ---- Enum names ----

namespace {

template <size_t Count> constexpr std::array<const char*, Count> make_names()
{
    std::array<const char*, Count> names{};
    for (size_t i = 0; i < Count; i++) {
        names[i] = i % 3 == 0 ? "a third" : "Unknown";
    }
    return names;
}

constexpr auto names_of_105 = make_names<105>();
constexpr auto names_of_628 = make_names<628>();

} // namespace

const char* floor_name_of_105(uint32_t value)
{
    return value < 105 ? names_of_105[value] : "Unknown";
}

const char* floor_name_of_628(uint32_t value)
{
    return value < 628 ? names_of_628[value] : "Unknown";
}

// ---- Statements and traces ----

namespace {

uint32_t verbosity = 3;

/* What a statement that is wanted leaves to be done: so the function around it needs no frame. */
COLD uint32_t say_from(size_t statement, uint32_t a, uint32_t b)
{
    constexpr std::array texts = {"port",   "lag",  "vport", "vlag",
                                  "tunnel", "trap", "route", "group"};
    for (; statement < texts.size(); statement++) {
        ky_log(31, "FLOOR", "%s %u of %u is up\n", texts[statement], a, b);
        a += b;
    }
    return a;
}

bool is_wanted()
{
    return __builtin_expect(KY_LOAD(verbosity) >= 5U, 0);
}

uint32_t setting;

COLD ky_status_t set_with_traces(uint32_t value)
{
    ky_log(31, "FLOOR", "entered\n");
    KY_STORE(setting, value);
    ky_log(31, "FLOOR", "left\n");
    return KY_STATUS_SUCCESS;
}

COLD ky_status_t leave()
{
    ky_log(31, "FLOOR", "left\n");
    return KY_STATUS_SUCCESS;
}

} // namespace

uint32_t floor_statements(uint32_t a, uint32_t b)
{
#pragma GCC unroll 8
    for (size_t statement = 0; statement < 8; statement++) {
        if (is_wanted()) {
            return say_from(statement, a, b);
        }
        a += b;
    }
    return a;
}

uint32_t floor_statement(uint32_t a, uint32_t b)
{
    return is_wanted() ? say_from(7, a, b) : a + b;
}

ky_status_t floor_traced(uint32_t value)
{
    if (__builtin_expect(KY_LOAD(g_ky_log_module_func_enable) != 0, 0)) {
        return set_with_traces(value);
    }
    KY_STORE(setting, value);
    if (__builtin_expect(KY_LOAD(g_ky_log_module_func_enable) != 0, 0)) {
        return leave();
    }
    return KY_STATUS_SUCCESS;
}

// ---- Checks ----

namespace {

COLD ky_status_t refuse(uint32_t device_id)
{
    ky_log(1, "FLOOR", "device %u\n", device_id);
    return KY_STATUS_PARAM_EXCEEDS_RANGE;
}

} // namespace

ky_status_t floor_check(uint8_t device_id)
{
    return device_id - 1U < 253U ? KY_STATUS_SUCCESS : refuse(device_id);
}

// ---- Memory ----

namespace {

cl_spinlock_t lock = {PTHREAD_MUTEX_INITIALIZER, CL_INITIALIZED};
uint64_t counts[18];

} // namespace

void* floor_memory_get(uint32_t size, uint32_t mem_type)
{
    void* block = cl_malloc(sizeof size + size_t{size});
    if (block == nullptr) {
        return nullptr;
    }
    memcpy(block, &size, sizeof size);
    cl_spinlock_acquire(&lock);
    counts[mem_type] += size;
    counts[0] += size;
    cl_spinlock_release(&lock);
    return static_cast<char*>(block) + sizeof size;
}

void floor_memory_put(void* block, uint32_t mem_type)
{
    void* start = static_cast<char*>(block) - sizeof(uint32_t);
    uint32_t size = 0;
    memcpy(&size, start, sizeof size);
    cl_spinlock_acquire(&lock);
    counts[mem_type] -= size;
    counts[0] -= size;
    cl_spinlock_release(&lock);
    cl_free(start);
}

// ---- Events ----

ky_status_t floor_process_event(cl_qmap_t* map, adviser_event_t event, void* event_data)
{
    cl_map_item_t* const end = cl_qmap_end(map);
    for (cl_map_item_t* item = cl_qmap_head(map); item != end;) {
        auto* advisor = reinterpret_cast<floor_advisor_t*>(item);
        item = cl_qmap_next(item);
        const ky_status_t status = advisor->callback(event, event_data);
        if (status != KY_STATUS_SUCCESS) {
            return status;
        }
    }
    return KY_STATUS_SUCCESS;
}

// ---- Multicast routes ----

namespace {

__extension__ using uint128_t = unsigned __int128;

inline uint128_t number_of(const uint32_t (&words)[4])
{
    return uint128_t{words[0]} << 96 | uint128_t{words[1]} << 64 | uint128_t{words[2]} << 32 |
           words[3];
}

template <typename Number> inline bool is_prefix(Number address, Number mask)
{
    return (address & ~mask) == 0 && (~mask & (~mask + 1)) == 0;
}

inline bool is_ipv4_key(const ky_ipv4_prefix_t& source, const ky_ipv4_prefix_t& group)
{
    const bool is_any = (group.addr | group.mask) == 0;
    const bool is_multicast = group.addr >> 28 == 0xE && group.mask >> 28 == 0xF;
    return (is_any || (is_multicast && (group.addr & ~group.mask) == 0)) &&
           is_prefix(source.addr, source.mask);
}

/* Also for the versions that are none, whose group may only be any. */
inline bool
is_ipv6_key(ky_ip_version_t version, const ky_ipv6_prefix_t& source, const ky_ipv6_prefix_t& group)
{
    const uint128_t group_address = number_of(group.addr);
    const uint128_t group_mask = number_of(group.mask);
    const bool is_any = (group_address | group_mask) == 0;
    const bool is_multicast =
        version == 2 && group.addr[0] >> 24 == 0xFF && group.mask[0] >> 24 == 0xFF;
    return (is_any || (is_multicast && (group_address & ~group_mask) == 0)) &&
           is_prefix(number_of(source.addr), number_of(source.mask));
}

inline bool is_key(const ky_mc_route_key_t* key)
{
    const auto& [source, group] = *key;
    if (group.version > 3 || source.version != group.version) {
        return false;
    }
    return source.version == 1 ? is_ipv4_key(source.prefix.ipv4, group.prefix.ipv4)
                               : is_ipv6_key(source.version, source.prefix.ipv6, group.prefix.ipv6);
}

} // namespace

int floor_route_key(const ky_mc_route_key_t* key)
{
    return is_key(key);
}

int floor_route_set(
    ky_access_cmd_t cmd, const ky_mc_route_key_t* key, const ky_mc_route_attr_t* attr,
    const ky_mc_route_data_t* data)
{
    if (cmd == KY_ACCESS_CMD_DELETE_ALL) {
        return key == nullptr || (key->mc_group_addr.version <= 3 &&
                                  key->source_addr.version == key->mc_group_addr.version);
    }
    if (key == nullptr || !is_key(key)) {
        return 0;
    }
    if (cmd != KY_ACCESS_CMD_ADD && cmd != KY_ACCESS_CMD_EDIT) {
        return 1;
    }
    const auto& [version, group] = key->mc_group_addr;
    if (attr->rpf_action > 5 || (attr->rpf_action >= 4 && attr->rpf_group_id > 511) ||
        attr->prio_type - 1 > 1 || attr->ttl_cmd - 1 > 1) {
        return 0;
    }
    if (attr->prio_type == 2 &&
        !(version == 1 ? is_prefix(group.ipv4.addr, group.ipv4.mask)
                       : is_prefix(number_of(group.ipv6.addr), number_of(group.ipv6.mask)))) {
        return 0;
    }
    if (attr->user_token_valid == 1 &&
        (attr->user_token_mask > 0xFFF || attr->user_token_value > 0xFFF)) {
        return 0;
    }
    return data->action <= 4 && (data->egress_container_id == 0 || data->egress_rif_cnt == 0);
}

// ---- Port types ----

namespace {

constexpr std::array<uint8_t, 16> bits = {1, 2, 4, 8, 32, 0, 0, 0, 16};

} // namespace

uint32_t floor_port_type(uint32_t enum_id, uint32_t log_port)
{
    return enum_id - 1 < 172 &&
           (port_type_validation_table[enum_id].allowed_port_types & bits[log_port >> 28]) != 0;
}
