/* The floors: the least code that does what an operation of the library must, in a shared library
 * like the operation itself. */
#ifndef FLOOR_H
#define FLOOR_H

#include <complib/cl_qmap.h>
#include <complib/cl_qpool.h>
#include <ky_adviser.h>
#include <ky_router_utils_validate.h>

/* A name: a comparison and a load. */
KY_EXPORT const char* floor_name(uint32_t value);

/* A setting stored between two loads of the trace flag. */
KY_EXPORT ky_status_t floor_traced(uint32_t value);

/* A device ID: a comparison. */
KY_EXPORT ky_status_t floor_check(uint8_t device_id);

/* A port type: a table and a bit test. */
KY_EXPORT uint32_t floor_port_type(uint32_t enum_id, uint32_t log_port);

/* Whether a multicast key, and a route that is added, are valid; without messages. */
KY_EXPORT int floor_route_key(const ky_mc_route_key_t* key);
KY_EXPORT int floor_route(
    const ky_mc_route_key_t* key, const ky_mc_route_attr_t* attr, const ky_mc_route_data_t* data);

/* The platform calls that memory accounting needs, and its additions. */
KY_EXPORT void* floor_memory_get(uint32_t size, uint32_t mem_type);
KY_EXPORT void floor_memory_put(void* block, uint32_t mem_type);

/* The component library's own pool, without a status. */
KY_EXPORT cl_pool_item_t* floor_pool_get(cl_qpool_t* pool);

/* Calls the advisors of a map, reading each successor first, until one fails. Callbacks must not
 * change the map. */
struct FloorAdvisor {
    cl_map_item_t map_item;
    adviser_cb_t callback;
};
KY_EXPORT ky_status_t floor_event(cl_qmap_t* map, adviser_event_t event, void* event_data);

#endif
