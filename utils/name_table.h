/* A table of names for the values of an enumeration, built and checked at compile time. */
#ifndef NAME_TABLE_H
#define NAME_TABLE_H

#include <cstdint>
#include <initializer_list>

/* Never defined: a table that calls one at compile time fails to compile, and the compiler names
 * the fault. */
void name_is_null();
void value_is_above_the_bound();
void values_do_not_ascend();

/* A row of a table. */
struct ValueName {
    uint32_t value;
    const char* name;
};

/* One name for each value from 0 to Bound; a lookup is one comparison and one load. */
template <uint32_t Bound> class NameTable {
  public:
    /* Rows are in ascending order; a value without a row gets the gap's name. */
    consteval NameTable(std::initializer_list<ValueName> rows, const char* gap = "")
    {
        for (const char*& text : texts_) {
            text = gap;
        }
        uint32_t next_allowed = 0;
        for (const ValueName& row : rows) {
            if (row.name == nullptr) {
                name_is_null();
            }
            if (row.value > Bound) {
                value_is_above_the_bound();
            }
            if (row.value < next_allowed) {
                values_do_not_ascend();
            }
            texts_[row.value] = row.name;
            next_allowed = row.value + 1;
        }
    }

    /* A table with many gaps: they are "Unknown", like values above the bound. */
    static consteval NameTable sparse(std::initializer_list<ValueName> rows)
    {
        return {rows, "Unknown"};
    }

    constexpr const char* name_of(uint32_t value, const char* above_the_bound = "Unknown") const
    {
        return value > Bound ? above_the_bound : texts_[value];
    }

  private:
    const char* texts_[Bound + 1] = {};
};

#endif
