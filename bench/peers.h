/* The alternatives that users, too, would call in a shared library. */
#ifndef PEERS_H
#define PEERS_H

#include <ky_common.h>

#include <boost/outcome.hpp>

/* A device ID. */
KY_EXPORT boost::outcome_v2::result<void> peer_check(uint8_t device_id);

/* A port type, checked by a switch. */
KY_EXPORT uint32_t peer_port_type(uint32_t enum_id, uint32_t log_port);

#endif
