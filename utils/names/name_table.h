/* The table behind an enum-name function, built and checked when it is compiled. */
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
    consteval NameTable(std::initializer_list<ValueName> rows, const char* gap)
    {
        for (const char*& text : texts_) {
            text = gap;
        }
        const ValueName* previous = nullptr;
        for (const ValueName& row : rows) {
            if (row.name == nullptr) {
                name_is_null();
            }
            if (row.value > Bound) {
                value_is_above_the_bound();
            }
            if (previous != nullptr && row.value <= previous->value) {
                values_do_not_ascend();
            }
            texts_[row.value] = row.name;
            previous = &row;
        }
    }

    constexpr const char* name_of(uint32_t value, const char* above_the_bound = "Unknown") const
    {
        return value > Bound ? above_the_bound : texts_[value];
    }

  private:
    const char* texts_[Bound + 1] = {};
};

/* A table whose values without a name are the empty string. */
template <uint32_t Bound> consteval NameTable<Bound> names(std::initializer_list<ValueName> rows)
{
    return {rows, ""};
}

/* A table most of whose values have no name: they are "Unknown", like those above the bound. */
template <uint32_t Bound>
consteval NameTable<Bound> sparse_names(std::initializer_list<ValueName> rows)
{
    return {rows, "Unknown"};
}

#endif
