// Enum value to name.
#include "bench.h"

#include "callees/floor.h"
#include "callees/peers.h"

#include <cstring>
#include <ky_names.h>

#if PEER_GLIB
#include <glib-object.h>
#endif

namespace {

/* So many that no predictor learns their order. */
constexpr size_t LOOK_UPS = 65536;

template <typename Value>
void enter_look_up(
    const char* operation, const char* name, const std::vector<uint32_t>& values,
    const char* (*look_up)(Value))
{
    enter({operation, name, values.size(), [&values, look_up] {
               return Prepared{[&values, look_up] {
                   for (const uint32_t value : values) {
                       benchmark::DoNotOptimize(look_up(static_cast<Value>(value)));
                   }
               }};
           }});
}

#if PEER_GLIB
GEnumClass* make_glib_enum()
{
    static GEnumValue values[106];
    for (int i = 0; i < 105; i++) {
        values[i] = {i, "VALUE", "value"};
    }
    return static_cast<GEnumClass*>(g_type_class_ref(g_enum_register_static("Value", values)));
}

GEnumClass* const glib_enum = make_glib_enum();

const char* glib_name_of(int value)
{
    return g_enum_get_value(glib_enum, value)->value_nick;
}
#endif

} // namespace

void enter_names()
{
    static const auto pair = values_below(2, LOOK_UPS);
    static const auto few = values_below(38, LOOK_UPS);
    static const auto dense = values_below(105, LOOK_UPS);
    static auto sparse = values_below(209, LOOK_UPS);
    for (uint32_t& value : sparse) {
        value *= 3;
    }

    const char* operation = "name, 105 values";
    enter_look_up(operation, "library", dense, ky_status_str);
    enter_look_up(operation, "floor", dense, floor_name_of_105);
    enter_look_up(operation, "strerrordesc_np", dense, strerrordesc_np);
    enter_look_up(operation, "switch", dense, peer_name_by_switch);
    enter_look_up(operation, "std::unordered_map", dense, peer_name_by_unordered_map);
#if PEER_ABSL
    enter_look_up(operation, "absl::flat_hash_map", dense, peer_name_by_flat_hash_map);
#endif
#if PEER_GLIB
    enter_look_up(operation, "g_enum_get_value", dense, glib_name_of);
#endif

    operation = "name, 628 values, a third with names";
    enter_look_up(operation, "library", sparse, ky_host_ifc_trap_id_str);
    enter_look_up(operation, "floor", sparse, floor_name_of_628);
    enter_look_up(operation, "switch", sparse, peer_sparse_name_by_switch);
    enter_look_up(operation, "std::unordered_map", sparse, peer_sparse_name_by_unordered_map);
#if PEER_ABSL
    enter_look_up(operation, "absl::flat_hash_map", sparse, peer_sparse_name_by_flat_hash_map);
#endif

    operation = "name, 2 values";
    enter_look_up(operation, "library", pair, ky_mstp_exclude_port_state_str);
    operation = "name, 38 values";
    enter_look_up(operation, "library", few, ky_access_cmd_str);
}
