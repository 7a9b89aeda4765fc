/* A lock for the threads of one process. */
#ifndef COMPLIB_CL_SPINLOCK_H
#define COMPLIB_CL_SPINLOCK_H

#include "cl_assert.h"

#include <pthread.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A lock. The static initialiser is {PTHREAD_MUTEX_INITIALIZER, CL_INITIALIZED}. */
typedef struct cl_spinlock {
    pthread_mutex_t mutex;
    uint32_t state; /**< CL_INITIALIZED */
} cl_spinlock_t;

/** Acquires the lock; blocks while another thread holds it. Not recursive. */
void cl_spinlock_acquire(cl_spinlock_t* lock);

/** Releases the lock, which the calling thread must hold. */
void cl_spinlock_release(cl_spinlock_t* lock);

#ifdef __cplusplus
}
#endif

#endif
