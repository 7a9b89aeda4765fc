// Function traces, argument checks, settings, memory, pools and maps: module "UTILS".
#include "ky_utils.h"

#include "ky_values.h"
#include "name_table.h"

#include <cinttypes>
#include <complib/cl_memory.h>
#include <cstddef>
#include <cstring>

#define KY_LOG_MODULE "UTILS"
#define KY_LOG_VERBOSITY utils_verbosity_level

namespace {

constinit uint32_t utils_verbosity_level = KY_LOG_LEVEL_DEFAULT;
constinit uint32_t utils_use_xm = 0;
constinit uint32_t utils_boot_mode = 0;

constexpr uint32_t MEM_TYPE_MIN = KY_MEM_TYPE_COS;
constexpr uint32_t MEM_TYPE_MAX = KY_MEM_TYPE_TELEMETRY;

constexpr NameTable<MEM_TYPE_MAX> utils_mem_type_name({
    {KY_MEM_TYPE_ALL, "ALL"},
    {KY_MEM_TYPE_COS, "COS"},
    {KY_MEM_TYPE_TOPO, "TOPO"},
    {KY_MEM_TYPE_PORT, "PORT"},
    {KY_MEM_TYPE_MSTP, "MSTP"},
    {KY_MEM_TYPE_FDB, "FDB"},
    {KY_MEM_TYPE_VLAN, "VLAN"},
    {KY_MEM_TYPE_LAG, "LAG"},
    {KY_MEM_TYPE_ROUTER, "ROUTER"},
    {KY_MEM_TYPE_ACL, "ACL"},
    {KY_MEM_TYPE_SPAN, "SPAN"},
    {KY_MEM_TYPE_POLICER, "POLICER"},
    {KY_MEM_TYPE_HOST_INTERFACE, "HOST-INTERFACE"},
    {KY_MEM_TYPE_FLOW_COUNTER, "FLOW-COUNTER"},
    {KY_MEM_TYPE_KVDL, "KVDL"},
    {KY_MEM_TYPE_API, "API"},
    {KY_MEM_TYPE_TUNNEL, "TUNNEL"},
    {KY_MEM_TYPE_TELEMETRY, "TELEMETRY"},
});

/* Bytes requested and not yet freed, by type; element 0 is the total. */
constinit uint64_t utils_mem_type_count[MEM_TYPE_MAX + 1] = {};

/* Truncates an 8- or 16-bit argument. A caller may leave garbage in the rest of the register, which
 * clang assumes to be clear; hiding the value's origin makes it extend the value. */
template <typename Narrow> uint32_t zero_extended(Narrow value)
{
    asm("" : "+r"(value));
    return value;
}

bool is_within(int64_t value, uint32_t min, uint32_t max)
{
    return __builtin_expect(value >= min && value <= max, 1);
}

/* Logs an error and returns through the exported exit trace. */
#define UTILS_FAIL(status, ...) utils_ky_log_exit(KY_FAIL(status, __VA_ARGS__), __func__)

/* Checks a range; the message prints value, min and max. */
#define CHECK_RANGE(value, min, max, message) \
    (is_within(value, min, max)               \
         ? KY_STATUS_SUCCESS                  \
         : UTILS_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, message, value, min, max))

#define CHECK_NOT_ZERO(value, message, description)                                  \
    ((value) != 0 ? KY_STATUS_SUCCESS                                                \
     : (description) != nullptr                                                      \
         ? UTILS_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, message " (%s)\n", description) \
         : UTILS_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, message "\n"))

bool is_mem_type(uint32_t mem_type)
{
    return mem_type >= MEM_TYPE_MIN && mem_type <= MEM_TYPE_MAX;
}

/* The block's size, stored in front of it. */
using MemHeader = uint32_t;

/* Allocates a block and its header. */
void* allocate(uint32_t size)
{
    size_t bytes = 0;
    if (__builtin_add_overflow(sizeof(MemHeader), size, &bytes)) { // LCOV_EXCL_START: on 64 bits
        return nullptr;
    } // LCOV_EXCL_STOP
    return cl_malloc(bytes);
}

/* account and unaccount alone change the counts. */
void account(uint32_t mem_type, uint32_t size)
{
    cl_spinlock_acquire(&utils_mem_type_count_lock);
    KY_STORE(utils_mem_type_count[mem_type], utils_mem_type_count[mem_type] + size);
    KY_STORE(utils_mem_type_count[KY_MEM_TYPE_ALL], utils_mem_type_count[KY_MEM_TYPE_ALL] + size);
    cl_spinlock_release(&utils_mem_type_count_lock);
}

/* Compares under the lock too: otherwise two concurrent puts under a wrong type could take its
 * count below zero. */
bool unaccount(uint32_t mem_type, uint32_t size)
{
    cl_spinlock_acquire(&utils_mem_type_count_lock);
    const bool holds_as_much = size <= utils_mem_type_count[mem_type];
    if (holds_as_much) {
        KY_STORE(utils_mem_type_count[mem_type], utils_mem_type_count[mem_type] - size);
        KY_STORE(
            utils_mem_type_count[KY_MEM_TYPE_ALL], utils_mem_type_count[KY_MEM_TYPE_ALL] - size);
    }
    cl_spinlock_release(&utils_mem_type_count_lock);
    return holds_as_much;
}

/* Initialises a pool, and a map unless it is null; log records name the exported function. */
ky_status_t init_db(
    const char* function, cl_qpool_t* pool_p, cl_qmap_t* map_p, uint32_t min_count,
    uint32_t max_count, uint32_t grow_count, uint32_t object_size, const char* db_name)
{
    if (cl_qpool_init(
            pool_p, min_count, max_count, grow_count, object_size, nullptr, nullptr, nullptr) !=
        0) {
        KY_LOG_IN(function, KY_LOG_MASK_ERROR, "Init failure of %s DB\n", db_name);
        return utils_ky_log_exit(KY_STATUS_NO_MEMORY, function);
    }
    if (map_p != nullptr) {
        cl_qmap_init(map_p);
    }
    KY_LOG_IN(
        function, KY_LOG_MASK_NOTICE, "Init %s DB (Min: %u, Max: %u, Grow: %u)\n", db_name,
        min_count, max_count, grow_count);
    return KY_STATUS_SUCCESS;
}

/* Looks up a key; stores its item, or the end item, unless item_pp is null. */
bool find(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp)
{
    cl_map_item_t* item = cl_qmap_get(map_p, key);
    if (item_pp != nullptr) {
        *item_pp = item;
    }
    return item != cl_qmap_end(map_p);
}

} // namespace

static_assert(offsetof(cl_spinlock_t, state) == sizeof(pthread_mutex_t));

constinit cl_spinlock_t utils_mem_type_count_lock = {PTHREAD_MUTEX_INITIALIZER, CL_INITIALIZED};

void utils_ky_log_enter(const char* function_name)
{
    if (KY_LOAD(g_ky_log_module_func_enable) != 0) {
        KY_LOG_DEBUG("%s - entered\n", function_name);
    }
}

ky_status_t utils_ky_log_exit(ky_status_t status, const char* function_name)
{
    if (KY_LOAD(g_ky_log_module_func_enable) != 0) {
        KY_LOG_DEBUG("%s - left\n", function_name);
    }
    return status;
}

ky_status_t utils_log_verbosity_level_set(uint32_t level)
{
    KY_TRACE_FUNCTION();
    KY_STORE(utils_verbosity_level, level);
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_pointer(const void* pointer, const char* description)
{
    if (pointer == nullptr) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_NULL, "NULL Pointer (%s)\n",
            description != nullptr ? description : "no pointer description");
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_check_verbosity_level(uint32_t level)
{
    return CHECK_RANGE(
        int64_t{level}, KY_LOG_LEVEL_MIN, KY_LOG_LEVEL_MAX,
        "Verbosity level (%" PRId64 ") is out of range : [%u .. %u]\n");
}

ky_status_t utils_check_array_length(uint32_t length, const char* description)
{
    return CHECK_NOT_ZERO(length, "Zero length", description);
}

ky_status_t utils_check_array_size(uint32_t size, const char* description)
{
    return CHECK_NOT_ZERO(size, "Zero size", description);
}

ky_status_t utils_check_mc_id(uint16_t mc_id)
{
    const uint32_t id = zero_extended(mc_id);
    return CHECK_RANGE(id, 1U, 65535U, "Multicast ID (%u) exceeds range [%u..%u]\n");
}

ky_status_t utils_check_mstp_inst_id(uint16_t mstp_inst_id)
{
    const uint32_t id = zero_extended(mstp_inst_id);
    return CHECK_RANGE(id, 0U, 1024U, "MSTP Instance ID (%u) exceeds range [%u..%u]\n");
}

ky_status_t utils_check_mstp_inst_port_state(uint32_t port_state)
{
    return CHECK_RANGE(
        port_state, KY_MSTP_INST_PORT_STATE_DISCARDING, KY_MSTP_INST_PORT_STATE_FORWARDING,
        "MSTP Instance Port-State (# %u) exceeds range [%u..%u]\n");
}

ky_status_t utils_check_swid(uint8_t swid)
{
    const uint32_t id = zero_extended(swid);
    return id == 254 // beyond the range, and accepted
               ? KY_STATUS_SUCCESS
               : CHECK_RANGE(id, 0U, 7U, "Switch ID (%u) exceeds range [%u..%u]\n");
}

ky_status_t utils_check_port_admin_state(int32_t admin_state)
{
    return CHECK_RANGE(
        admin_state, KY_PORT_ADMIN_STATE_UP, KY_PORT_ADMIN_STATE_DOWN,
        "Port Administrative State (# %u) exceeds range [%u..%u]\n");
}

ky_status_t utils_check_device_id(uint8_t device_id)
{
    const uint32_t id = zero_extended(device_id);
    return CHECK_RANGE(id, 1U, 253U, "Device ID (%u) exceeds range [%u..%u]\n");
}

ky_status_t utils_check_device_node_type(int32_t node_type)
{
    return CHECK_RANGE(
        node_type, KY_DEV_NODE_TYPE_ALL, KY_DEV_NODE_TYPE_HYBRID,
        "Device Topology Type # (%u) exceeds range [%u..%u]\n");
}

ky_status_t utils_check_msg_size(uint32_t size, uint32_t limit)
{
    if (size == 0) {
        return KY_FAIL(KY_STATUS_MESSAGE_SIZE_ZERO, "Message size (%ub) is zero\n", size);
    }
    if (size > limit) {
        return KY_FAIL(
            KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT, "Message size (%ub) exceeds limit (%ub)\n", size,
            limit);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_use_xm_set(uint32_t use_xm)
{
    KY_TRACE_FUNCTION();
    KY_STORE(utils_use_xm, use_xm);
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_use_xm_get(uint32_t* use_xm_p)
{
    KY_TRACE_FUNCTION();
    const ky_status_t status = utils_check_pointer(use_xm_p, "use_xm_p");
    if (status == KY_STATUS_SUCCESS) {
        *use_xm_p = KY_LOAD(utils_use_xm);
    }
    return status;
}

ky_status_t utils_boot_mode_set(uint32_t boot_mode)
{
    KY_TRACE_FUNCTION();
    if (boot_mode > KY_BOOT_MODE_ISSU_START) {
        return KY_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE,
            "Failed to set issu mode, parameter boot_mode (%u) is exceed range. Max value (%u)\n",
            boot_mode, KY_BOOT_MODE_ISSU_START);
    }
    KY_STORE(utils_boot_mode, boot_mode);
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_boot_mode_get(uint32_t* boot_mode_p)
{
    const ky_status_t status = utils_check_pointer(boot_mode_p, "boot_mode_p");
    if (status != KY_STATUS_SUCCESS) {
        return KY_FAIL(status, "failed to get issu mode, parameter boot_mode_p is NULL\n");
    }
    *boot_mode_p = KY_LOAD(utils_boot_mode);
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_memory_get(void** buffer_pp, uint32_t size, uint32_t mem_type)
{
    if (!is_mem_type(mem_type)) {
        return utils_ky_log_exit(KY_STATUS_PARAM_EXCEEDS_RANGE, __func__);
    }
    if (buffer_pp == nullptr) { // tested here to spare a valid pointer the call
        utils_check_pointer(buffer_pp, "Buffer pointer");
        return utils_ky_log_exit(KY_STATUS_PARAM_NULL, __func__);
    }
    void* block = allocate(size);
    if (block == nullptr) {
        *buffer_pp = nullptr;
        return utils_ky_log_exit(KY_STATUS_NO_MEMORY, __func__);
    }
    memcpy(block, &size, sizeof(MemHeader));
    account(mem_type, size);
    *buffer_pp = static_cast<char*>(block) + sizeof(MemHeader);
    KY_LOG_DEBUG(
        "Allocated %u bytes for memory type %s; Total memory for this type = %" PRIu64 ";\n", size,
        utils_mem_type_name.name_of(mem_type), KY_LOAD(utils_mem_type_count[mem_type]));
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_clr_memory_get(void** buffer_pp, uint32_t count, uint32_t size, uint32_t mem_type)
{
    uint32_t bytes = 0;
    const bool overflows = __builtin_mul_overflow(count, size, &bytes);
    if (overflows && is_mem_type(mem_type) && buffer_pp != nullptr) {
        return UTILS_FAIL(
            KY_STATUS_PARAM_EXCEEDS_RANGE, "Memory of %u elements of %u bytes exceeds range\n",
            count, size);
    }
    if (const ky_status_t status = utils_memory_get(buffer_pp, bytes, mem_type);
        status != KY_STATUS_SUCCESS) {
        return utils_ky_log_exit(status, __func__);
    }
    memset(*buffer_pp, 0, bytes);
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_memory_put(void* buffer_p, uint32_t mem_type)
{
    if (!is_mem_type(mem_type)) {
        return utils_ky_log_exit(KY_STATUS_PARAM_EXCEEDS_RANGE, __func__);
    }
    if (buffer_p == nullptr) { // tested here, as in utils_memory_get
        utils_check_pointer(buffer_p, "Buffer pointer");
        return utils_ky_log_exit(KY_STATUS_PARAM_NULL, __func__);
    }
    void* block = static_cast<char*>(buffer_p) - sizeof(MemHeader);
    MemHeader size = 0;
    memcpy(&size, block, sizeof(MemHeader));
    if (!unaccount(mem_type, size)) {
        return UTILS_FAIL(
            KY_STATUS_MEMORY_ERROR, "Block size exceeds total size for memory type %s\n",
            utils_mem_type_name.name_of(mem_type));
    }
    cl_free(block);
    KY_LOG_DEBUG(
        "Freed %u bytes for memory type %s; Total memory for this type = %" PRIu64 ";\n", size,
        utils_mem_type_name.name_of(mem_type), KY_LOAD(utils_mem_type_count[mem_type]));
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_memory_print_summary(uint32_t mem_type)
{
    KY_LOG_DEBUG("====== MEMORY REPORT ======\n");
    if (mem_type > MEM_TYPE_MAX) {
        return utils_ky_log_exit(KY_STATUS_PARAM_EXCEEDS_RANGE, __func__);
    }
    const uint32_t first = mem_type == KY_MEM_TYPE_ALL ? MEM_TYPE_MIN : mem_type;
    const uint32_t last = mem_type == KY_MEM_TYPE_ALL ? MEM_TYPE_MAX : mem_type;
    for (uint32_t type = first; type <= last; type++) {
        KY_LOG_DEBUG(
            "Allocated %" PRIu64 " bytes for memory type %s\n", KY_LOAD(utils_mem_type_count[type]),
            utils_mem_type_name.name_of(type));
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_memory_dbg_dump(FILE* stream)
{
    uint32_t type = 0;
    uint64_t count = 0;
    dbg_utils_column_t columns[] = {
        {"index", 9, DBG_UTILS_KIND_UINT32, &type},
        {"name", 20, DBG_UTILS_KIND_STRING, nullptr},
        {"mem_cnt", 20, DBG_UTILS_KIND_UINT64, &count},
        {nullptr, 0, DBG_UTILS_KIND_END, nullptr},
    };
    dbg_utils_print_module_header(stream, "Utils memory dump");
    dbg_utils_print_table_headline(stream, columns);
    for (type = MEM_TYPE_MIN; type <= MEM_TYPE_MAX; type++) {
        columns[1].value = utils_mem_type_name.name_of(type);
        count = KY_LOAD(utils_mem_type_count[type]);
        dbg_utils_print_table_data_line(stream, columns);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_qpool_init(
    cl_qpool_t* pool_p, uint32_t min_count, uint32_t max_count, uint32_t grow_count,
    uint32_t object_size, const char* db_name)
{
    return init_db(
        __func__, pool_p, nullptr, min_count, max_count, grow_count, object_size, db_name);
}

ky_status_t utils_qpool_qmap_init(
    cl_qpool_t* pool_p, cl_qmap_t* map_p, uint32_t min_count, uint32_t max_count,
    uint32_t grow_count, uint32_t object_size, const char* db_name)
{
    return init_db(__func__, pool_p, map_p, min_count, max_count, grow_count, object_size, db_name);
}

ky_status_t utils_qpool_get(cl_pool_item_t** item_pp, cl_qpool_t* pool_p)
{
    *item_pp = cl_qpool_get(pool_p);
    return *item_pp == nullptr ? KY_STATUS_NO_RESOURCES : KY_STATUS_SUCCESS;
}

ky_status_t utils_qmap_key_exists(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp)
{
    return find(map_p, key, item_pp) ? KY_STATUS_SUCCESS : KY_STATUS_ENTRY_NOT_FOUND;
}

ky_status_t utils_qmap_key_not_exists(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp)
{
    return find(map_p, key, item_pp) ? KY_STATUS_ENTRY_ALREADY_EXISTS : KY_STATUS_SUCCESS;
}

ky_status_t utils_qmap_is_empty(const cl_qmap_t* map_p)
{
    const bool is_empty = cl_is_qmap_empty(map_p) != 0;
    KY_TRACE_EXIT();
    return is_empty ? KY_STATUS_SUCCESS : KY_STATUS_DB_NOT_EMPTY;
}

ky_status_t utils_qmap_get(const cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp)
{
    *item_pp = cl_qmap_get(map_p, key);
    return *item_pp == cl_qmap_end(map_p) ? KY_STATUS_ENTRY_NOT_FOUND : KY_STATUS_SUCCESS;
}

ky_status_t utils_qmap_remove(cl_qmap_t* map_p, uint64_t key, cl_map_item_t** item_pp)
{
    *item_pp = cl_qmap_remove(map_p, key);
    return *item_pp == cl_qmap_end(map_p) ? KY_STATUS_ENTRY_NOT_FOUND : KY_STATUS_SUCCESS;
}
