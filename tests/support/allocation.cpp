#include "allocation.h"

#include <complib/cl_memory.h>

#include <atomic>
#include <cstdlib>

static std::atomic<long> live;
static std::atomic<long> left = -1;

void* cl_malloc(size_t size)
{
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

long live_blocks()
{
    return live;
}

void fail_allocations_after(long count)
{
    left = count;
}
