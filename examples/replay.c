/* Replays requests from a text file through the library and prints what it answers.
 *
 *     replay FILE      reads a file; "-" is standard input
 *
 * A request is a line of words: "check device_id 254". "#" starts a comment; numbers are decimal,
 * or hexadecimal behind "0x". Each line is printed as it stands, below it what the library logged,
 * as the logging library writes it, and what it returned. A line that cannot be read is reported
 * with its number and skipped; the exit status is then 1. */
#include "replay.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const struct request {
    const char* name;
    size_t words_min; /* its own name included */
    size_t words_max;
    const char* usage;
    bool (*make)(const words_t* words);
} requests[] = {
    {"name", 3, 3, "ENUMERATION VALUE", request_name},
    {"status", 2, 2, "CODE", request_status},
    {"check", 3, 4, "WHAT VALUE [DESCRIPTION|LIMIT]", request_check},
    {"setting", 2, 3, "use_xm|boot_mode [VALUE]", request_setting},
    {"verbosity", 3, 3, "MODULE LEVEL", request_verbosity},
    {"trace", 2, 2, "on|off", request_trace},
    {"port", 3, 3, "ROW|FUNCTION PORT", request_port},
    {"route", 2, WORDS_MAX, "COMMAND [SOURCE GROUP] [OPTION=VALUE...]", request_route},
    {"egress", 4, 5, "COMMAND SOURCE GROUP [COUNT]", request_egress},
    {"activity", 4, 4, "COMMAND SOURCE GROUP", request_activity},
    {"counter", 4, 5, "COMMAND SOURCE GROUP [COUNTER]", request_counter},
    {"rpf-group", 3, WORDS_MAX, "COMMAND GROUP [INTERFACE_TYPE...]", request_rpf_group},
    {"memory", 2, 5, "get|put|summary|report [TYPE [BLOCK|SIZE|COUNT SIZE]]", request_memory},
    {"register", 3, 5, "EVENT MODULE [accept|reject [STATUS]|fail_rollback|leave]",
     request_register},
    {"deregister", 3, 3, "EVENT MODULE", request_deregister},
    {"event", 2, 2, "EVENT", request_event},
    {"adviser", 2, 2, "init|deinit", request_adviser},
};

static bool replay_line(char* line, size_t length)
{
    if (length != 0 && line[length - 1] == '\n') {
        line[--length] = '\0';
    }
    if (length != 0 && line[length - 1] == '\r') {
        line[--length] = '\0';
    }
    const size_t start = strspn(line, " \t");
    const bool is_request = line[start] != '\0' && line[start] != '#';
    printf("%s%s\n", is_request ? "> " : "", line);
    if (strlen(line) != length) {
        return unreadable("it holds a null character");
    }

    line[strcspn(line, "#")] = '\0';
    words_t words = {0};
    char* rest = NULL;
    for (char* word = strtok_r(line, " \t", &rest); word != NULL;
         word = strtok_r(NULL, " \t", &rest)) {
        if (words.count == WORDS_MAX) {
            return unreadable("more than %d words", WORDS_MAX);
        }
        words.word[words.count++] = word;
    }
    if (words.count == 0) {
        return true;
    }
    for (size_t i = 0; i < COUNT_OF(requests); i++) {
        if (strcmp(words.word[0], requests[i].name) == 0) {
            if (words.count < requests[i].words_min || words.count > requests[i].words_max) {
                return unreadable("it is '%s %s'", requests[i].name, requests[i].usage);
            }
            return requests[i].make(&words);
        }
    }
    return unreadable("there is no request '%s'", words.word[0]);
}

static int usage(void)
{
    fputs("usage: replay FILE|-\n\nThe requests of a file, one a line:\n", stderr);
    for (size_t i = 0; i < COUNT_OF(requests); i++) {
        fprintf(stderr, "  %-10s %s\n", requests[i].name, requests[i].usage);
    }
    return 2;
}

int main(int argc, char** argv)
{
    if (argc != 2 || strcmp(argv[1], "--help") == 0) {
        return usage();
    }
    FILE* input = strcmp(argv[1], "-") == 0 ? stdin : fopen(argv[1], "r");
    if (input == NULL) {
        perror(argv[1]);
        return 2;
    }
    setvbuf(stdout, NULL, _IOLBF, 0); /* so that answers and messages keep their order */

    char* line = NULL;
    size_t size = 0;
    unsigned unread = 0;
    for (ssize_t length; (length = getline(&line, &size, input)) != -1;) {
        line_number++;
        if (!replay_line(line, (size_t)length)) {
            unread++;
        }
    }
    free(line);
    if (ferror(input)) {
        perror(argv[1]);
        return 2;
    }
    if (fflush(stdout) != 0 || ferror(stdout)) {
        perror("standard output");
        return 2;
    }
    if (input != stdin) {
        fclose(input);
    }
    if (unread != 0) {
        fprintf(stderr, "%u of %u lines could not be read\n", unread, line_number);
        return 1;
    }
    return 0;
}
