/* An allocator that counts and fails: linked into a test, it stands in front of the component
 * library's. */
#ifndef ALLOCATION_H
#define ALLOCATION_H

#include <cstddef>

/* Blocks allocated and not freed. */
long live_blocks();

/* What was last asked for, in bytes. */
size_t last_request();

/* Lets this many allocations succeed, and then none until it is called again; -1 for all. */
void fail_allocations_after(long count);

#endif
