/* What the quick pool is made of, and those of its steps that are not inlined. A user of pools
 * includes cl_qpool.h. */
#ifndef COMPLIB_CL_QCOMPPOOL_H
#define COMPLIB_CL_QCOMPPOOL_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** What an object begins with. The pool uses it while the object lies in the pool; after that it
 *  is the caller's, like the rest of the object. */
typedef struct cl_pool_item {
    struct cl_pool_item* next; /**< free object */
} cl_pool_item_t;

/** Called once for each object that a pool creates.
 *
 *  @return  0; anything else undoes the step of growth that the object belongs to
 */
typedef int (*cl_pool_initializer_t)(void* object, const void* context);

/** Called once for each object, in use or not, when its memory is about to be given back. */
typedef void (*cl_pool_destructor_t)(void* object, const void* context);

/** The state of a pool that was initialised in a process with AddressSanitizer. All of its steps are
 *  those that are not inlined, and they poison what is free: so code that was built with
 *  AddressSanitizer and code that was not treat the pool alike. */
#define CL_POISONING 3U

struct cl_qpool;

/** One step of a pool's growth; its objects lie behind it. All members are the pool's own. */
struct cl_pool_chunk {
    struct cl_pool_chunk* next;
    size_t count; /**< of objects */
    /** How a pool that poisons takes an object back. */
    void (*put)(struct cl_qpool* pool, cl_pool_item_t* item);
};

/** A pool. All members are the pool's own. */
typedef struct cl_qpool {
    cl_pool_item_t* free_items;
    uint32_t state; /**< CL_INITIALIZED or CL_POISONING */
    size_t count;   /**< of objects, in use or not */
    size_t max_count;
    size_t grow_count;
    size_t object_size; /**< rounded up, so that one object beside another is aligned */
    struct cl_pool_chunk* chunks;
    cl_pool_initializer_t initializer;
    cl_pool_destructor_t destructor;
    const void* context;
} cl_qpool_t;

/** Takes an object from a pool, which grows if it has none: cl_qpool_get without its short cut and
 *  its assertions. */
cl_pool_item_t* cl_qcpool_get(cl_qpool_t* pool);

/** Gives a pool's memory back: cl_qpool_destroy without its assertions. */
void cl_qcpool_destroy(cl_qpool_t* pool);

#ifdef __cplusplus
}
#endif

#endif
