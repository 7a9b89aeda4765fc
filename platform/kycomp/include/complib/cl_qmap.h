/* The quick map: an ordered map from 64-bit keys to items that lie inside the caller's records.
 *
 * It allocates nothing: an insert cannot fail, and a map that is no longer used is just left. Get,
 * insert and remove take O(log n) steps, all else is O(1). Maps have no lock: threads that share
 * one take turns. */
#ifndef COMPLIB_CL_QMAP_H
#define COMPLIB_CL_QMAP_H

#include "cl_assert.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** What a record carries to be filed in a map; in one map at a time. All members are the map's own.
 *  What a look-up reads comes first. */
typedef struct cl_map_item {
    struct cl_map_item* child[2]; /**< of lower and of higher keys; the end item for none */
    uint64_t key;
    struct cl_map_item* parent; /**< the end item for the root */
    struct cl_map_item* next;   /**< in order of keys; the end item for none */
    struct cl_map_item* prev;
    int balance; /**< the height of child[1] less that of child[0]: -1, 0 or 1 */
} cl_map_item_t;

/** Do not move or copy one: its items point to it. */
typedef struct cl_qmap {
    cl_map_item_t end; /**< the root is its child[0], the lowest item its next */
    size_t count;
    uint32_t state;
} cl_qmap_t;

/** Makes an empty map. */
void cl_qmap_init(cl_qmap_t* map);

/** Looks a key up.
 *
 *  @return  its item, or the end item if the key is absent
 */
cl_map_item_t* cl_qmap_get(const cl_qmap_t* map, uint64_t key);

/** Files an item under a key.
 *
 *  @param item  an item that is in no map; its content does not matter
 *  @return      item; or the one filed under that key before, and then nothing is changed
 */
cl_map_item_t* cl_qmap_insert(cl_qmap_t* map, uint64_t key, cl_map_item_t* item);

/** Takes the item of a key out of the map.
 *
 *  @return  the item, which is the caller's again, or the end item if the key is absent
 */
cl_map_item_t* cl_qmap_remove(cl_qmap_t* map, uint64_t key);

/** Takes an item, which must be in this map, out of it. From then on the map neither reads nor
 *  writes the item. */
void cl_qmap_remove_item(cl_qmap_t* map, cl_map_item_t* item);

// NOLINTBEGIN(clang-analyzer-core.NullDereference): a failed assertion is a report and stops nothing

/** The item that stands for "none". It carries no key and no record. */
static inline cl_map_item_t* cl_qmap_end(const cl_qmap_t* map)
{
    CL_ASSERT(map != NULL, "complib/cl_qmap.h");
    CL_ASSERT(map->state == CL_INITIALIZED, "complib/cl_qmap.h");
#ifdef __cplusplus
    return const_cast<cl_map_item_t*>(&map->end);
#else
    // NOLINTNEXTLINE(performance-no-int-to-ptr): C has no other cast from const that draws no warning
    return (cl_map_item_t*)(uintptr_t)&map->end;
#endif
}

/** The item of the lowest key, or the end item if the map is empty. */
static inline cl_map_item_t* cl_qmap_head(const cl_qmap_t* map)
{
    CL_ASSERT(map != NULL, "complib/cl_qmap.h");
    CL_ASSERT(map->state == CL_INITIALIZED, "complib/cl_qmap.h");
    return map->end.next;
}

/** The item of the next higher key, or the end item if there is none. */
static inline cl_map_item_t* cl_qmap_next(const cl_map_item_t* item)
{
    CL_ASSERT(item != NULL, "complib/cl_qmap.h");
    return item->next;
}

/** Whether a map has no items: 1 for yes, 0 for no. */
static inline int cl_is_qmap_empty(const cl_qmap_t* map)
{
    CL_ASSERT(map != NULL, "complib/cl_qmap.h");
    CL_ASSERT(map->state == CL_INITIALIZED, "complib/cl_qmap.h");
    return map->count == 0;
}

// NOLINTEND(clang-analyzer-core.NullDereference)

#ifdef __cplusplus
}
#endif

#endif
