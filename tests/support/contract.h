/* The rules of every function, checked at every call.
 *
 * A test is a row: a call, its status, its log records and its out parameters. `expect` makes the
 * call at five verbosities, with traces off and on, and checks each time: the same status; exactly
 * the records that pass, in order, with the traces of the function's class; out parameters written
 * only where the row states it; no lock held during a record, an allocation or at return. Finally
 * the state is what it was before the calls. */
#ifndef CONTRACT_H
#define CONTRACT_H

#include <ky_common.h>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <set>
#include <string>
#include <vector>

constexpr ky_status_t GOOD = KY_STATUS_SUCCESS;
constexpr ky_status_t BAD = KY_STATUS_PARAM_ERROR;
constexpr ky_status_t RANGE = KY_STATUS_PARAM_EXCEEDS_RANGE;
constexpr ky_status_t NIL = KY_STATUS_PARAM_NULL;
constexpr ky_status_t MISSING = KY_STATUS_ENTRY_NOT_FOUND;
constexpr ky_status_t PRESENT = KY_STATUS_ENTRY_ALREADY_EXISTS;

/* ---- Log records: this interposes the logging library ---- */

/* A log statement, which is one record in each sink; or, with mask 0, a line of a table. */
struct Statement {
    uint32_t mask;
    std::string function; // that it names; in a row, empty for the enclosing one
    std::string text;
    bool is_trace = false;   // in a row: requires the trace flag, too
    std::string module = {}; // from debug level on with the source; set by passing()
    bool operator==(const Statement&) const = default;
};
using Said = std::vector<Statement>;

Said operator+(Said a, const Said& b);
void PrintTo(const Statement& statement, std::ostream* stream);

/* Runs at each log record, for a sink that does more than write it. */
extern std::function<void()> at_record;

/* The statements since the last call. */
Said take_said();

Said error(const std::string& text, const std::string& function = {});
Said notice(const std::string& text, const std::string& function = {});
Said debug(const std::string& text, const std::string& function = {});
/* An entry trace, the function's statements, and an exit trace. */
Said around(const std::string& function, Said within = {});
/* The exit trace that utils_ky_log_exit writes for a function. */
Said left(const std::string& function);

/* The statements that pass in a module at a verbosity and a flag. */
Said passing(
    Said said, const std::string& module, const std::string& source, uint32_t verbosity,
    int32_t flag);

/* For all modules; logs nothing. */
void set_verbosity_and_flag(uint32_t verbosity, int32_t flag);

__attribute__((format(printf, 1, 2))) std::string text(const char* format, ...);

/* Replaces {u}, {d} (signed) or {x} by a value. */
std::string filled(std::string message, uint32_t value);

/* ---- Out parameters ---- */

/* What an out parameter must hold after a call: these bytes; if empty, anything but garbage. */
struct Written {
    const void* out;
    std::string bytes;
};

/* An out parameter between guard bytes; all are filled with garbage before each call. */
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

template <typename T> class Out : public AnyOut {
  public:
    Out() : AnyOut(sizeof(T)) {} // NOLINT(bugprone-sizeof-expression): any T
    T* operator&()               // so that a row reads like a call
    {
        return reinterpret_cast<T*>(&bytes_[GUARD]);
    }
    const T& get()
    {
        return *operator&();
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
    uint32_t status = GOOD;
    Said says = {}; // without the traces of the function's class
    std::vector<Written> writes = {};
    long allocations = -1;            // that succeed; -1: all
    std::function<void()> given = {}; // runs before each call
    std::function<void()> then = {};  // runs after it, to check and undo its effect
};

#define CALL(...) CALL_AS_EXPANDED(__VA_ARGS__)
#define CALL_AS_EXPANDED(...) .label = #__VA_ARGS__, .call = [&] { return __VA_ARGS__; }

/* Records that a function has a row, which every exported one needs; `expect` calls it. */
void has_a_row(const std::string& function);

/* Boundary values of a range: around its ends, and where a narrower or a signed type would wrap
 * into it. */
std::set<uint32_t> edges(uint32_t min, uint32_t max);

/* All access commands, and invalid ones, also where a narrower type would wrap. */
std::vector<ky_access_cmd_t> commands();

/* Every test starts with the initial verbosity and settings, and without traces. */
class ContractTest : public testing::Test {
  protected:
    void SetUp() override;
    void expect(const Row& row);
    void expect(const std::vector<Row>& rows);

    /* The state that a failed call must not change. A test adds the state of its own fixture. */
    virtual std::string state();

    uint32_t verbosity = 0; // of the current call
};

/* Extends a fingerprint (FNV-1a) by a text and its null: it guards a table without a second copy
 * of it. */
constexpr uint64_t NO_TEXTS = 0xcbf29ce484222325;
uint64_t fingerprint(uint64_t value, const char* text);

#endif
