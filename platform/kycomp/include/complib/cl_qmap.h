/* The quick map: an intrusive ordered map from 64-bit keys to items inside the caller's records.
 *
 * It allocates nothing: an insert cannot fail for lack of memory, and a map needs no destruction.
 * Get, insert and remove take O(log n), all else O(1). Maps are not thread-safe: threads that share
 * one must serialise their calls.
 *
 * The functions report a map that is not initialised as the inline accessors do. To get and remove
 * it is empty; insert initialises it. */
#ifndef COMPLIB_CL_QMAP_H
#define COMPLIB_CL_QMAP_H

#include "cl_assert.h"

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The member that links a record into a map, one map at a time. All members are private. Those
 *  that a lookup reads come first. */
typedef struct cl_map_item {
    struct cl_map_item* child[2]; /**< lower and higher keys; the end item for none */
    uint64_t key;
    struct cl_map_item* parent; /**< the end item for the root */
    struct cl_map_item* next;   /**< next key; the end item for none */
    struct cl_map_item* prev;
    int balance; /**< height of child[1] minus height of child[0]: -1, 0 or 1 */
} cl_map_item_t;

/** A map. Do not move or copy one: its items point to it. */
typedef struct cl_qmap {
    cl_map_item_t end; /**< the root is its child[0], the lowest item its next */
    size_t count;
    uint32_t state;
} cl_qmap_t;

/** Initialises an empty map. */
void cl_qmap_init(cl_qmap_t* map);

/** Looks up a key.
 *
 *  @return  its item, or the end item if the key is absent
 */
cl_map_item_t* cl_qmap_get(const cl_qmap_t* map, uint64_t key);

/** Inserts an item under a key.
 *
 *  @param item  an item that is in no map; need not be initialised
 *  @return      item; or the item that already has the key, and the map is unchanged
 */
cl_map_item_t* cl_qmap_insert(cl_qmap_t* map, uint64_t key, cl_map_item_t* item);

/** Removes the item of a key.
 *
 *  @return  the item, which the caller owns again, or the end item if the key is absent
 */
cl_map_item_t* cl_qmap_remove(cl_qmap_t* map, uint64_t key);

/** Removes an item, which must be in this map. The map does not access the item
 *  afterwards. */
void cl_qmap_remove_item(cl_qmap_t* map, cl_map_item_t* item);

// NOLINTBEGIN(clang-analyzer-core.NullDereference): a failed assertion reports and continues

/** The end item, which means "none". It has no key and no record. */
static inline cl_map_item_t* cl_qmap_end(const cl_qmap_t* map)
{
    CL_ASSERT(map != NULL, "complib/cl_qmap.h");
    CL_ASSERT(map->state == CL_INITIALIZED, "complib/cl_qmap.h");
#ifdef __cplusplus
    return const_cast<cl_map_item_t*>(&map->end);
#else
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the only C cast from const without a warning
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

/** Whether a map has no items: 1 yes, 0 no. */
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
