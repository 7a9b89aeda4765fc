/* What holds for every function, checked at every call.
 *
 * A test is a row: a call, what it returns, what it says and what it hands out. `expect` makes the
 * call at five verbosities, with traces off and on, and demands each time: the same status; the
 * records that pass, in their order, with the traces that the function's class asks for, and no
 * others; out parameters written only where the row says so; no lock held during a record, an
 * allocation or at return. Afterwards the state is what it was before. */
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

/* ---- What a call says: this stands in front of the logging library ---- */

/* A log statement: one record in either sink. Or a line of a table, with mask 0. */
struct Statement {
    uint32_t mask;
    std::string function; // where it stands; in a row, empty for the one around
    std::string text;
    bool is_trace = false;   // in a row: it needs the flag, too
    std::string module = {}; // and from debug level on the source; filled in for a row
    bool operator==(const Statement&) const = default;
};
using Said = std::vector<Statement>;

Said operator+(Said a, const Said& b);
void PrintTo(const Statement& statement, std::ostream* stream);

/* What has been said since the last call. */
Said take_said();

Said error(const std::string& text, const std::string& function = {});
Said notice(const std::string& text, const std::string& function = {});
Said debug(const std::string& text, const std::string& function = {});
/* An entry trace, what the function says, and an exit trace. */
Said around(const std::string& function, Said within = {});
/* What utils_ky_log_exit says of a function. */
Said left(const std::string& function);

/* What passes of it in a module. */
Said passing(
    Said said, const std::string& module, const std::string& source, uint32_t verbosity,
    int32_t flag);

/* Of all modules; says nothing. */
void set_verbosity_and_flag(uint32_t verbosity, int32_t flag);

__attribute__((format(printf, 1, 2))) std::string text(const char* format, ...);

/* A text with a value for {u}, {d} (as a signed one) or {x}. */
std::string filled(std::string message, uint32_t value);

/* ---- What it hands out ---- */

/* What an out parameter must hold after a call: these bytes; if there are none, no rubbish. */
struct Written {
    const void* out;
    std::string bytes;
};

/* The bytes of an out parameter, with guards around it; all are rubbish before each call. */
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
    T* operator&()               // so that a row reads as a call does
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
    std::string label; // the call's text, which names the function
    std::function<uint32_t()> call;
    uint32_t status = GOOD;
    Said says = {}; // between the traces of the function's class
    std::vector<Written> writes = {};
    long allocations = -1;            // that succeed; all
    std::function<void()> given = {}; // run before each call,
    std::function<void()> then = {};  // and after it, to look at what it did and to undo it
};

#define CALL(...) CALL_AS_EXPANDED(__VA_ARGS__)
#define CALL_AS_EXPANDED(...) .label = #__VA_ARGS__, .call = [&] { return __VA_ARGS__; }

/* Every exported function needs one, or the run fails; `expect` calls this. */
void has_a_row(const std::string& function);

/* Numbers inside and outside a range: around its ends, and where a narrower or a signed type would
 * wrap into it. */
std::set<uint32_t> edges(uint32_t min, uint32_t max);

/* All access commands, and some that are none, where a narrower type would wrap. */
std::vector<ky_access_cmd_t> commands();

/* Every test starts with the verbosity and the settings of the load, and without traces. */
class ContractTest : public testing::Test {
  protected:
    void SetUp() override;
    void expect(const Row& row);
    void expect(const std::vector<Row>& rows);

    /* What a call that fails must leave alone. A test adds the state of what it has set up. */
    virtual std::string state();

    uint32_t verbosity = 0; // that the call under way is made at
};

/* A fingerprint (FNV-1a) with one more text and its end: it guards a table that is not worth a
 * second copy. */
constexpr uint64_t NO_TEXTS = 0xcbf29ce484222325;
uint64_t fingerprint(uint64_t value, const char* text);

#endif
