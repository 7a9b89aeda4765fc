/* A lock between the threads of a process. */
#ifndef COMPLIB_CL_SPINLOCK_H
#define COMPLIB_CL_SPINLOCK_H

#include "cl_assert.h"

#include <pthread.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A lock of static storage needs no call: {PTHREAD_MUTEX_INITIALIZER, CL_INITIALIZED}. */
typedef struct cl_spinlock {
    pthread_mutex_t mutex;
    uint32_t state; /**< CL_INITIALIZED */
} cl_spinlock_t;

/** Takes the lock; waits while another thread holds it. A thread must not take it twice. */
void cl_spinlock_acquire(cl_spinlock_t* lock);

/** Gives back the lock, which the calling thread must hold. */
void cl_spinlock_release(cl_spinlock_t* lock);

#ifdef __cplusplus
}
#endif

#endif
