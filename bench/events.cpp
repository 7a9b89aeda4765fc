// An event with 1 to 255 callbacks.
#include "bench.h"

#include "callees/floor.h"

#include <array>
#include <memory>
#include <utility>
#include <vector>

#if PEER_SIGCXX
#include <sigc++/sigc++.h>
#endif
#if PEER_BOOST
#include <boost/signals2.hpp>
#endif
#if PEER_GLIB
#include <glib-object.h>
#endif

namespace {

constexpr adviser_event_t EVENT = ADVISER_EVENT_PORT_ADDED;
constexpr size_t CALLBACKS_MAX = 255;

/* Each is a function of its own, as those of the SDK's modules are. */
template <size_t I> ky_status_t callback(adviser_event_t, void* event_data)
{
    *static_cast<size_t*>(event_data) += I;
    return KY_STATUS_SUCCESS;
}

template <size_t... I> constexpr auto make_callbacks(std::index_sequence<I...>)
{
    return std::array<adviser_cb_t, sizeof...(I)>{callback<I>...};
}

constexpr auto callbacks = make_callbacks(std::make_index_sequence<CALLBACKS_MAX>());

size_t sum = 0;

/* Enters a way to tell `count` callbacks: set_up connects them, and returns what announces an
 * event. */
template <typename SetUp> void enter_way(const char* name, size_t count, SetUp set_up)
{
    const size_t times = 1 + TIMES / count;
    enter(
        {"event with " + std::to_string(count) + (count == 1 ? " callback" : " callbacks"), name,
         times, [times, count, set_up] {
             return Prepared{[times, announce = set_up(count)] {
                 for (size_t i = 0; i < times; i++) {
                     announce();
                 }
             }};
         }});
}

auto set_up_library(size_t count)
{
    uint32_t level = 0;
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &level);
    adviser_deinit(); // of a run before, if there was one
    adviser_init();
    for (size_t i = 0; i < count; i++) {
        adviser_register_event(KY_ACCESS_CMD_ADD, EVENT, callbacks[i]);
    }
    return [] { benchmark::DoNotOptimize(adviser_process_event(EVENT, &sum)); };
}

auto set_up_floor(size_t count)
{
    struct Advisors {
        cl_qmap_t map;
        std::array<floor_advisor_t, CALLBACKS_MAX> items;
    };
    auto advisors = std::make_shared<Advisors>();
    cl_qmap_init(&advisors->map);
    for (size_t i = 0; i < count; i++) {
        advisors->items[i].callback = callbacks[i];
        cl_qmap_insert(
            &advisors->map, reinterpret_cast<uintptr_t>(callbacks[i]),
            &advisors->items[i].map_item);
    }
    return
        [advisors] { benchmark::DoNotOptimize(floor_process_event(&advisors->map, EVENT, &sum)); };
}

#if PEER_SIGCXX
auto set_up_sigcxx(size_t count)
{
    auto signal = std::make_shared<sigc::signal<ky_status_t(adviser_event_t, void*)>>();
    for (size_t i = 0; i < count; i++) {
        signal->connect(sigc::ptr_fun(callbacks[i]));
    }
    return [signal] { benchmark::DoNotOptimize(signal->emit(EVENT, &sum)); };
}
#endif

#if PEER_BOOST
auto set_up_signals2(size_t count)
{
    // Like the adviser, it need not be safe for threads.
    namespace signals = boost::signals2;
    using Signal = signals::signal_type<
        ky_status_t(adviser_event_t, void*),
        signals::keywords::mutex_type<signals::dummy_mutex>>::type;
    auto signal = std::make_shared<Signal>();
    for (size_t i = 0; i < count; i++) {
        signal->connect(callbacks[i]);
    }
    return [signal] { benchmark::DoNotOptimize((*signal)(EVENT, &sum)); };
}
#endif

#if PEER_GLIB
template <size_t I> void glib_callback(GObject*, guint event, gpointer data, gpointer)
{
    callback<I>(static_cast<adviser_event_t>(event), data);
}

template <size_t... I> constexpr auto make_glib_callbacks(std::index_sequence<I...>)
{
    return std::array<void (*)(GObject*, guint, gpointer, gpointer), sizeof...(I)>{
        glib_callback<I>...};
}

constexpr auto glib_callbacks = make_glib_callbacks(std::make_index_sequence<CALLBACKS_MAX>());

auto set_up_gsignal(size_t count)
{
    static const guint signal = g_signal_new(
        "event", G_TYPE_OBJECT, G_SIGNAL_RUN_LAST, 0, nullptr, nullptr, nullptr, G_TYPE_NONE, 2,
        G_TYPE_UINT, G_TYPE_POINTER);
    std::shared_ptr<void> object(g_object_new(G_TYPE_OBJECT, nullptr), g_object_unref);
    for (size_t i = 0; i < count; i++) {
        g_signal_connect(object.get(), "event", G_CALLBACK(glib_callbacks[i]), nullptr);
    }
    return [object] { g_signal_emit(object.get(), signal, 0, EVENT, &sum); };
}
#endif

} // namespace

void enter_events()
{
    for (const size_t count : {1U, 8U, 64U, 255U}) {
        enter_way("library", count, set_up_library);
        enter_way("floor", count, set_up_floor);
#if PEER_SIGCXX
        enter_way("libsigc++", count, set_up_sigcxx);
#endif
#if PEER_BOOST
        enter_way("Boost.Signals2", count, set_up_signals2);
#endif
#if PEER_GLIB
        enter_way("GSignal", count, set_up_gsignal);
#endif
    }
}
