/* What the models share: an input that says what to do, a logging library that counts errors, and
 * promises that must hold. A broken one ends the program. */
#ifndef FUZZ_H
#define FUZZ_H

#include <ky_utils.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>

/* Bytes that are read as decisions; a spent input decides on zeros and first choices. */
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
        if (size > 0) { // what is spent may be null
            memcpy(&value, data_, size);
        }
        data_ += size;
        left_ -= size;
        return value;
    }
    uint32_t below(size_t end) // of 65,536 at most
    {
        return end <= 256 ? any<uint8_t>() % static_cast<uint32_t>(end)
                          : any<uint16_t>() % static_cast<uint32_t>(end);
    }
    bool once_in(size_t times)
    {
        return below(times) == times - 1; // never of a spent input
    }
    template <typename T> T one_of(std::initializer_list<T> choices)
    {
        return choices.begin()[below(choices.size())];
    }

  private:
    const uint8_t* data_;
    size_t left_;
};

/* Ends the program if something that must hold does not. */
#define REQUIRE(condition) ((condition) ? (void)0 : broken(__FILE__, __LINE__, #condition))
[[noreturn]] void broken(const char* file, int line, const char* condition);

/* Error records since the last call. */
uint32_t take_errors();

/* Turns traces on or off, and sets the verbosity of the models' modules; returns it. */
uint32_t choose_verbosity(Input& input);

/* What one input does to the library, beside a model of it. */
void run(Input& input);

#endif
