#include "allocation.h"

#include <complib/cl_memory.h>

#include <atomic>
#include <cstdlib>

static std::atomic<long> live;
static std::atomic<long> left = -1;
static std::atomic<size_t> last;

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
