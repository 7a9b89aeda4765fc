// Database records: allocated from a pool, indexed by a map. Failures log only the exit trace.
#include "ky_utils.h"

ky_status_t utils_db_qmap_item_get(
    uint64_t key, const cl_qmap_t* map_p, utils_map_item_to_record_t record_of_item,
    void** record_pp)
{
    void* unwanted = nullptr;
    void** record = record_pp != nullptr ? record_pp : &unwanted;
    cl_map_item_t* item = cl_qmap_get(map_p, key);
    if (item == cl_qmap_end(map_p)) {
        return utils_ky_log_exit(KY_STATUS_ENTRY_NOT_FOUND, __func__);
    }
    if (record_of_item != nullptr) {
        *record = record_of_item(item);
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_db_qmap_item_ins(uint64_t key, cl_qmap_t* map_p, cl_map_item_t* item_p)
{
    if (cl_qmap_get(map_p, key) != cl_qmap_end(map_p)) {
        return utils_ky_log_exit(KY_STATUS_ENTRY_ALREADY_EXISTS, __func__);
    }
    cl_qmap_insert(map_p, key, item_p);
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_db_qmap_item_add(
    uint64_t key, cl_qmap_t* map_p, cl_qpool_t* pool_p, utils_map_item_to_record_t record_of_item,
    utils_pool_item_to_record_t record_of_pool_item, utils_record_to_map_item_t item_of_record,
    void** record_pp)
{
    void* unwanted = nullptr;
    void** record = record_pp != nullptr ? record_pp : &unwanted;
    cl_map_item_t* present = cl_qmap_get(map_p, key);
    if (present != cl_qmap_end(map_p)) {
        *record = record_of_item(present);
        return utils_ky_log_exit(KY_STATUS_ENTRY_ALREADY_EXISTS, __func__);
    }
    cl_pool_item_t* pool_item = cl_qpool_get(pool_p);
    if (pool_item == nullptr) {
        return utils_ky_log_exit(KY_STATUS_NO_RESOURCES, __func__);
    }
    *record = record_of_pool_item(pool_item);
    cl_qmap_insert(map_p, key, item_of_record(*record));
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_db_qmap_item_del(
    uint64_t key, cl_qmap_t* map_p, cl_qpool_t* pool_p, utils_map_item_to_record_t record_of_item,
    utils_record_to_pool_item_t pool_item_of_record, void** record_pp)
{
    void* unwanted = nullptr;
    void** record = record_pp != nullptr ? record_pp : &unwanted;
    cl_map_item_t* item = cl_qmap_remove(map_p, key);
    if (item == cl_qmap_end(map_p)) {
        return utils_ky_log_exit(KY_STATUS_ENTRY_NOT_FOUND, __func__);
    }
    if (record_of_item != nullptr) {
        *record = record_of_item(item);
        if (pool_item_of_record != nullptr) {
            cl_qpool_put(pool_p, pool_item_of_record(*record));
        }
    }
    return KY_STATUS_SUCCESS;
}

ky_status_t utils_db_qmap_del(
    cl_qmap_t* map_p, cl_qpool_t* pool_p, utils_map_item_to_record_t record_of_item,
    utils_record_to_pool_item_t pool_item_of_record)
{
    while (cl_is_qmap_empty(map_p) == 0) {
        cl_map_item_t* item = cl_qmap_head(map_p);
        cl_qmap_remove_item(map_p, item);
        cl_qpool_put(pool_p, pool_item_of_record(record_of_item(item)));
    }
    return KY_STATUS_SUCCESS;
}
