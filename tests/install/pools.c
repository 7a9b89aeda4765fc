/* pools.c [FAULT]: gets records from a pool and puts them back, directly and through the library,
 * in every combination. FAULT is what AddressSanitizer must report: a write to a record that the
 * "program" or the "library" has put back or that was "never" allocated; or a record that is put
 * back "twice". */
#include <ky_utils.h>

#include <string.h>

typedef struct record {
    cl_pool_item_t pool_item;
    cl_map_item_t map_item;
    char content[40];
} record_t;

static void* record_of_pool_item(cl_pool_item_t* item)
{
    return item;
}

static cl_pool_item_t* pool_item_of(void* record)
{
    return &((record_t*)record)->pool_item;
}

static cl_map_item_t* map_item_of(void* record)
{
    return &((record_t*)record)->map_item;
}

static void* record_of_map_item(cl_map_item_t* item)
{
    return (char*)item - offsetof(record_t, map_item);
}

static cl_qpool_t pool;
static cl_qmap_t map;

/* The two ways to get a record and insert it under key 1. */
static record_t* get(int way)
{
    void* record = NULL;
    if (way == 0) {
        record = record_of_pool_item(cl_qpool_get(&pool));
        utils_db_qmap_item_ins(1, &map, map_item_of(record));
    } else {
        utils_db_qmap_item_add(
            1, &map, &pool, record_of_map_item, record_of_pool_item, map_item_of, &record);
    }
    memset(((record_t*)record)->content, way, sizeof(((record_t*)record)->content));
    return (record_t*)record;
}

/* The two ways to put it back. */
static void put(int way, record_t* record)
{
    utils_db_qmap_item_del(
        1, &map, &pool, record_of_map_item, way == 0 ? NULL : pool_item_of, NULL);
    if (way == 0) {
        cl_qpool_put(&pool, pool_item_of(record));
    }
}

int main(int argc, char** argv)
{
    if (utils_qpool_qmap_init(&pool, &map, 2, 2, 0, sizeof(record_t), "RECORDS") != 0) {
        return 1;
    }
    const char* fault = argc > 1 ? argv[1] : "";
    record_t* record = get(0); // the first of two: the stand-in's pool allocates upwards
    if (strcmp(fault, "never") == 0) {
        record[1].content[0] = 1;
    }
    put(0, record);
    if (strcmp(fault, "twice") == 0) {
        cl_qpool_put(&pool, pool_item_of(record));
    }
    for (int i = 0; i < 4; i++) {
        put(i % 2, get(i / 2));
    }
    record = get(0);
    if (fault[0] != '\0') {
        put(strcmp(fault, "library") == 0 ? 1 : 0, record);
    }
    record->content[0] = 1;
    cl_qpool_destroy(&pool);
    return 0;
}
