#ifndef TOOLS_H
#define TOOLS_H

#include <cstdint>
#include <thread>
#include <vector>

/* Runs a function, told its number, in so many threads at once. */
template <typename Work> void in_threads(uint32_t count, const Work& work)
{
    std::vector<std::thread> threads;
    for (uint32_t i = 0; i < count; i++) {
        threads.emplace_back(work, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

#endif
