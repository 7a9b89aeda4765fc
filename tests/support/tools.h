#ifndef TOOLS_H
#define TOOLS_H

#include <cstdint>
#include <thread>
#include <vector>

/* Runs work(i) in count concurrent threads, i from 0. */
template <typename Work> void in_threads(uint32_t count, const Work& work)
{
    std::vector<std::jthread> threads; // joined at the end
    for (uint32_t i = 0; i < count; i++) {
        threads.emplace_back(work, i);
    }
}

#endif
