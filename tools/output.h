/* What the command prints: answers, reports, and the records of the library among them. */
#ifndef OUTPUT_H
#define OUTPUT_H

#include <stdbool.h>

extern unsigned line_number; /* of the input; 0 for a request given as arguments */
extern bool is_refused;      /* by the library, or what is asked for does not exist */

/* Prints a line of an answer. */
__attribute__((format(printf, 1, 2))) void answer(const char* format, ...);

/* Reports what is wrong; returns false. */
__attribute__((format(printf, 1, 2))) bool report(const char* format, ...);

/* A sequence that switches to a colour; empty unless standard output shows colours. */
const char* colour(const char* sequence);

/* If not null, receives each record of the library, which goes to standard output otherwise. */
#define RECORD_SIZE 4096
extern char* record_buffer;

#endif
