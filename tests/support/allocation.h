/* An allocator that counts, fails and hands out dirty blocks, and a lock that knows who holds it
 * and that others come before: linked into a test, they stand in front of the component library's. */
#ifndef ALLOCATION_H
#define ALLOCATION_H

#include <cstddef>
#include <functional>

/* Blocks allocated and not freed. */
long live_blocks();

/* What was last asked for, in bytes. A block of more than a MiB is not as large as it should be. */
size_t last_request();

/* Lets this many allocations succeed, and then none until it is called again; -1 for all. */
void fail_allocations_after(long count);

/* Locks that this thread holds. */
int locks_held();

/* Runs a function once, when a lock is about to be taken for this time from now on, 1 for the next:
 * another thread could not come later. */
void before_lock(int time, std::function<void()> function);

#endif
