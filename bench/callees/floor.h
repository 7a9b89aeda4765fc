/* The floors: the least code that does what an operation of the library must, called across the
 * border of a shared library as the library is. */
#ifndef FLOOR_H
#define FLOOR_H

#include <complib/cl_qmap.h>
#include <ky_adviser.h>
#include <ky_router_utils_validate.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Enum names: a comparison and a load. */
KY_EXPORT const char* floor_name_of_105(uint32_t value);
KY_EXPORT const char* floor_name_of_628(uint32_t value);

/* Eight statements, or one, that are suppressed: a load, a comparison and a branch each. */
KY_EXPORT uint32_t floor_statements(uint32_t a, uint32_t b);
KY_EXPORT uint32_t floor_statement(uint32_t a, uint32_t b);

/* A setting stored between two loads of the trace flag. */
KY_EXPORT ky_status_t floor_traced(uint32_t value);

/* A device ID: a comparison. */
KY_EXPORT ky_status_t floor_check(uint8_t device_id);

/* The calls to the platform that accounted memory must make, and the additions. */
KY_EXPORT void* floor_memory_get(uint32_t size, uint32_t mem_type);
KY_EXPORT void floor_memory_put(void* block, uint32_t mem_type);

/* Calls the advisors of a map, each one's successor taken first, until one fails: for callbacks
 * that leave the map alone. */
typedef struct floor_advisor {
    cl_map_item_t map_item;
    adviser_cb_t callback;
} floor_advisor_t;
KY_EXPORT ky_status_t floor_process_event(cl_qmap_t* map, adviser_event_t event, void* event_data);

/* Whether the rules of a multicast route and of its key hold, written out without messages. */
KY_EXPORT int floor_route_key(const ky_mc_route_key_t* key);
KY_EXPORT int floor_route_set(
    ky_access_cmd_t cmd, const ky_mc_route_key_t* key, const ky_mc_route_attr_t* attr,
    const ky_mc_route_data_t* data);

/* A port type: a table and a bit test. */
KY_EXPORT uint32_t floor_port_type(uint32_t enum_id, uint32_t log_port);

#ifdef __cplusplus
}
#endif

#endif
