/* A record with a map item, inside an object of a pool. */
#ifndef RECORD_H
#define RECORD_H

#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

struct Record {
    uint64_t payload;
    cl_map_item_t map_item;
};

struct Object {
    cl_pool_item_t pool_item;
    Record record;
};

/* What pool_item_of_record overwrites a record with. */
constexpr int IN_POOL = 0xEE;

/* Null for a record that is back in its pool. */
inline void* record_of_item(cl_map_item_t* item)
{
    const bool is_in_pool = item->key == IN_POOL * uint64_t{0x0101010101010101};
    return is_in_pool ? nullptr : reinterpret_cast<char*>(item) - offsetof(Record, map_item);
}

inline void* record_of_pool_item(cl_pool_item_t* item)
{
    return &reinterpret_cast<Object*>(item)->record;
}

inline cl_map_item_t* item_of_record(void* record)
{
    return &static_cast<Record*>(record)->map_item;
}

/* The record is no longer in use, nor in a map: overwrites it. */
inline cl_pool_item_t* pool_item_of_record(void* record)
{
    memset(record, IN_POOL, sizeof(Record));
    return reinterpret_cast<cl_pool_item_t*>(static_cast<char*>(record) - offsetof(Object, record));
}

#endif
