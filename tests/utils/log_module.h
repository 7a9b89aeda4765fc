/* A log module of its own, "TEST", written twice: in C and in C++. */
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
    void (*say_much)(void);             /* nine arguments */
    uint32_t (*fail)(uint32_t number);  /* returns 13 */
    void (*traced)(uint32_t new_level); /* sets the verbosity between its two traces */
} log_module_t;

extern const log_module_t log_module_in_c;
extern const log_module_t log_module_in_cpp;

#ifdef __cplusplus
}
#endif

#endif
