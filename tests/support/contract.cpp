#include "contract.h"

#include "allocation.h"

#include <ky_adviser.h>
#include <ky_port_type_validate.h>
#include <ky_router_utils_validate.h>
#include <ky_utils.h>

#include <algorithm>
#include <bit>
#include <cstdarg>
#include <dlfcn.h>
#include <fstream>
#include <mutex>
#include <set>
#include <utility>

namespace {

// ---- The functions and their traces ----

enum class Traces { none, entry, exit, both, exit_by_failure };

struct Module {
    const char* name;
    const char* source;
    Traces traces;
    std::set<std::string> functions;
};

// clang-format off
const Module modules[] = {
    {"UTILS", "utils.cpp", Traces::none,
     {"utils_ky_log_enter", "utils_ky_log_exit", "utils_check_msg_size", "utils_boot_mode_get",
      "utils_memory_dbg_dump", "utils_qpool_get", "utils_qmap_key_exists",
      "utils_qmap_key_not_exists", "utils_qmap_get", "utils_qmap_remove", "utils_db_qmap_del"}},
    {"UTILS", "utils.cpp", Traces::exit, {"utils_qmap_is_empty"}},
    {"UTILS", "utils.cpp", Traces::both,
     {"utils_log_verbosity_level_set", "utils_use_xm_set", "utils_use_xm_get",
      "utils_boot_mode_set"}},
    {"UTILS", "utils.cpp", Traces::exit_by_failure,
     {"utils_check_pointer", "utils_check_verbosity_level", "utils_check_array_length",
      "utils_check_array_size", "utils_check_mc_id", "utils_check_mstp_inst_id",
      "utils_check_mstp_inst_port_state", "utils_check_swid", "utils_check_port_admin_state",
      "utils_check_device_id", "utils_check_device_node_type", "utils_memory_get",
      "utils_clr_memory_get", "utils_memory_put", "utils_memory_print_summary", "utils_qpool_init",
      "utils_qpool_qmap_init", "utils_db_qmap_item_get", "utils_db_qmap_item_ins",
      "utils_db_qmap_item_add", "utils_db_qmap_item_del"}},
    {"ADVISER", "ky_adviser.cpp", Traces::both,
     {"adviser_init", "adviser_deinit", "adviser_register_event", "adviser_process_event"}},
    {"ADVISER", "ky_adviser.cpp", Traces::entry, {"adviser_log_verbosity_level"}},
    {"PORT_TYPE_VALIDATE", "port_type_validate.cpp", Traces::both,
     {"is_port_type_valid", "port_type_validate_log_verbosity_level_set"}},
    {"KY_API_ROUTER", "ky_router_utils_validate.cpp", Traces::none,
     {"ky_router_utils_log_verbosity_set"}},
    {"KY_API_ROUTER", "ky_router_utils_validate.cpp", Traces::both,
     {"ky_router_utils_validate_mc_route_set", "ky_router_utils_validate_mc_route_get",
      "ky_router_utils_validate_mc_egress_rif_set", "ky_router_utils_validate_mc_egress_rif_get",
      "ky_router_utils_validate_mc_route_activity_get",
      "ky_router_utils_validate_mc_route_counter_bind_set",
      "ky_router_utils_validate_mc_route_counter_bind_get",
      "ky_router_utils_validate_mc_rpf_group_set", "ky_router_utils_validate_mc_rpf_group_get"}},
};
// clang-format on

/* Functions that a row has called, and exports that are no functions. */
std::set<std::string> have_rows = {"utils_mem_type_count_lock", "port_type_validation_table", "*"};

#ifdef SOURCE // in the program that has the rows
/* Checks at the end, unless tests were selected, that a row has called every export. */
class EveryFunctionHasARow : public testing::Environment {
    void TearDown() override
    {
        const std::string filter = GTEST_FLAG_GET(filter);
        std::ifstream map(SOURCE "/abi/kriolilglu.map");
        EXPECT_TRUE(map.is_open());
        for (std::string line; std::getline(map, line) && (filter == "*" || filter[0] == '-');) {
            const bool is_name = line.starts_with("    ") && line.ends_with(";");
            const std::string name = is_name ? line.substr(4, line.size() - 5) : "*";
            EXPECT_EQ(have_rows.count(name), 1U) << "no row calls the exported " << name;
        }
    }
};

const auto* const at_end = testing::AddGlobalTestEnvironment(new EveryFunctionHasARow);
#endif

// ---- Log records ----

std::mutex lock;
Said all_said;
thread_local Statement logged; // by ky_log, not yet by the trace buffer
thread_local int line_logged;  // 0 without a prefix

void say(const Statement& statement)
{
    EXPECT_EQ(locks_held(), 0) << statement.text;
    if (at_record) {
        at_record();
    }
    const std::lock_guard guard(lock);
    all_said.push_back(statement);
}

__attribute__((format(printf, 1, 0))) std::string formatted(const char* format, va_list arguments)
{
    char buffer[1024];
    vsnprintf(buffer, sizeof buffer, format, arguments);
    return buffer;
}

bool skip(const char*& format, const std::string& prefix)
{
    const bool is_there = std::string_view(format).starts_with(prefix);
    format += is_there ? prefix.size() : 0;
    return is_there;
}

} // namespace

std::function<void()> at_record;

int ky_log(uint32_t severity_mask, const char* module, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    EXPECT_EQ(logged.text, "") << "did not reach the trace buffer";
    logged = {severity_mask, "", "", false, module};
    line_logged = 0;
    if (skip(format, "%s[%d]- %s: ")) {
        logged.module += std::string(" ") + va_arg(arguments, const char*);
        line_logged = va_arg(arguments, int);
        logged.function = va_arg(arguments, const char*);
    }
    logged.text = formatted(format, arguments);
    va_end(arguments);
    return -1; // callers must ignore it
}

int ky_trace_cbuff_log(const char* format, ...)
{
    static const char* const levels[] = {"NONE   ", "ERROR  ", "WARN   ", "NOTICE ", "INFO   ",
                                         "DEBUG  ", "FUNCS  ", "FRAMES ", "ALL    ", "UNKNOWN"};
    va_list arguments;
    va_start(arguments, format);
    EXPECT_TRUE(skip(format, "[%s] [%s] - %s[%d]: "));
    EXPECT_STREQ(va_arg(arguments, const char*), levels[std::min(std::popcount(logged.mask), 9)]);
    EXPECT_EQ(va_arg(arguments, const char*), logged.module.substr(0, logged.module.find(' ')));
    const std::string function = va_arg(arguments, const char*);
    const int line = va_arg(arguments, int);
    EXPECT_EQ(formatted(format, arguments), logged.text);
    va_end(arguments);
    EXPECT_TRUE(
        line > 0 && (line_logged == 0 || (line == line_logged && function == logged.function)));
    logged.function = function;
    say(std::exchange(logged, {}));
    return -1;
}

/* Interposes the function through which the library's failures return, traced or not, and marks the
 * status. */
thread_local uint32_t mark;

ky_status_t utils_ky_log_exit(ky_status_t status, const char* function_name)
{
    static const auto library_exit =
        reinterpret_cast<decltype(&utils_ky_log_exit)>(dlsym(RTLD_NEXT, "utils_ky_log_exit"));
    say({0, "", std::string("leaves ") + function_name});
    return static_cast<ky_status_t>(library_exit(status, function_name) | mark);
}

void dbg_utils_print_module_header(FILE* stream, const char* title)
{
    say({0, "", text("%p header %s", static_cast<void*>(stream), title)});
}

void dbg_utils_print_table_headline(FILE* stream, const dbg_utils_column_t* columns)
{
    std::string line = text("%p headline", static_cast<void*>(stream));
    for (; columns->kind != DBG_UTILS_KIND_END; columns++) {
        line += text(" %s:%u", columns->title, columns->width);
    }
    say({0, "", line});
}

void dbg_utils_print_table_data_line(FILE* stream, const dbg_utils_column_t* columns)
{
    std::string line = text("%p data", static_cast<void*>(stream));
    for (; columns->kind != DBG_UTILS_KIND_END; columns++) {
        const void* value = columns->value;
        line += columns->kind == DBG_UTILS_KIND_STRING
                    ? text(" %s", static_cast<const char*>(value))
                : columns->kind == DBG_UTILS_KIND_UINT32
                    ? text(" %u", *static_cast<const uint32_t*>(value))
                    : " " + std::to_string(*static_cast<const uint64_t*>(value));
    }
    say({0, "", line});
}

Said take_said()
{
    const std::lock_guard guard(lock);
    EXPECT_EQ(logged.text, "") << "did not reach the trace buffer";
    return std::exchange(all_said, {});
}

void set_verbosity_and_flag(uint32_t verbosity, int32_t flag)
{
    KY_STORE(g_ky_log_module_func_enable, 0);
    adviser_log_verbosity_level(KY_ACCESS_CMD_SET, &verbosity);
    utils_log_verbosity_level_set(verbosity);
    port_type_validate_log_verbosity_level_set(verbosity);
    ky_router_utils_log_verbosity_set(verbosity);
    KY_STORE(g_ky_log_module_func_enable, flag);
}

std::string text(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string result = formatted(format, arguments);
    va_end(arguments);
    return result;
}

std::string filled(std::string message, uint32_t value)
{
    for (const auto& [key, form] :
         {std::pair("{u}", text("%u", value)),
          {"{d}", text("%d", value)},
          {"{x}", text("%x", value)}}) {
        if (const size_t place = message.find(key); place != std::string::npos) {
            message.replace(place, 3, form);
        }
    }
    return message;
}

Said operator+(Said a, const Said& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

void PrintTo(const Statement& statement, std::ostream* stream)
{
    *stream << statement.mask << " " << statement.module << " " << statement.function << ": "
            << statement.text;
}

Said error(const std::string& text, const std::string& function)
{
    return {{KY_LOG_MASK_ERROR, function, text}};
}

Said notice(const std::string& text, const std::string& function)
{
    return {{KY_LOG_MASK_NOTICE, function, text}};
}

Said debug(const std::string& text, const std::string& function)
{
    return {{KY_LOG_MASK_DEBUG, function, text}};
}

Said around(const std::string& function, Said within)
{
    for (Statement& statement : within) {
        if (statement.function.empty() && statement.mask != 0) {
            statement.function = function;
        }
    }
    const Said entry = {{KY_LOG_MASK_DEBUG, function, function + " - entered \n", true}};
    return entry + within + Said{{KY_LOG_MASK_DEBUG, function, function + " - left \n", true}};
}

Said left(const std::string& function)
{
    return {
        {0, "", "leaves " + function},
        {KY_LOG_MASK_DEBUG, "utils_ky_log_exit", function + " - left\n", true}};
}

Said passing(
    Said said, const std::string& module, const std::string& source, uint32_t verbosity,
    int32_t flag)
{
    std::erase_if(said, [=](const Statement& statement) {
        const auto level = static_cast<uint32_t>(std::popcount(statement.mask));
        return level > verbosity || (statement.is_trace && flag == 0);
    });
    for (Statement& statement : said) {
        statement.is_trace = false;
        statement.module = statement.mask >= KY_LOG_MASK_DEBUG
                               ? text("%s %s", module.c_str(), source.c_str())
                           : statement.mask != 0 ? module
                                                 : "";
    }
    return said;
}

// ---- Out parameters ----

constexpr char RUBBISH = '\xA5';

AnyOut::AnyOut(size_t size) : bytes_(GUARD + size + GUARD)
{
    all.push_back(this);
}

AnyOut::~AnyOut()
{
    std::erase(all, this);
}

void AnyOut::fill()
{
    std::fill(bytes_.begin(), bytes_.end(), RUBBISH);
}

void AnyOut::check(const std::vector<Written>& writes) const
{
    const std::string got(bytes_.begin(), bytes_.end());
    std::string expected(got.size(), RUBBISH);
    const size_t size = got.size() - 2 * GUARD;
    for (const auto& [out, bytes] : writes) {
        if (out == this) {
            EXPECT_NE(got, expected) << "an out parameter is not written";
            expected.replace(GUARD, size, bytes.empty() ? got.substr(GUARD, size) : bytes);
        }
    }
    EXPECT_EQ(got, expected) << "an out parameter or its guard bytes";
}

// ---- The rows ----

void has_a_row(const std::string& function)
{
    have_rows.insert(function);
}

std::set<uint32_t> edges(uint32_t min, uint32_t max)
{
    return {0,          min - 1,   min, max, max + 1, 0x100 + min, 0x10000 + min, 0x80000000 + min,
            0x80000000, 0xFFFFFFFF};
}

std::vector<ky_access_cmd_t> commands()
{
    std::vector<ky_access_cmd_t> all;
    for (uint32_t cmd = 0; cmd <= 40; cmd++) {
        all.push_back(static_cast<ky_access_cmd_t>(cmd));
        all.push_back(static_cast<ky_access_cmd_t>(cmd + 0x10000)); // wraps in 8 and 16 bits
    }
    all.push_back(static_cast<ky_access_cmd_t>(~0U));
    return all;
}

void ContractTest::SetUp()
{
    set_verbosity_and_flag(KY_LOG_LEVEL_DEFAULT, 0);
    utils_use_xm_set(0);
    utils_boot_mode_set(0);
    take_said();
}

std::string ContractTest::state()
{
    uint32_t boot_mode = 0;
    uint32_t use_xm = 0;
    take_said();
    utils_boot_mode_get(&boot_mode);
    utils_use_xm_get(&use_xm);
    utils_memory_dbg_dump(nullptr);
    std::string state =
        text("boot mode %u, use XM %u, blocks %ld\n", boot_mode, use_xm, live_blocks());
    for (const Statement& line : take_said()) {
        state += line.text.ends_with(" 0") ? "" : line.text + "\n";
    }
    return state;
}

void ContractTest::expect(const Row& row)
{
    const std::string function = row.label.substr(0, row.label.find('('));
    const Module* module = std::begin(modules);
    while (module != std::end(modules) && module->functions.count(function) == 0) {
        module++;
    }
    ASSERT_NE(module, std::end(modules)) << function << " has no class of traces: see " << __FILE__;
    has_a_row(function);

    Said whole = around(function, row.says);
    const Traces traces = module->traces;
    if (traces != Traces::both && traces != Traces::entry) {
        whole.erase(whole.begin());
    }
    if (traces != Traces::both && traces != Traces::exit) {
        whole.pop_back();
    }
    if (traces == Traces::exit_by_failure && row.status != GOOD) {
        whole = whole + left(function);
    }

    const bool leaves = std::any_of(whole.begin(), whole.end(), [](const Statement& statement) {
        return statement.text.starts_with("leaves ");
    });
    const std::string before = state();
    for (const uint32_t level : {0U, 1U, 3U, 5U, 0x80000000U}) {
        for (const int32_t flag : {0, INT32_MIN}) {
            SCOPED_TRACE(text("%s at verbosity %u, flag %d", row.label.c_str(), level, flag));
            if (row.given) {
                row.given();
            }
            for (AnyOut* out : AnyOut::all) {
                out->fill();
            }
            verbosity = level;
            set_verbosity_and_flag(level, flag);
            fail_allocations_after(row.allocations);
            take_said();
            mark = 0x40000000;
            EXPECT_EQ(row.call(), row.status | (leaves ? 0x40000000 : 0));
            mark = 0;
            const Said got = take_said();
            fail_allocations_after(-1);
            EXPECT_EQ(locks_held(), 0);
            EXPECT_EQ(KY_LOAD(g_ky_log_module_func_enable), flag);
            EXPECT_EQ(got, passing(whole, module->name, module->source, level, flag));
            for (const AnyOut* out : AnyOut::all) {
                out->check(row.writes);
            }
            uint32_t kept = 0;
            KY_STORE(g_ky_log_module_func_enable, 0);
            adviser_log_verbosity_level(KY_ACCESS_CMD_GET, &kept);
            EXPECT_TRUE(kept == level && verbosity == level); // arguments are never changed
            set_verbosity_and_flag(0, 0);
            if (row.then) {
                row.then();
            }
        }
    }
    EXPECT_EQ(state(), before) << row.label;
}

void ContractTest::expect(const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        expect(row);
    }
}

uint64_t fingerprint(uint64_t value, const char* text)
{
    do {
        value = (value ^ static_cast<unsigned char>(*text)) * 0x100000001B3;
    } while (*text++ != '\0');
    return value;
}
