/* The quick pool: objects of one size, which it creates several at a time and keeps until its end.
 *
 * Pools have no lock: threads that share one take turns. In a process with AddressSanitizer, code
 * that is built with it is reported if it touches an object that lies in its pool, whoever put it
 * there. */
#ifndef COMPLIB_CL_QPOOL_H
#define COMPLIB_CL_QPOOL_H

#include "cl_assert.h"
#include "cl_qcomppool.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Makes a pool.
 *
 *  @param min_count    objects to create at once
 *  @param max_count    the most objects there can be, min_count or more; 0 for no limit
 *  @param grow_count   objects to create when a get finds none, as far as max_count admits;
 *                      0 for a pool that does not grow
 *  @param object_size  in bytes, sizeof(cl_pool_item_t) or more
 *  @param initializer  called for each object created, or null
 *  @param destructor   called for each object at the end, or null
 *  @param context      handed to both
 *  @return             0; or not, and pool is untouched, if memory is short, a count or the size is
 *                      out of its range, or the initializer fails
 */
int cl_qpool_init(
    cl_qpool_t* pool, size_t min_count, size_t max_count, size_t grow_count, size_t object_size,
    cl_pool_initializer_t initializer, cl_pool_destructor_t destructor, const void* context);

// NOLINTBEGIN(clang-analyzer-core.NullDereference): a failed assertion is a report and stops nothing

/** Whether a pool is initialised: 1 for yes, 0 for no. */
static inline int cl_qpool_is_initialized(const cl_qpool_t* pool)
{
    return pool->state == CL_INITIALIZED || pool->state == CL_POISONING;
}

/** Takes an object from a pool.
 *
 *  @return  the object, aligned for any type, its content undefined but for what the initializer and
 *           earlier users left behind its item; or null if none is free and the pool may not grow,
 *           memory is short or the initializer fails
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

/** Gives an object back to the pool that it was taken from. */
static inline void cl_qpool_put(cl_qpool_t* pool, cl_pool_item_t* item)
{
    CL_ASSERT(pool != NULL, "complib/cl_qpool.h");
    CL_ASSERT(item != NULL, "complib/cl_qpool.h");
    item->next = pool->free_items; // here, so that AddressSanitizer sees a second put
    if (__builtin_expect(pool->state != CL_INITIALIZED, 0)) {
        CL_ASSERT(cl_qpool_is_initialized(pool), "complib/cl_qpool.h");
        if (pool->state == CL_POISONING) {
            pool->chunks->put(pool, item);
            return;
        }
    }
    pool->free_items = item;
}

/** Ends a pool: gives back its memory, objects in use included. It can be initialised again. */
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
