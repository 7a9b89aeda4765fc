#include "floor.h"

ky_status_t floor_process_event(cl_qmap_t* map, adviser_event_t event, void* event_data)
{
    cl_map_item_t* const end = cl_qmap_end(map);
    for (cl_map_item_t* item = cl_qmap_head(map); item != end;) {
        auto* advisor = reinterpret_cast<floor_advisor_t*>(item);
        item = cl_qmap_next(item);
        const ky_status_t status = advisor->callback(event, event_data);
        if (status != KY_STATUS_SUCCESS) {
            return status;
        }
    }
    return KY_STATUS_SUCCESS;
}
