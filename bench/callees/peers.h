/* What users would write instead, where they too would call it across the border of a shared
 * library. A peer that was not installed has no definition, and PEER_... is not defined. */
#ifndef PEERS_H
#define PEERS_H

#include <ky_router_utils_validate.h>
#include <stdint.h>

#if PEER_ABSL
#include <absl/status/status.h>
#endif
#if PEER_BOOST
#include <boost/outcome.hpp>
#endif
#include <system_error>

/* Enum names: of 105 values, and of every third of 628. */
KY_EXPORT const char* peer_name_by_switch(uint32_t value);
KY_EXPORT const char* peer_name_by_unordered_map(uint32_t value);
KY_EXPORT const char* peer_sparse_name_by_switch(uint32_t value);
KY_EXPORT const char* peer_sparse_name_by_unordered_map(uint32_t value);
#if PEER_ABSL
KY_EXPORT const char* peer_name_by_flat_hash_map(uint32_t value);
KY_EXPORT const char* peer_sparse_name_by_flat_hash_map(uint32_t value);
#endif

/* Eight statements that are suppressed, between the same additions as the library's. */
KY_EXPORT uint32_t peer_statements_by_syslog(uint32_t a, uint32_t b);
#if PEER_GLOG
KY_EXPORT uint32_t peer_statements_by_glog(uint32_t a, uint32_t b);
#endif
#if PEER_SPDLOG
KY_EXPORT uint32_t peer_statements_by_spdlog(uint32_t a, uint32_t b);
#endif
#if PEER_BOOST_LOG
KY_EXPORT void peer_boost_log_setup();
KY_EXPORT uint32_t peer_statements_by_boost_log(uint32_t a, uint32_t b);
#endif

/* A device ID. */
KY_EXPORT std::error_code peer_check_by_error_code(uint8_t device_id);
#if PEER_ABSL
KY_EXPORT absl::Status peer_check_by_absl_status(uint8_t device_id);
#endif
#if PEER_BOOST
KY_EXPORT boost::outcome_v2::result<void> peer_check_by_outcome(uint8_t device_id);
#endif

/* Memory counted by type with relaxed atomics in the lock's place; nothing is checked. */
KY_EXPORT void* peer_memory_get_without_lock(uint32_t size, uint32_t mem_type);
KY_EXPORT void peer_memory_put_without_lock(void* block, uint32_t mem_type);

#if PEER_BOOST
/* The key of a multicast route, but for groups that stand for any or have a gap in their mask. */
KY_EXPORT bool peer_route_key_by_asio(const ky_mc_route_key_t* key);
#endif

/* A port type, judged by a switch. */
KY_EXPORT uint32_t peer_port_type_by_switch(uint32_t enum_id, uint32_t log_port);

#endif
