// What needs nothing but the standard library, absl and Boost's headers.
#include "peers.h"
#include "eight_statements.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <ky_port_type_validate.h>
#include <string>
#include <syslog.h>
#include <unordered_map>

#if PEER_ABSL
#include <absl/container/flat_hash_map.h>
#endif

// ---- Enum names ----

/* ROW(0) to ROW(104), and to ROW(208). */
#define ROWS_5(i) ROW(i) ROW((i) + 1) ROW((i) + 2) ROW((i) + 3) ROW((i) + 4)
#define ROWS_15(i) ROWS_5(i) ROWS_5((i) + 5) ROWS_5((i) + 10)
#define ROWS_45(i) ROWS_15(i) ROWS_15((i) + 15) ROWS_15((i) + 30)
#define ROWS_105(i) ROWS_45(i) ROWS_45((i) + 45) ROWS_15((i) + 90)
#define ROWS_209(i)    \
    ROWS_105(i)        \
    ROWS_45((i) + 105) \
    ROWS_45((i) + 150) \
    ROWS_5((i) + 195) ROWS_5((i) + 200) ROW((i) + 205) ROW((i) + 206) ROW((i) + 207) ROW((i) + 208)

const char* peer_name_by_switch(uint32_t value)
{
    switch (value) {
#define ROW(i) \
    case i:    \
        return "value " #i;
        ROWS_105(0)
#undef ROW
    default:
        return "Unknown";
    }
}

const char* peer_sparse_name_by_switch(uint32_t value)
{
    switch (value) {
#define ROW(i)    \
    case 3 * (i): \
        return "value " #i;
        ROWS_209(0)
#undef ROW
    default:
        return "Unknown";
    }
}

namespace {

template <typename Map> const char* look_up(const Map& map, uint32_t value)
{
    const auto row = map.find(value);
    return row != map.end() ? row->second : "Unknown";
}

#define ROW(i) {(i), "value " #i},
const std::unordered_map<uint32_t, const char*> unordered_map = {ROWS_105(0)};
#if PEER_ABSL
const absl::flat_hash_map<uint32_t, const char*> flat_hash_map = {ROWS_105(0)};
#endif
#undef ROW
#define ROW(i) {3 * (i), "value " #i},
const std::unordered_map<uint32_t, const char*> sparse_unordered_map = {ROWS_209(0)};
#if PEER_ABSL
const absl::flat_hash_map<uint32_t, const char*> sparse_flat_hash_map = {ROWS_209(0)};
#endif
#undef ROW

} // namespace

const char* peer_name_by_unordered_map(uint32_t value)
{
    return look_up(unordered_map, value);
}

const char* peer_sparse_name_by_unordered_map(uint32_t value)
{
    return look_up(sparse_unordered_map, value);
}

#if PEER_ABSL
const char* peer_name_by_flat_hash_map(uint32_t value)
{
    return look_up(flat_hash_map, value);
}

const char* peer_sparse_name_by_flat_hash_map(uint32_t value)
{
    return look_up(sparse_flat_hash_map, value);
}
#endif

// ---- Statements ----

#define STATEMENT(text) syslog(LOG_DEBUG, text " %u of %u is up", a, b)

uint32_t peer_statements_by_syslog(uint32_t a, uint32_t b)
{
    EIGHT_STATEMENTS
    return a;
}

// ---- Checks ----

namespace {

bool is_device_id(uint8_t device_id)
{
    return device_id - 1U < 253U;
}

} // namespace

std::error_code peer_check_by_error_code(uint8_t device_id)
{
    return is_device_id(device_id) ? std::error_code()
                                   : std::make_error_code(std::errc::result_out_of_range);
}

#if PEER_ABSL
absl::Status peer_check_by_absl_status(uint8_t device_id)
{
    return is_device_id(device_id) ? absl::OkStatus()
                                   : absl::OutOfRangeError("device " + std::to_string(device_id));
}
#endif

#if PEER_BOOST
boost::outcome_v2::result<void> peer_check_by_outcome(uint8_t device_id)
{
    if (!is_device_id(device_id)) {
        return boost::system::errc::make_error_code(boost::system::errc::result_out_of_range);
    }
    return boost::outcome_v2::success();
}
#endif

// ---- Memory ----

namespace {

std::atomic<uint64_t> counts[18];

} // namespace

void* peer_memory_get_without_lock(uint32_t size, uint32_t mem_type)
{
    void* block = malloc(sizeof size + size_t{size});
    if (block == nullptr) {
        return nullptr;
    }
    memcpy(block, &size, sizeof size);
    counts[mem_type].fetch_add(size, std::memory_order_relaxed);
    counts[0].fetch_add(size, std::memory_order_relaxed);
    return static_cast<char*>(block) + sizeof size;
}

void peer_memory_put_without_lock(void* block, uint32_t mem_type)
{
    void* start = static_cast<char*>(block) - sizeof(uint32_t);
    uint32_t size = 0;
    memcpy(&size, start, sizeof size);
    counts[mem_type].fetch_sub(size, std::memory_order_relaxed);
    counts[0].fetch_sub(size, std::memory_order_relaxed);
    free(start);
}

// ---- Port types ----

uint32_t peer_port_type_by_switch(uint32_t enum_id, uint32_t log_port)
{
    if (enum_id - 1 >= 172) {
        return 0;
    }
    const uint32_t allowed = port_type_validation_table[enum_id].allowed_port_types;
    switch (log_port >> 28) {
    case 0:
        return (allowed & 0x01) != 0;
    case 1:
        return (allowed & 0x02) != 0;
    case 2:
        return (allowed & 0x04) != 0;
    case 3:
        return (allowed & 0x08) != 0;
    case 4:
        return (allowed & 0x20) != 0;
    case 8:
        return (allowed & 0x10) != 0;
    default:
        return 0;
    }
}
