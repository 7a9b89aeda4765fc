/* The types of the quick pool, and its out-of-line functions. Users of pools include
 * cl_qpool.h. */
#ifndef COMPLIB_CL_QCOMPPOOL_H
#define COMPLIB_CL_QCOMPPOOL_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The start of an object. It belongs to the pool while the object is free, and to the caller, like
 *  the rest of the object, while it is in use. */
typedef struct cl_pool_item {
    struct cl_pool_item* next; /**< next free object */
} cl_pool_item_t;

/** Called once for each object that a pool creates.
 *
 *  @return  0; any other value makes the pool undo the growth that created the object
 */
typedef int (*cl_pool_initializer_t)(void* object, const void* context);

/** Called once for each object, in use or free, before its memory is freed. */
typedef void (*cl_pool_destructor_t)(void* object, const void* context);

/** The state of a pool that poisons its free objects: it is initialised in a process with
 *  AddressSanitizer. */
#define CL_POISONING 3U

struct cl_qpool;

/** The header of one allocation of a pool; objects follow it. All members are private. */
struct cl_pool_chunk {
    struct cl_pool_chunk* next;
    size_t count; /**< number of objects */
    /** The put operation of a poisoning pool. */
    void (*put)(struct cl_qpool* pool, cl_pool_item_t* item);
};

/** A pool. All members are private. */
typedef struct cl_qpool {
    cl_pool_item_t* free_items;
    uint32_t state; /**< CL_INITIALIZED or CL_POISONING */
    size_t count;   /**< number of objects, in use or free */
    size_t max_count;
    size_t grow_count;
    size_t object_size; /**< rounded up, so that every object is aligned */
    struct cl_pool_chunk* chunks;
    cl_pool_initializer_t initializer;
    cl_pool_destructor_t destructor;
    const void* context;
} cl_qpool_t;

/** Gets an object from a pool, which grows if none is free: cl_qpool_get without its fast path and
 *  its assertions. */
cl_pool_item_t* cl_qcpool_get(cl_qpool_t* pool);

/** Frees a pool's memory: cl_qpool_destroy without its assertions. */
void cl_qcpool_destroy(cl_qpool_t* pool);

#ifdef __cplusplus
}
#endif

#endif
