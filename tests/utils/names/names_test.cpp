// The names of values, and the constants of the headers, which follow them.
#include "contract.h"

#include <ky_adviser.h>
#include <ky_names.h>
#include <ky_port_type_validate.h>
#include <ky_utils.h>

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <regex>

namespace {

using Lines = std::vector<std::string>;

/* What a pattern captures in the lines of files that match it. */
Lines matches(std::initializer_list<const char*> files, const std::string& pattern)
{
    const std::regex regex(pattern);
    Lines found;
    for (const char* file : files) {
        std::ifstream stream(std::string(SOURCE "/") + file);
        std::smatch match;
        for (std::string line; std::getline(stream, line);) {
            if (std::regex_match(line, match, regex)) {
                found.push_back(match[1]);
            }
        }
    }
    return found;
}

/* The lines that only one of them has, as diff shows them. */
std::string difference(Lines expected, Lines found)
{
    std::ranges::sort(expected);
    std::ranges::sort(found);
    Lines lines;
    std::ranges::set_symmetric_difference(expected, found, std::back_inserter(lines));
    std::string text;
    for (const std::string& line : lines) {
        text += (std::ranges::binary_search(found, line) ? "+ " : "- ") + line + "\n";
    }
    return text;
}

/* The bound is the last value with another name than all values above it. */
void add_names(Lines& names, const std::string& enumeration, void* function)
{
    const auto name_of = reinterpret_cast<const char* (*)(uint32_t)>(function);
    const std::string above =
        enumeration == "extraction_point_type" ? "Invalid extraction point" : "Unknown";
    uint32_t bound = 0x1000;
    while (bound > 0 && name_of(bound) == above) {
        bound--;
    }
    for (uint32_t value = 0; value <= bound; value++) {
        const char* name = name_of(value);
        const char* space = *name == '\0' ? "" : " ";
        names.push_back(formatted("%s %u%s%s", enumeration.c_str(), value, space, name));
    }
    for (const uint32_t value : {0x10000U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
        EXPECT_EQ(name_of(value), above) << enumeration << " " << value;
    }
#if defined(__x86_64__) || defined(__aarch64__)
    // A caller may leave garbage in the upper half of the register.
    const auto name_of_wide = reinterpret_cast<const char* (*)(uint64_t)>(function);
    EXPECT_EQ(name_of_wide(0xa5a5a5a500000000), name_of(0)) << enumeration;
#endif
}

/* "ENUMERATION VALUE NAME", without a name "ENUMERATION VALUE". */
Lines all_names()
{
    Lines names;
    for (const std::string& enumeration : matches({"abi/kriolilglu.map"}, "    ky_(\\w+)_str;")) {
        const std::string function = "ky_" + enumeration + "_str";
        add_names(names, enumeration, dlsym(RTLD_DEFAULT, function.c_str()));
        has_a_row(function);
    }
    for (uint32_t event = 1; event <= ADVISER_EVENT_MAX; event++) {
        names.push_back(formatted("adviser_event %u %s", event, event_name(event).c_str()));
    }
    static const std::regex memory_type("\\S+ data (\\d+ \\S+) \\d+");
    std::smatch match;
    take_log();
    utils_memory_dbg_dump(nullptr);
    for (const LogRecord& record : take_log()) {
        if (std::regex_match(record.text, match, memory_type)) {
            names.push_back("mem_type " + match.str(1));
        }
    }
    for (uint32_t row = 0; row < PORT_TYPE_VALIDATION_ROWS; row++) {
        const auto& [name, types] = port_type_validation_table[row];
        names.push_back(formatted("port_row %u %s 0x%02x", row, name, types));
    }
    uint8_t& types = port_type_validation_table[1].allowed_port_types;
    const uint8_t saved = types;
    for (uint32_t accepted = 0; accepted < 8 * 16; accepted++) { // each bit with each type of port
        types = static_cast<uint8_t>(1 << accepted / 16);
        if (is_port_type_valid(1, accepted << 28) == 1) {
            names.push_back(
                formatted("port_type_bit 0x%02x %s", types, ky_port_type_str(accepted % 16)));
        }
    }
    types = saved;
    return names;
}

TEST(Names, AreThoseOfTheFile)
{
    const Lines found = all_names();
    const std::string changes = difference(matches({"tests/utils/names/names.txt"}, "(.*)"), found);
    if (changes != "") {
        const std::string file = std::filesystem::absolute("names.txt");
        std::ofstream stream(file);
        std::ranges::copy(found, std::ostream_iterator<std::string>(stream, "\n"));
        FAIL() << changes << "if this is intended: cp " << file << " " SOURCE "/tests/utils/names";
    }
}

TEST(Names, GiveTheConstantsOfTheHeaders)
{
    const auto headers = {"utils/ky_common.h", "utils/ky_values.h"};
    const Lines enumerations = matches(headers, "(?:enum |KY_ENUM\\()ky_(\\w+)_(?:values|t)\\b.*");
    EXPECT_EQ(enumerations.size(), 16U);

    const Lines found = matches(headers, "    (KY_\\w+ = \\w+),");
    Lines expected = {"KY_MEM_TYPE_ALL = 0"}; // for which each type is printed
    static const std::regex named(
        "(\\w+) (\\w+) (?!N/A|Unknown|port_type_validation_)(.+?)( 0x..)?");
    static const std::regex no_word("[^A-Za-z0-9]+");
    std::smatch match;
    for (const std::string& line : all_names()) {
        if (std::regex_match(line, match, named) && std::ranges::count(enumerations, match[1])) {
            const std::string name = "KY " + match.str(1) + " " + match.str(3);
            std::string constant = std::regex_replace(name, no_word, "_");
            std::ranges::transform(constant, constant.begin(), toupper);
            constant += " = " + match.str(2);
            const auto by_hand = std::ranges::find_if(found, [&](const std::string& each) {
                return each.starts_with("KY_STATUS_") && each.ends_with(" = " + match.str(2));
            });
            const bool is_by_hand = match[1] == "status" && by_hand != found.end();
            expected.push_back(is_by_hand ? *by_hand : constant);
        }
    }
    const std::string changes = difference(expected, found);
    EXPECT_TRUE(changes.empty()) << changes;
}

} // namespace
