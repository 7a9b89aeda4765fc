/* What tests of every kind use: random numbers, threads, streams. */
#ifndef TOOLS_H
#define TOOLS_H

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <thread>
#include <vector>

/* Random numbers. Their seed is printed at the start, and --gtest_random_seed gives it back. */
class Random {
  public:
    Random()
    {
        printf("--gtest_random_seed=%u\n", seed_);
        fflush(stdout); // whatever happens next
    }
    uint64_t any()
    {
        return engine_();
    }
    uint32_t below(size_t end)
    {
        return static_cast<uint32_t>(any() % end);
    }

  private:
    const uint32_t given_ = static_cast<uint32_t>(GTEST_FLAG_GET(random_seed));
    const uint32_t seed_ = given_ != 0 ? given_ : std::random_device()() % 99999 + 1;
    std::mt19937_64 engine_{seed_};
};

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
