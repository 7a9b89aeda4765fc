/* The rules of every function, checked at every call.
 *
 * A test is a row: a call, its status, its log records and its out parameters. `expect` makes the
 * call at five verbosities, with the trace flag clear and set, and checks each time: the same
 * status; exactly the records that pass the filter, in order, with the traces of the function; a
 * failure returned through utils_ky_log_exit where the records say so; out parameters written only
 * where the row states it; no lock held during a record, an allocation or at return. Finally the
 * state is what it was before the calls. */
#ifndef CONTRACT_H
#define CONTRACT_H

#include "recorder.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

/* ---- Out parameters ---- */

/* What an out parameter must hold after a call: these bytes; if empty, anything but garbage. */
struct Written {
    const void* out;
    std::string bytes;
};

/* An out parameter between guard bytes. `expect` fills all that exist with garbage before each
 * call, and checks them all after it. */
class AnyOut {
  public:
    explicit AnyOut(size_t size);
    AnyOut(const AnyOut&) = delete;
    AnyOut& operator=(const AnyOut&) = delete;
    ~AnyOut();
    void fill();
    void check(const std::vector<Written>& writes) const;

    static inline std::vector<AnyOut*> all;

  protected:
    static constexpr size_t GUARD = 16;
    std::vector<char> bytes_;
};

/* An argument of a call, as a pointer to T. */
template <typename T> class Out : public AnyOut {
  public:
    Out() : AnyOut(sizeof(T)) {} // NOLINT(bugprone-sizeof-expression): any T
    operator T*() // NOLINT(google-explicit-constructor): so that a row reads like a call
    {
        return reinterpret_cast<T*>(&bytes_[GUARD]);
    }
    const T& get()
    {
        return **this;
    }
    Written is(const T& value) const
    {
        return {this, {reinterpret_cast<const char*>(&value), sizeof value}}; // NOLINT: any T
    }
    Written is_written() const
    {
        return {this, {}};
    }
};

/* ---- The rows ---- */

struct Row {
    std::string label; // the text of the call, which starts with the function's name
    std::function<uint32_t()> call;
    uint32_t status = KY_STATUS_SUCCESS;
    Log log = {}; // without the function's own traces, which its module states
    std::vector<Written> writes = {};
    long allocations = -1;             // that succeed; -1: all
    std::function<void()> before = {}; // runs before each call
    std::function<void()> after = {};  // runs after it, to check and undo its effect
};

#define CALL(...) CALL_AS_EXPANDED(__VA_ARGS__)
#define CALL_AS_EXPANDED(...) .label = #__VA_ARGS__, .call = [&] { return __VA_ARGS__; }

/* The traces that a function writes by itself. */
enum class Traces { none, entry, exit, both, of_failure };

/* A log module, and the traces of its functions. */
struct Module {
    const char* name;
    const char* source;
    Traces traces; // of each function but these:
    std::map<std::string, Traces> others = {};
};

/* Registers that a row calls a function, which every exported one needs; `expect` does it. */
void has_a_row(const std::string& function);

/* Boundary values of a range: around its ends, and where a narrower or a signed type would wrap
 * into it. */
std::set<uint32_t> boundary_values(uint32_t min, uint32_t max);

/* All access commands, and invalid ones, also where a narrower type would wrap. */
std::vector<ky_access_cmd_t> commands();

/* The name of an event, as messages have it. */
std::string event_name(uint32_t event);

/* Every test starts with the initial verbosity and settings, and without traces. */
class ContractTest : public testing::Test {
  protected:
    explicit ContractTest(const Module& module) : module_(module) {}
    void SetUp() override;
    void expect(const Row& row);
    void expect(const std::vector<Row>& rows);

    /* The state that a failed call must not change. A test adds the state of its own fixture. */
    virtual std::string state();

    uint32_t verbosity = 0; // of the current call

  private:
    const Module& module_;
};

#endif
