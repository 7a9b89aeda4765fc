/* Memory from the component library, whose own objects take theirs here too, by these symbols. */
#ifndef COMPLIB_CL_MEMORY_H
#define COMPLIB_CL_MEMORY_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Allocates memory, aligned for any type, not cleared.
 *
 *  @param size  in bytes
 *  @return      the memory, or null if there is none
 */
void* cl_malloc(size_t size);

/** Gives memory back that cl_malloc handed out; null is nothing to give. */
void cl_free(void* memory);

#ifdef __cplusplus
}
#endif

#endif
