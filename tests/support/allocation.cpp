#include "allocation.h"

#include <complib/cl_memory.h>
#include <complib/cl_spinlock.h>

#include <atomic>
#include <cstdlib>
#include <utility>

static std::atomic<long> live;
static std::atomic<long> left = -1;
static std::atomic<size_t> last;
static thread_local std::function<void()> intruder;

void* cl_malloc(size_t size)
{
    last = size;
    if (left == 0) {
        return nullptr;
    }
    if (left > 0) {
        left--;
    }
    live++;
    return malloc(size);
}

void cl_free(void* memory)
{
    if (memory != nullptr) {
        live--;
    }
    free(memory);
}

size_t last_request()
{
    return last;
}

long live_blocks()
{
    return live;
}

void fail_allocations_after(long count)
{
    left = count;
}

void before_next_lock(std::function<void()> function)
{
    intruder = std::move(function);
}

void cl_spinlock_acquire(cl_spinlock_t* lock)
{
    if (const auto intrude = std::exchange(intruder, nullptr)) {
        intrude();
    }
    pthread_mutex_lock(&lock->mutex);
}
