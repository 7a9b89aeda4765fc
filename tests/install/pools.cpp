// pools.cpp [FAULT]: gets records from a pool and puts them back, directly and through the library,
// in every combination. FAULT is what AddressSanitizer must report: a write to a record that the
// "program" or the "library" has put back or that was "never" allocated; or a record that is put
// back "twice".
#include "record.h"

#include <ky_utils.h>

#include <string>

static cl_qpool_t pool;
static cl_qmap_t map;

/* Gets a record and inserts it under key 1. */
static Record* get(bool by_library)
{
    void* record = nullptr;
    if (by_library) {
        utils_db_qmap_item_add(
            1, &map, &pool, record_of_item, record_of_pool_item, item_of_record, &record);
    } else {
        record = record_of_pool_item(cl_qpool_get(&pool));
        utils_db_qmap_item_ins(1, &map, item_of_record(record));
    }
    return static_cast<Record*>(record);
}

static void put(bool by_library, Record* record)
{
    utils_db_qmap_item_del(
        1, &map, &pool, record_of_item, by_library ? pool_item_of_record : nullptr, nullptr);
    if (!by_library) {
        cl_qpool_put(&pool, pool_item_of_record(record));
    }
}

int main(int argc, char** argv)
{
    const std::string fault = argc > 1 ? argv[1] : "";
    if (utils_qpool_qmap_init(&pool, &map, 2, 2, 0, sizeof(Object), "RECORDS") != 0) {
        return 1;
    }
    for (int way = 0; way < 4; way++) {
        put(way % 2 == 1, get(way / 2 == 1));
    }
    if (fault == "never") {
        get(false)[1] = {}; // the stand-in's pool allocates upwards
    } else if (fault == "twice") {
        cl_pool_item_t* const item = cl_qpool_get(&pool);
        cl_qpool_put(&pool, item);
        cl_qpool_put(&pool, item);
    } else if (!fault.empty()) {
        Record* const record = get(false);
        put(fault == "library", record);
        record->payload = 1;
    }
    cl_qpool_destroy(&pool);
}
