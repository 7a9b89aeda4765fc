/* What tests of every kind use: threads and streams. */
#ifndef TOOLS_H
#define TOOLS_H

#include <cstdio>
#include <cstdlib>
#include <string>
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

/* What a function prints to a stream. */
template <typename Print> std::string printed(Print print)
{
    char* text = nullptr;
    size_t size = 0;
    FILE* stream = open_memstream(&text, &size);
    print(stream);
    fclose(stream);
    std::string copy = text;
    free(text);
    return copy;
}

#endif
