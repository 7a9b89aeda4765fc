/** @file
 * Status codes, access commands, log statements and traces. */
#ifndef KY_COMMON_H
#define KY_COMMON_H

#include <kylog/kylog.h>
#include <stdint.h>

/** @name Version of the headers
 *
 *  The library that a program runs with may be later than the headers that it was compiled with,
 *  but has the same major version.
 *  @{ */

/* The build reads the version from these lines. */
#define KRIOLILGLU_VERSION_MAJOR 1 /**< incremented with the soname */
#define KRIOLILGLU_VERSION_MINOR 0 /**< incremented for additions */
#define KRIOLILGLU_VERSION_PATCH 0 /**< incremented for corrections */

/** The version as one number: 10203 for 1.2.3. */
#define KRIOLILGLU_VERSION \
    (KRIOLILGLU_VERSION_MAJOR * 10000 + KRIOLILGLU_VERSION_MINOR * 100 + KRIOLILGLU_VERSION_PATCH)

/** @} */

/** @name Declarations
 *  @{ */

/** Begins an enumeration of 32 bits, unsigned in C and in C++. A value without a constant is valid;
 *  of a plain C enumeration a compiler may assume that it does not occur. In C a debugger shows
 *  the constant of a number that is cast to `enum name_values`. */
#ifdef __cplusplus
#define KY_ENUM(name) enum name : uint32_t
#else
#define KY_ENUM(name)      \
    typedef uint32_t name; \
    enum name##_values
#endif

/** @} */

/** @name Status codes
 *  @{ */

/** The status of an operation. Every value other than KY_STATUS_SUCCESS is a failure. The values
 *  are part of the binary interface; `ky_status_str` names them. */
KY_ENUM(ky_status_t){
    KY_STATUS_SUCCESS = 0,
    KY_STATUS_ERROR = 1,
    KY_STATUS_SDK_NOT_INITIALIZED = 2,
    KY_STATUS_INVALID_HANDLE = 3,
    KY_STATUS_COMM_ERROR = 4,
    KY_STATUS_NO_RESOURCES = 5,
    KY_STATUS_NO_MEMORY = 6,
    KY_STATUS_MEMORY_ERROR = 7,
    KY_STATUS_CMD_ERROR = 8,
    KY_STATUS_CMD_INCOMPLETE = 9,
    KY_STATUS_CMD_UNSUPPORTED = 10,
    KY_STATUS_CMD_UNPERMITTED = 11,
    KY_STATUS_PARAM_NULL = 12,
    KY_STATUS_PARAM_ERROR = 13,
    KY_STATUS_PARAM_EXCEEDS_RANGE = 14,
    KY_STATUS_MESSAGE_SIZE_ZERO = 15,
    KY_STATUS_MESSAGE_SIZE_EXCEEDS_LIMIT = 16,
    KY_STATUS_DB_ALREADY_INITIALIZED = 17,
    KY_STATUS_DB_NOT_INITIALIZED = 18,
    KY_STATUS_DB_NOT_EMPTY = 19,
    KY_STATUS_END_OF_DB = 20,
    KY_STATUS_ENTRY_NOT_FOUND = 21,
    KY_STATUS_ENTRY_ALREADY_EXISTS = 22,
    KY_STATUS_ENTRY_NOT_BOUND = 23,
    KY_STATUS_ENTRY_ALREADY_BOUND = 24,
    KY_STATUS_WRONG_POLICER_TYPE = 25,
    KY_STATUS_UNEXPECTED_EVENT_TYPE = 26,
    KY_STATUS_TRAP_ID_NOT_CONFIGURED = 27,
    KY_STATUS_INT_COMM_CLOSE = 28,
    KY_STATUS_RESOURCE_IN_USE = 29,
    KY_STATUS_TRAP_ID_ALREADY_ASSOCIATED = 30,
    KY_STATUS_ALREADY_INITIALIZED = 31,
    KY_STATUS_TIMEOUT = 32,
    KY_STATUS_MODULE_UNINITIALIZED = 33,
    KY_STATUS_UNSUPPORTED = 34,
    KY_STATUS_UTILS_RETURNED_NON_ZERO = 35,
    KY_STATUS_PARTIALLY_COMPLETE = 36,
    KY_STATUS_ACCEPTED = 37,
    KY_STATUS_ISSU_IN_PROGRESS = 38,
    KY_STATUS_DRIVER_RETURNED_NON_ZERO = 102,
};

/** @} */

/** @name Access commands
 *  @{ */

/** The operation that a call requests. `ky_access_cmd_str` names the commands. */
KY_ENUM(ky_access_cmd_t){
    KY_ACCESS_CMD_NONE = 0,
    KY_ACCESS_CMD_ADD = 1,
    KY_ACCESS_CMD_EDIT = 2,
    KY_ACCESS_CMD_DELETE = 3,
    KY_ACCESS_CMD_DELETE_ALL = 4,
    KY_ACCESS_CMD_SOFT_ADD = 5,
    KY_ACCESS_CMD_SOFT_EDIT = 6,
    KY_ACCESS_CMD_SOFT_DELETE = 7,
    KY_ACCESS_CMD_TEST = 8,
    KY_ACCESS_CMD_APPLY = 9,
    KY_ACCESS_CMD_ENABLE = 10,
    KY_ACCESS_CMD_DISABLE = 11,
    KY_ACCESS_CMD_CREATE = 12,
    KY_ACCESS_CMD_DESTROY = 13,
    KY_ACCESS_CMD_COUNT = 14,
    KY_ACCESS_CMD_SET = 15,
    KY_ACCESS_CMD_UNSET = 16,
    KY_ACCESS_CMD_GET = 17,
    KY_ACCESS_CMD_GET_NEXT = 18,
    KY_ACCESS_CMD_REGISTER = 19,
    KY_ACCESS_CMD_DEREGISTER = 20,
    KY_ACCESS_CMD_GET_ALL = 21,
    KY_ACCESS_CMD_TEST_HW = 22,
    KY_ACCESS_CMD_ADD_PORTS = 23,
    KY_ACCESS_CMD_DELETE_PORTS = 24,
    KY_ACCESS_CMD_BIND = 25,
    KY_ACCESS_CMD_UNBIND = 26,
    KY_ACCESS_CMD_GET_FIRST = 27,
    KY_ACCESS_CMD_REPLACE_ALL_PORTS = 28,
    KY_ACCESS_CMD_DELETE_ALL_PORTS = 29,
    KY_ACCESS_CMD_READY = 30,
    KY_ACCESS_CMD_READ = 31,
    KY_ACCESS_CMD_READ_CLEAR = 32,
    KY_ACCESS_CMD_CLEAR = 33,
    KY_ACCESS_CMD_DELETE_PORT = 34,
    KY_ACCESS_CMD_MARK = 35,
};

/** @} */

/** @name Access to words that threads share
 *
 *  Verbosity, settings and the trace flag are plain words without a lock. Relaxed atomic access
 *  costs as much as plain access, and is not a data race. The word is an lvalue of an integer, a
 *  plain enumeration or a pointer. On 32-bit CPUs one of 64 bits has to be aligned to 8 bytes, and
 *  on some of them (armel, mipsel, powerpc) the program links libatomic.
 *  @{ */

/** Reads a word that other threads may write. */
#define KY_LOAD(word) __atomic_load_n(&(word), __ATOMIC_RELAXED)
/** Writes a word that other threads may read. */
#define KY_STORE(word, value) __atomic_store_n(&(word), (value), __ATOMIC_RELAXED)

/** @} */

/** @name Severity masks and verbosity levels
 *  @{ */

#define KY_LOG_MASK_ERROR 1U   /**< printed at level 1 and above */
#define KY_LOG_MASK_WARNING 3U /**< printed at level 2 and above */
#define KY_LOG_MASK_NOTICE 7U  /**< printed at level 3 and above */
#define KY_LOG_MASK_INFO 15U   /**< printed at level 4 and above */
#define KY_LOG_MASK_DEBUG 31U  /**< printed at level 5 and above */

#define KY_LOG_LEVEL_MIN 0U     /**< silent, errors included */
#define KY_LOG_LEVEL_DEFAULT 3U /**< errors, warnings and notices */
#define KY_LOG_LEVEL_MAX 8U     /**< everything; so is every higher level */

/** The lowest level, 1 (error) to 5 (debug), that prints messages of an unsigned mask. */
#define KY_LOG_LEVEL(mask) KY_CAST(uint32_t, __builtin_ctz((mask) + 1U))

/** The names of the levels in a trace record, 7 characters each; the last is for other levels. */
__attribute__((unused)) static const char ky_log_level_names[][8] = {
    "NONE   ", "ERROR  ", "WARN   ", "NOTICE ", "INFO   ",
    "DEBUG  ", "FUNCS  ", "FRAMES ", "ALL    ", "UNKNOWN",
};

/** The name of a mask's level in a trace record. */
#define KY_LOG_LEVEL_NAME(mask) ky_log_level_names[KY_LOG_LEVEL(mask) <= 8 ? KY_LOG_LEVEL(mask) : 9]

/** @} */

/** @name Log statements
 *
 *  Each is an expression of type void, except KY_FAIL. It takes a printf format, which must be a
 *  string literal and ends with a newline, and up to 19 values. If the verbosity of the module
 *  admits the message, it goes to `ky_log` and then to `ky_trace_cbuff_log`; otherwise the
 *  statement costs one load, one comparison and one branch. In C and C++11 both calls evaluate the
 *  values, which must not have side effects.
 *
 *  A source that logs defines the name of its module and its verbosity variable:
 *
 *      #define KY_LOG_MODULE "PORT"
 *      #define KY_LOG_VERBOSITY port_verbosity_level
 *      #include <ky_common.h>
 *
 *      static uint32_t port_verbosity_level = KY_LOG_LEVEL_DEFAULT;
 *
 *      void port_verbosity_set(uint32_t level)
 *      {
 *          KY_STORE(port_verbosity_level, level);
 *      }
 *
 *      ky_status_t port_mtu_set(uint32_t mtu)
 *      {
 *          KY_TRACE_ENTRY();
 *          ky_status_t status = KY_STATUS_SUCCESS;
 *          if (mtu > PORT_MTU_MAX) {
 *              status = KY_FAIL(KY_STATUS_PARAM_EXCEEDS_RANGE, "MTU (%u) is too large\n", mtu);
 *          }
 *          KY_TRACE_EXIT();
 *          return status;
 *      }
 *  @{ */

#define KY_LOG_ERROR(...) KY_LOG(KY_LOG_MASK_ERROR, __VA_ARGS__)     /**< a failure */
#define KY_LOG_WARNING(...) KY_LOG(KY_LOG_MASK_WARNING, __VA_ARGS__) /**< a possible failure */
#define KY_LOG_NOTICE(...) KY_LOG(KY_LOG_MASK_NOTICE, __VA_ARGS__)   /**< a rare event */
#define KY_LOG_INFO(...) KY_LOG(KY_LOG_MASK_INFO, __VA_ARGS__)       /**< a usual event */
#define KY_LOG_DEBUG(...) KY_LOG(KY_LOG_MASK_DEBUG, __VA_ARGS__)     /**< for developers */

/** Logs a message with a severity mask, which must be a constant. */
#define KY_LOG(mask, ...) KY_LOG_IN(__func__, mask, __VA_ARGS__)

/** Logs an error and evaluates to the status, a `ky_status_t`, to be returned. */
#ifdef __cplusplus
#define KY_FAIL(status, ...) (KY_LOG_ERROR(__VA_ARGS__), (status))
#else // where a constant of an enumeration is an int
#define KY_FAIL(status, ...) (KY_LOG_ERROR(__VA_ARGS__), (ky_status_t)(status))
#endif

/** @} */

/** @name Entry and exit traces
 *
 *  A trace is a message at debug level that also needs `g_ky_log_module_func_enable` of the logging
 *  library to be set. Each trace reads both the flag and the verbosity. The source defines a log
 *  module as for KY_LOG_ERROR.
 *  @{ */

/** Traces that the enclosing function is entered. */
#define KY_TRACE_ENTRY() KY_TRACE_IN(__func__, "entered")
/** Traces that the enclosing function is left. */
#define KY_TRACE_EXIT() KY_TRACE_IN(__func__, "left")

#ifdef __cplusplus
/** In C++, traces that the enclosing function is entered, and at its return that it is left. */
#define KY_TRACE_FUNCTION() \
    KY_TRACE_ENTRY();       \
    KY_TRACE_AT_RETURN(__LINE__)
#endif

/** @} */

/* ---- How the statements are made: for the macros above, and for this library ---- */

/** @cond */

#ifdef __cplusplus
#define KY_CAST(type, value) static_cast<type>(value)
#else
#define KY_CAST(type, value) ((type)(value))
#endif

#define KY_TRACE_WANTED() __builtin_expect(KY_LOAD(g_ky_log_module_func_enable) != 0, 0)

#define KY_TRACE_IN(function, verb)                                                           \
    (KY_TRACE_WANTED() ? KY_LOG_IN(function, KY_LOG_MASK_DEBUG, "%s - " verb " \n", function) \
                       : (void)0)

/* An object whose end is the function's. The line in its names keeps them apart from those of a
 * function around this one, if that stands on another line. */
#define KY_TRACE_AT_RETURN(line) KY_TRACE_AT_RETURN_(line)
#define KY_TRACE_AT_RETURN_(line)           \
    const struct ky_trace_##line {          \
        const char* ky_traced;              \
        ~ky_trace_##line()                  \
        {                                   \
            KY_TRACE_IN(ky_traced, "left"); \
        }                                   \
    } ky_trace_exit_##line = {__func__}

/* C++ moves the records into a function of their own that is cold and takes its arguments by value:
 * what stays behind needs no stack frame. C has no such form, and writes them in place. */
#if defined(__cplusplus) && __cplusplus >= 201402L
#define KY_LOG_IN(function, mask, ...)                                                         \
    (KY_LOG_WANTED(mask)                                                                       \
         ? [](const char* ky_function, auto... ky_arguments) __attribute__((cold, noinline)) { \
               KY_LOG_RECORDS(ky_function, mask, KY_LOG_FORMAT(__VA_ARGS__), ky_arguments...); \
           }(function KY_LOG_ARGUMENTS(__VA_ARGS__))                                           \
         : (void)0)
#else
#define KY_LOG_IN(function, mask, ...) \
    (KY_LOG_WANTED(mask) ? KY_LOG_RECORDS(function, mask, __VA_ARGS__) : (void)0)
#endif

#define KY_LOG_WANTED(mask) __builtin_expect(KY_LOAD(KY_LOG_VERBOSITY) >= KY_LOG_LEVEL(mask), 0)

#ifndef __FILE_NAME__
#error "this header takes GCC 12, clang 14, or a later version"
#define __FILE_NAME__ __FILE__ // so that the statements draw no errors of their own
#endif

/* Both records of one statement. From debug level on, the first one says where it comes from. */
/* clang-format off */
#define KY_LOG_RECORDS(function, mask, ...)                                             \
    ((void)(KY_LOG_LEVEL(mask) < 5                                                      \
         ? ky_log(mask, KY_LOG_MODULE,                                                  \
                  KY_LOG_FORMAT(__VA_ARGS__) KY_LOG_ARGUMENTS(__VA_ARGS__))             \
         : ky_log(mask, KY_LOG_MODULE, "%s[%d]- %s: " KY_LOG_FORMAT(__VA_ARGS__),       \
                  __FILE_NAME__, __LINE__, function KY_LOG_ARGUMENTS(__VA_ARGS__))),    \
     (void)ky_trace_cbuff_log("[%s] [%s] - %s[%d]: " KY_LOG_FORMAT(__VA_ARGS__),        \
                              KY_LOG_LEVEL_NAME(mask), KY_LOG_MODULE, function, __LINE__ \
                              KY_LOG_ARGUMENTS(__VA_ARGS__)))
/* clang-format on */

/* A message taken apart: its format, and its arguments with a comma in front, or nothing. No
 * standard of C or C++ before C++20 and C23 has a shorter form for "or nothing". */
#define KY_LOG_FORMAT(...) KY_LOG_FIRST(__VA_ARGS__, ~)
#define KY_LOG_FIRST(format, ...) format
/* clang-format off */
#define KY_LOG_ARGUMENTS(...)                                                                \
    KY_LOG_TWENTY_FIRST(__VA_ARGS__, SOME, SOME, SOME, SOME, SOME, SOME, SOME, SOME, SOME, SOME, \
                        SOME, SOME, SOME, SOME, SOME, SOME, SOME, SOME, SOME, NONE, ~)       \
    (__VA_ARGS__)
#define KY_LOG_TWENTY_FIRST(_1, _2, _3, _4, _5, _6, _7, _8, _9, _10, _11, _12, _13, _14, _15, \
                            _16, _17, _18, _19, _20, which, ...) KY_LOG_ARGUMENTS_##which
/* clang-format on */
#define KY_LOG_ARGUMENTS_NONE(format)
#define KY_LOG_ARGUMENTS_SOME(format, ...) , __VA_ARGS__

/** @endcond */

#endif
