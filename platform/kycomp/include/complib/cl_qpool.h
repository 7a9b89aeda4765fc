/* The quick pool: objects of one size, allocated several at a time and kept until the pool is
 * destroyed.
 *
 * Pools are not thread-safe: threads that share one must serialise their calls. In a process with
 * AddressSanitizer, code built with it that accesses a free object is reported. */
#ifndef COMPLIB_CL_QPOOL_H
#define COMPLIB_CL_QPOOL_H

#include "cl_assert.h"
#include "cl_qcomppool.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Initialises a pool.
 *
 *  @param min_count    objects to create initially
 *  @param max_count    maximum number of objects, min_count or more; 0 for no limit
 *  @param grow_count   objects to create when a get finds none, up to max_count;
 *                      0 for a pool that does not grow
 *  @param object_size  in bytes, sizeof(cl_pool_item_t) or more
 *  @param initializer  called for each object when it is created, or null
 *  @param destructor   called for each object when the pool is destroyed, or null
 *  @param context      passed to both
 *  @return             0; non-zero, and pool is unchanged, if memory is short, a count or the size
 *                      is out of range, or the initializer fails
 */
int cl_qpool_init(
    cl_qpool_t* pool, size_t min_count, size_t max_count, size_t grow_count, size_t object_size,
    cl_pool_initializer_t initializer, cl_pool_destructor_t destructor, const void* context);

// NOLINTBEGIN(clang-analyzer-core.NullDereference): a failed assertion reports and continues

/** Whether a pool is initialised: 1 yes, 0 no. */
static inline int cl_qpool_is_initialized(const cl_qpool_t* pool)
{
    return pool->state == CL_INITIALIZED || pool->state == CL_POISONING;
}

/** Gets an object from a pool.
 *
 *  @return  the object, aligned for any type; after its item it holds what the initializer or its
 *           last user wrote; null if none is free and the pool cannot grow: maximum reached, memory
 *           short, or initializer failed
 */
static inline cl_pool_item_t* cl_qpool_get(cl_qpool_t* pool)
{
    CL_ASSERT(pool != NULL, "complib/cl_qpool.h");
    if (__builtin_expect(pool->state != CL_INITIALIZED, 0)) {
        CL_ASSERT(cl_qpool_is_initialized(pool), "complib/cl_qpool.h");
        return cl_qcpool_get(pool);
    }
    cl_pool_item_t* item = pool->free_items;
    if (item == NULL) {
        return cl_qcpool_get(pool);
    }
    pool->free_items = item->next;
    return item;
}

/** Returns an object to its pool. */
static inline void cl_qpool_put(cl_qpool_t* pool, cl_pool_item_t* item)
{
    CL_ASSERT(pool != NULL, "complib/cl_qpool.h");
    CL_ASSERT(item != NULL, "complib/cl_qpool.h");
    item->next = pool->free_items; // inline, so that AddressSanitizer detects a double put
    if (__builtin_expect(pool->state != CL_INITIALIZED, 0)) {
        CL_ASSERT(cl_qpool_is_initialized(pool), "complib/cl_qpool.h");
        if (pool->state == CL_POISONING) {
            pool->chunks->put(pool, item);
            return;
        }
    }
    pool->free_items = item;
}

/** Destroys a pool and frees its memory, objects in use included. It can be initialised again. */
static inline void cl_qpool_destroy(cl_qpool_t* pool)
{
    CL_ASSERT(pool != NULL, "complib/cl_qpool.h");
    CL_ASSERT(cl_qpool_is_initialized(pool), "complib/cl_qpool.h");
    cl_qcpool_destroy(pool);
}

// NOLINTEND(clang-analyzer-core.NullDereference)

#ifdef __cplusplus
}
#endif

#endif
