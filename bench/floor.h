/* The least code that does what an operation must: what the library is measured against. */
#ifndef FLOOR_H
#define FLOOR_H

#include <complib/cl_qmap.h>
#include <ky_adviser.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct floor_advisor {
    cl_map_item_t map_item;
    adviser_cb_t callback;
} floor_advisor_t;

/* Calls the advisors of a map, each one's successor taken first, until one fails: without traces,
 * and for callbacks that leave the map alone. */
KY_EXPORT ky_status_t floor_process_event(cl_qmap_t* map, adviser_event_t event, void* event_data);

#ifdef __cplusplus
}
#endif

#endif
