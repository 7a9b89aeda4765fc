/* An allocator that counts, fails on demand and returns garbage-filled blocks, a lock that tracks
 * its holder and runs a hook, and maps that unlink a removed item: linked into a test, they
 * interpose the component library's. */
#ifndef ALLOCATION_H
#define ALLOCATION_H

#include <cstddef>
#include <functional>

/* The number of blocks allocated and not freed. */
long live_blocks();

/* The size of the last request in bytes. A block is at most one MiB, even if more was requested. */
size_t last_request();

/* Makes all allocations after the next count fail until it is called again; -1 for none. */
void fail_allocations_after(long count);

/* The number of locks that this thread holds. */
int locks_held();

/* Runs a function once, at the time-th moment from now at which another thread could take the
 * lock: 1 is just before the next acquisition, 2 just after its release, and so on. */
void at_free_lock(int time, std::function<void()> function);

#endif
