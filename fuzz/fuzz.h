/* Common to the models: an input that drives them, a logging library that counts errors, and
 * assertions. */
#ifndef FUZZ_H
#define FUZZ_H

#include <ky_utils.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>

/* A sequence of bytes read as decisions; a spent input yields zeros and first choices. */
class Input {
  public:
    Input(const uint8_t* data, size_t size) : data_(data), left_(size) {}

    bool is_spent() const
    {
        return left_ == 0;
    }
    template <typename T> T any()
    {
        T value = 0;
        const size_t size = left_ < sizeof value ? left_ : sizeof value;
        if (size > 0) { // a spent input's pointer may be null
            memcpy(&value, data_, size);
        }
        data_ += size;
        left_ -= size;
        return value;
    }
    uint32_t below(size_t end) // at most 65,536
    {
        return end <= 256 ? any<uint8_t>() % static_cast<uint32_t>(end)
                          : any<uint16_t>() % static_cast<uint32_t>(end);
    }
    bool once_in(size_t times)
    {
        return below(times) == times - 1; // never for a spent input
    }
    template <typename T> T one_of(std::initializer_list<T> choices)
    {
        return choices.begin()[below(choices.size())];
    }

  private:
    const uint8_t* data_;
    size_t left_;
};

/* Aborts the program if a condition is false. */
#define REQUIRE(condition) ((condition) ? (void)0 : broken(__FILE__, __LINE__, #condition))
[[noreturn]] void broken(const char* file, int line, const char* condition);

/* The number of error records since the last call. */
uint32_t take_errors();

/* Turns traces on or off, and sets the verbosity of the models' modules; returns it. */
uint32_t choose_verbosity(Input& input);

/* Runs one input through the library and a model. */
void run(Input& input);

#endif
