#include "floor.h"

#include <array>
#include <bit>
#include <complib/cl_memory.h>
#include <complib/cl_spinlock.h>
#include <cstring>
#include <ky_port_type_validate.h>

namespace {

// ---- Names, checks and traces ----

constexpr auto names = [] {
    std::array<const char*, 628> all{};
    for (size_t i = 0; i < all.size(); i++) {
        all[i] = i % 3 == 0 ? "a third" : "Unknown";
    }
    return all;
}();

constexpr std::array<uint8_t, 16> bits = {1, 2, 4, 8, 32, 0, 0, 0, 16};

[[gnu::used]] uint32_t setting;

[[gnu::cold, gnu::noinline]] ky_status_t fail(ky_status_t status)
{
    ky_log(1, "FLOOR", "%u\n", status);
    return status;
}

[[gnu::cold, gnu::noinline]] ky_status_t set_with_traces(uint32_t value)
{
    ky_log(31, "FLOOR", "entered\n");
    KY_STORE(setting, value);
    return fail(KY_STATUS_SUCCESS);
}

bool is_traced()
{
    return __builtin_expect(KY_LOAD(g_ky_log_module_func_enable) != 0, 0);
}

// ---- Multicast routes ----

#define INLINE [[gnu::always_inline]] inline

INLINE uint64_t half(const uint32_t* words, size_t which)
{
    uint64_t two = 0;
    memcpy(&two, words + 2 * which, sizeof two);
    return two;
}

INLINE bool is_contiguous(uint32_t mask)
{
    return ((~mask + 1) & ~mask) == 0;
}

INLINE bool is_contiguous(const uint32_t (&mask)[4])
{
    constexpr int ORDER = std::endian::native == std::endian::little ? 32 : 0;
    const uint64_t high = std::rotl(~half(mask, 0), ORDER);
    const uint64_t low = std::rotl(~half(mask, 1), ORDER);
    uint64_t sum = 0;
    const uint64_t high_sum = high + (__builtin_add_overflow(low, 1, &sum) ? 1 : 0);
    return ((high_sum & high) | (sum & low)) == 0;
}

INLINE bool is_covered(const ky_ipv4_prefix_t& ipv4)
{
    return (ipv4.addr & ~ipv4.mask) == 0;
}

INLINE bool is_covered(const ky_ipv6_prefix_t& ipv6)
{
    const auto& [addr, mask] = ipv6;
    return ((half(addr, 0) & ~half(mask, 0)) | (half(addr, 1) & ~half(mask, 1))) == 0;
}

INLINE bool is_group(const ky_ipv4_prefix_t& ipv4)
{
    const auto& [addr, mask] = ipv4;
    return (addr >> 28 == 0xE && ((addr | 0xF0000000) & ~mask) == 0) || (addr | mask) == 0;
}

INLINE bool is_group(const ky_ipv6_prefix_t& ipv6)
{
    const auto& [addr, mask] = ipv6;
    return (addr[0] >> 24 == 0xFF && is_covered(ipv6)) ||
           (half(addr, 0) | half(addr, 1) | half(mask, 0) | half(mask, 1)) == 0;
}

INLINE bool is_key(const ky_mc_route_key_t* key)
{
    const auto& [source, group] = *key;
    if (source.version != group.version || source.version - 1 > 1) {
        return false;
    }
    const auto passes = [](const auto& from, const auto& to) {
        return is_group(to) && is_covered(from) && is_contiguous(from.mask);
    };
    return source.version == 1 ? passes(source.prefix.ipv4, group.prefix.ipv4)
                               : passes(source.prefix.ipv6, group.prefix.ipv6);
}

// ---- Memory ----

cl_spinlock_t lock = {PTHREAD_MUTEX_INITIALIZER, CL_INITIALIZED};
uint64_t counts[18];

void add(uint32_t mem_type, uint64_t size)
{
    cl_spinlock_acquire(&lock);
    counts[mem_type] += size;
    counts[0] += size;
    cl_spinlock_release(&lock);
}

} // namespace

const char* floor_name(uint32_t value)
{
    return value < names.size() ? names[value] : "Unknown";
}

ky_status_t floor_traced(uint32_t value)
{
    if (is_traced()) {
        return set_with_traces(value);
    }
    KY_STORE(setting, value);
    return is_traced() ? fail(KY_STATUS_SUCCESS) : KY_STATUS_SUCCESS;
}

ky_status_t floor_check(uint8_t device_id)
{
    return device_id - 1U < 253U ? KY_STATUS_SUCCESS : fail(KY_STATUS_PARAM_EXCEEDS_RANGE);
}

uint32_t floor_port_type(uint32_t enum_id, uint32_t log_port)
{
    return enum_id - 1 < 172 &&
           (port_type_validation_table[enum_id].allowed_port_types & bits[log_port >> 28]) != 0;
}

int floor_route_key(const ky_mc_route_key_t* key)
{
    return is_key(key);
}

int floor_route(
    const ky_mc_route_key_t* key, const ky_mc_route_attr_t* attr, const ky_mc_route_data_t* data)
{
    if (key == nullptr || !is_key(key) || attr->rpf_action > 5 ||
        (attr->rpf_action >= 4 && attr->rpf_group_id > 511) || attr->prio_type - 1 > 1 ||
        attr->ttl_cmd - 1 > 1) {
        return 0;
    }
    const auto& [version, group] = key->mc_group_addr;
    if (attr->prio_type == 2 &&
        !(version == 1 ? is_contiguous(group.ipv4.mask) : is_contiguous(group.ipv6.mask))) {
        return 0;
    }
    if (attr->user_token_valid == 1 &&
        (attr->user_token_mask > 0xFFF || attr->user_token_value > 0xFFF)) {
        return 0;
    }
    return data->action <= 4 && (data->egress_container_id == 0 || data->egress_rif_cnt == 0);
}

void* floor_memory_get(uint32_t size, uint32_t mem_type)
{
    void* block = cl_malloc(sizeof size + size_t{size});
    if (block == nullptr) {
        return nullptr;
    }
    memcpy(block, &size, sizeof size);
    add(mem_type, size);
    return static_cast<char*>(block) + sizeof size;
}

void floor_memory_put(void* block, uint32_t mem_type)
{
    void* start = static_cast<char*>(block) - sizeof(uint32_t);
    uint32_t size = 0;
    memcpy(&size, start, sizeof size);
    add(mem_type, -uint64_t{size});
    cl_free(start);
}

cl_pool_item_t* floor_pool_get(cl_qpool_t* pool)
{
    return cl_qpool_get(pool);
}

ky_status_t floor_event(cl_qmap_t* map, adviser_event_t event, void* event_data)
{
    cl_map_item_t* const end = cl_qmap_end(map);
    for (cl_map_item_t* item = cl_qmap_head(map); item != end;) {
        auto* advisor = reinterpret_cast<FloorAdvisor*>(item);
        item = item->next;
        const ky_status_t status = advisor->callback(event, event_data);
        if (status != KY_STATUS_SUCCESS) {
            return status;
        }
    }
    return KY_STATUS_SUCCESS;
}
