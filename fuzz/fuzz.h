/* What the targets share: a logging library that judges what it is given, arguments that must not
 * change, and calls that must keep their word. A broken promise ends the program. */
#ifndef FUZZ_H
#define FUZZ_H

#include <ky_utils.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <memory>

using Input = FuzzedDataProvider;

/* Ends the program if something that must hold does not. */
#define REQUIRE(condition) ((condition) ? (void)0 : broken(__FILE__, __LINE__, #condition))
[[noreturn]] void broken(const char* file, int line, const char* condition);

/* Error records since the last call. */
uint32_t take_errors();

/* Whether each function that has traced its entry has traced its exit. */
bool traces_are_balanced();

/* Turns traces on or off, and sets the verbosity of all modules; returns it. */
uint32_t choose_verbosity(Input& input);

/* Makes a call that fails, if it does, with one of these and one error message. */
ky_status_t checked(
    uint32_t verbosity, std::initializer_list<ky_status_t> failures,
    const std::function<ky_status_t()>& call);

/* An argument that a call must leave as it is, in a block of its very size. */
template <typename T> class Argument {
  public:
    explicit Argument(const T& value, bool is_given = true)
        : value_(value), copy_(is_given ? new T(value) : nullptr)
    {
    }
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    ~Argument()
    {
        REQUIRE(copy_ == nullptr || memcmp(copy_.get(), &value_, sizeof(T)) == 0);
    }
    operator T*() const
    {
        return copy_.get();
    }

  private:
    T value_;
    std::unique_ptr<T> copy_;
};

#endif
