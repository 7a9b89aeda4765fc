/* Callbacks for the adviser, indexed by address order, in which they run. */
#ifndef CALLBACKS_H
#define CALLBACKS_H

#include <ky_adviser.h>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

/* Each of them passes its index to one function. */
template <size_t COUNT, ky_status_t (*CALLED)(size_t place, adviser_event_t, void*)>
class Callbacks {
  public:
    static adviser_cb_t at(size_t place)
    {
        return sorted[place];
    }

  private:
    using All = std::array<adviser_cb_t, COUNT>;

    template <size_t I> static ky_status_t callback(adviser_event_t event, void* data)
    {
        static const auto place =
            std::find(sorted.begin(), sorted.end(), callback<I>) - sorted.begin();
        return CALLED(static_cast<size_t>(place), event, data);
    }
    template <size_t... I> static All sort(std::index_sequence<I...>)
    {
        All all = {callback<I>...};
        std::sort(all.begin(), all.end(), std::less<>());
        return all;
    }
    static inline const All sorted = sort(std::make_index_sequence<COUNT>());
};

#endif
