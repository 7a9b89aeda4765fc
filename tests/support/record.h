/* A record that a pool hands out by its start, and that a map holds by a member. */
#ifndef RECORD_H
#define RECORD_H

#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>

#include <cstddef>
#include <cstdint>

struct Record {
    cl_pool_item_t pool_item;
    uint64_t payload;
    cl_map_item_t map_item;
};

inline void* record_of_item(cl_map_item_t* item)
{
    return reinterpret_cast<char*>(item) - offsetof(Record, map_item);
}

inline void* record_of_pool_item(cl_pool_item_t* item)
{
    return item;
}

inline cl_map_item_t* item_of_record(void* record)
{
    return &static_cast<Record*>(record)->map_item;
}

inline cl_pool_item_t* pool_item_of_record(void* record)
{
    return &static_cast<Record*>(record)->pool_item;
}

#endif
