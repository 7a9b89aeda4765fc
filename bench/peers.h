/* What users would write instead, where they too would call it across the border of a shared library. */
#ifndef PEERS_H
#define PEERS_H

#include <ky_common.h>

#include <boost/outcome.hpp>

/* A device ID. */
KY_EXPORT boost::outcome_v2::result<void> peer_check(uint8_t device_id);

/* A port type, judged by a switch. */
KY_EXPORT uint32_t peer_port_type(uint32_t enum_id, uint32_t log_port);

#endif
