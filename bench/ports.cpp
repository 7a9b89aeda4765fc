// The check of a port's type that passes.
#include "bench.h"

#include "callees/floor.h"
#include "callees/peers.h"

#include <cstdlib>
#include <ky_port_type_validate.h>

namespace {

struct Question {
    uint32_t enum_id;
    uint32_t log_port;
};

/* Some of all pairs of a function and a port that it accepts. */
std::vector<Question> make_questions()
{
    std::vector<Question> accepted;
    for (uint32_t enum_id = 0; enum_id < PORT_TYPE_VALIDATION_ROWS; enum_id++) {
        for (uint32_t type = 0; type < 16; type++) {
            const uint32_t log_port = type << 28 | 0x10001;
            if (floor_port_type(enum_id, log_port) != 0) {
                accepted.push_back({enum_id, log_port});
            }
        }
    }
    std::vector<Question> questions;
    for (const uint32_t i : values_below(static_cast<uint32_t>(accepted.size()))) {
        questions.push_back(accepted[i]);
    }
    return questions;
}

void enter_check(const char* name, uint32_t (*check)(uint32_t enum_id, uint32_t log_port))
{
    enter("port type that passes", name, [check, questions = make_questions()](size_t i) {
        if (check(questions[i].enum_id, questions[i].log_port) == 0) {
            abort();
        }
    });
}

} // namespace

void enter_ports()
{
    enter_check("library", is_port_type_valid);
    enter_check("floor", floor_port_type);
    enter_check("switch", peer_port_type_by_switch);
}
