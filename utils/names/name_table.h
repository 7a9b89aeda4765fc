/* A table of names for the values of an enumeration, built and checked when it is compiled. */
#ifndef NAME_TABLE_H
#define NAME_TABLE_H

#include <cstdint>
#include <initializer_list>

/* Declared only: a table that calls one of them while it is built does not compile, and the
 * compiler's message names what is wrong with it. */
void name_is_null();
void value_is_above_the_bound();
void values_do_not_ascend();

/* A value and its name, as the catalogue lists them. */
struct ValueName {
    uint32_t value;
    const char* name;
};

/* One text for every value from 0 to Bound, so that a lookup is one comparison and one load. */
template <uint32_t Bound> class NameTable {
  public:
    /* The rows stand in ascending order; a value without a row gets the gap's text. */
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

    /* A table most of whose values have no name: they are "Unknown", like those above the bound. */
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
