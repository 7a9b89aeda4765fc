/* The log module "TEST" of log_module.c, in C and in C++. */
#ifndef LOG_MODULE_H
#define LOG_MODULE_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct log_module {
    void (*set_verbosity)(uint32_t level);
    void (*say_bare)(void); /* an error without arguments, in an if without braces */
    void (*say_at_all_levels)(int number);
    void (*say_much)(void);                   /* nineteen values */
    uint32_t (*fail)(const uint32_t* number); /* returns 13 */
    /* Sets the verbosity and the flag between its two traces; returns 13. */
    uint32_t (*traced)(uint32_t new_level, int32_t new_flag);
} log_module_t;

extern const log_module_t log_module_in_c;
extern const log_module_t log_module_in_cpp;

#ifdef __cplusplus
}
#endif

#endif
