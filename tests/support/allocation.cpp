#include "allocation.h"

#include <complib/cl_memory.h>
#include <complib/cl_qmap.h>
#include <complib/cl_spinlock.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <malloc.h>
#include <utility>

static std::atomic<long> live;
static std::atomic<long> left = -1;
static std::atomic<size_t> last;
static thread_local int held;
static thread_local std::function<void()> intruder;
static thread_local int moments_to_intruder;

/* The library makes no callout while it holds a lock. */
static void require_no_lock()
{
    if (held != 0) {
        fputs("memory is allocated or freed under a lock\n", stderr);
        abort();
    }
}

void* cl_malloc(size_t size)
{
    require_no_lock();
    last = size;
    if (left == 0) {
        return nullptr;
    }
    if (left > 0) {
        left--;
    }
    live++;
    const size_t given = std::min<size_t>(size, 1 << 20);
    void* block = malloc(given);
    return memset(block, 0xA5, given);
}

void cl_free(void* memory)
{
    require_no_lock();
    if (memory != nullptr) {
        live--;
        memset(memory, 0xEE, malloc_usable_size(memory));
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

int locks_held()
{
    return held;
}

void at_free_lock(int time, std::function<void()> function)
{
    moments_to_intruder = time;
    intruder = std::move(function);
}

static void lock_is_free()
{
    if (intruder && --moments_to_intruder == 0) {
        std::exchange(intruder, nullptr)();
    }
}

void cl_spinlock_acquire(cl_spinlock_t* lock)
{
    lock_is_free();
    pthread_mutex_lock(&lock->mutex);
    held++;
}

void cl_spinlock_release(cl_spinlock_t* lock)
{
    held--;
    pthread_mutex_unlock(&lock->mutex);
    lock_is_free();
}

void cl_qmap_remove_item(cl_qmap_t* map, cl_map_item_t* item)
{
    static const auto remove_item =
        reinterpret_cast<decltype(&cl_qmap_remove_item)>(dlsym(RTLD_NEXT, "cl_qmap_remove_item"));
    remove_item(map, item);
    item->next = item->prev = nullptr;
}

cl_map_item_t* cl_qmap_remove(cl_qmap_t* map, uint64_t key)
{
    cl_map_item_t* item = cl_qmap_get(map, key);
    if (item != cl_qmap_end(map)) {
        cl_qmap_remove_item(map, item);
    }
    return item;
}
