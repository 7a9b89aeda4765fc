/* The enumerations, by the names of their types: port_mode. */
#ifndef NAMES_H
#define NAMES_H

#include <ky_common.h>

#include <stdbool.h>

/* Learns the names that the library prints in messages alone; before anything else is called. */
void learn_names(void);
const char* event_name(uint32_t event);
const char* port_row_name(uint32_t row);

bool is_enumeration(const char* name);

/* The value that a word is the name of; read_value takes a number, too, and reports a failure. */
bool find_value(const char* enumeration, const char* word, uint32_t* value);
bool read_value(const char* enumeration, const char* word, uint32_t* value);

/* The bit of a type of port, and the types of such bits: static text, until the next call. */
uint32_t port_type_bit(uint32_t type);
const char* port_types(uint32_t bits);

/* Prints what a call returned, and notes whether it was refused; returns true. */
bool answer_with(ky_status_t status);

#endif
