/* Asks the library what engineers meet in logs and reports: kriolilglu(1) is its manual.
 *
 * A request is a line of words. One is given as arguments, any number in a file or on standard
 * input: there each line is printed as it stands, and below it what the library answers. */
#include "kriolilglu.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { EXIT_ACCEPTED, EXIT_REFUSED, EXIT_NOT_UNDERSTOOD };

static const struct form {
    const char* name; /* of one word or two */
    const char* arguments;
    const char* text;
    answer_t* answer;
} forms[] = {
#define REQUEST(function, name, form, text) {name, form, text, answer_##function},
#include "requests.inc"
};

/* Prints the forms whose names begin with a word, with or without what they do; returns how many
 * there are. */
static size_t print_forms(FILE* stream, const char* word, bool in_full)
{
    size_t count = 0;
    const size_t length = strlen(word);
    for (size_t i = 0; i < COUNT_OF(forms); i++) {
        const char* name = forms[i].name;
        if (strncmp(name, word, length) == 0 &&
            (length == 0 || name[length] == '\0' || name[length] == ' ')) {
            count++;
            if (stream != NULL) {
                fprintf(stream, "  %s%s\n", name, forms[i].arguments);
                fputs(in_full ? forms[i].text : "", stream);
            }
        }
    }
    return count;
}

static bool is_request(const char* word)
{
    return print_forms(NULL, word, false) != 0;
}

/* Reports a request that has no such form, or does not exist; returns false. */
static bool misused(const char* name)
{
    if (is_request(name)) {
        unreadable("the form of '%s' is", name);
        print_forms(stderr, name, false);
    } else {
        FIND("request", name, forms);
    }
    return false;
}

bool answer_help(const request_t* request)
{
    const char* name = request->count == 0 ? "" : request->word[0];
    return print_forms(stdout, name, request->count != 0) != 0 || misused(name);
}

/* ---- Making a request ---- */

/* Which of the names between the bars it is. */
static bool read_alternative(char* alternatives, const char* word, uint32_t* value)
{
    const char* names[WORDS_MAX];
    size_t count = 0;
    char* rest = alternatives;
    while ((names[count] = strtok_r(NULL, "|", &rest)) != NULL) {
        count++;
    }
    const char* const* name = find("alternative", word, names, count, sizeof names[0]);
    *value = name == NULL ? 0 : (uint32_t)(name - names);
    return name != NULL;
}

/* A placeholder says what the word is: an enumeration, a prefix, a number; any other leaves it. */
static bool read_argument(char* placeholder, const char* word, request_t* request)
{
    static const struct kind {
        const char* placeholder;
        int64_t min;
        int64_t max;
    } numbers[] = {
        {"UINT8", 0, UINT8_MAX},   {"UINT16", 0, UINT16_MAX},  {"INT32", INT32_MIN, INT32_MAX},
        {"UINT32", 0, UINT32_MAX}, {"BLOCK", 0, UINT32_MAX},   {"COUNT", 0, UINT32_MAX},
        {"LEVEL", 0, UINT32_MAX},  {"COUNTER", 0, UINT32_MAX}, {"RPF_GROUP", 0, UINT32_MAX},
        {"PORT", 0, UINT32_MAX},   {"SIZE", 0, UINT32_MAX},
    };
    int64_t number = 0;
    uint32_t* value = &request->value[request->count];
    request->word[request->count++] = word;
    if (strcmp(placeholder, "SOURCE") == 0) {
        return read_prefix(word, &request->key.source_addr);
    }
    if (strcmp(placeholder, "GROUP") == 0) {
        return read_prefix(word, &request->key.mc_group_addr);
    }
    if (strchr(placeholder, '|') != NULL) {
        return read_alternative(placeholder, word, value);
    }
    const struct kind* kind = FIND(NULL, placeholder, numbers);
    if (kind != NULL) {
        const bool ok = read_number(word, kind->min, kind->max, &number);
        *value = (uint32_t)number;
        return ok;
    }
    return read_value(word, placeholder, value);
}

/* Reads the words behind a request's name as its form says. */
static bool read_arguments(const struct form* form, const char* const* words, request_t* request)
{
    const bool has_options = strchr(form->arguments, '=') != NULL;
    bool is_optional = false;
    char token[64];
    int length = 0;
    for (const char* rest = form->arguments; sscanf(rest, "%63s%n", token, &length) == 1;
         rest += length) {
        const bool is_repeated = strstr(token, "...") != NULL;
        is_optional = is_optional || token[0] == '[';
        char* placeholder = token + strspn(token, "[");
        placeholder[strcspn(placeholder, "].")] = '\0';
        if (strchr(placeholder, '=') != NULL) {
            for (size_t i = request->count; *words != NULL && strchr(*words, '=') != NULL; i++) {
                request->word[i] = *words++;
            }
            break; /* options come last */
        }
        bool is_missing = !is_optional;
        while (*words != NULL && !(has_options && strchr(*words, '=') != NULL)) {
            if (!read_argument(placeholder, *words++, request)) {
                return false;
            }
            is_missing = false;
            if (!is_repeated) {
                break;
            }
        }
        if (is_missing) {
            return misused(form->name);
        }
    }
    return *words == NULL || misused(form->name);
}

/* Makes the request that the words are; a null word follows the last one. */
static bool make_request(const char* const* words, size_t count)
{
    char both[64];
    snprintf(both, sizeof both, "%s %s", words[0], count > 1 ? words[1] : "");
    if (count > WORDS_MAX) {
        return unreadable("it has more than %d words", WORDS_MAX);
    }
    for (size_t i = COUNT_OF(forms); i-- != 0;) {
        const size_t length = strcmp(forms[i].name, both) == 0 ? 2 : 1;
        if (length == 2 || strcmp(forms[i].name, words[0]) == 0) {
            request_t request = {0};
            is_refused = false;
            return read_arguments(&forms[i], words + length, &request) && forms[i].answer(&request);
        }
    }
    return misused(words[0]);
}

/* ---- A file of requests ---- */

static bool replay_line(char* line, size_t length)
{
    while (length != 0 && strchr("\r\n", line[length - 1]) != NULL) {
        line[--length] = '\0';
    }
    printf("%s%s\n", strchr("#", line[strspn(line, " \t")]) == NULL ? "> " : "", line);
    if (strlen(line) != length) {
        return unreadable("it holds a null character");
    }
    line[strcspn(line, "#")] = '\0';
    const char* words[WORDS_MAX + 2] = {NULL};
    size_t count = 0;
    char* rest = line;
    while (count <= WORDS_MAX && (words[count] = strtok_r(NULL, " \t", &rest)) != NULL) {
        count++;
    }
    return count == 0 || make_request(words, count);
}

static int replay(FILE* input)
{
    char* line = NULL;
    size_t size = 0;
    unsigned count = 0;
    for (ssize_t length; (length = getline(&line, &size, input)) != -1;) {
        line_number++;
        count += !replay_line(line, (size_t)length);
    }
    free(line);
    if (count != 0) {
        fprintf(stderr, "%u of %u lines were not understood\n", count, line_number);
    }
    return count == 0 ? EXIT_ACCEPTED : EXIT_NOT_UNDERSTOOD;
}

/* ---- The command ---- */

static int run(int count, char** arguments)
{
    if (count == 0 || strcmp(arguments[0], "--help") == 0 ||
        strcmp(arguments[0], "--version") == 0) {
        FILE* stream = count == 0 ? stderr : stdout;
        fputs("kriolilglu " VERSION "\nusage: kriolilglu REQUEST | FILE | -\n\n", stream);
        print_forms(stream, "", false);
        return count == 0 ? EXIT_NOT_UNDERSTOOD : EXIT_ACCEPTED;
    }
    if (count > 1 || is_request(arguments[0])) {
        return !make_request((const char* const*)arguments, (size_t)count) ? EXIT_NOT_UNDERSTOOD
               : is_refused                                                ? EXIT_REFUSED
                                                                           : EXIT_ACCEPTED;
    }
    FILE* input = strcmp(arguments[0], "-") == 0 ? stdin : fopen(arguments[0], "r");
    if (input == NULL) {
        perror(arguments[0]);
        misused(arguments[0]);
        return EXIT_NOT_UNDERSTOOD;
    }
    int status = replay(input);
    if (ferror(input)) {
        perror(arguments[0]);
        status = EXIT_NOT_UNDERSTOOD;
    }
    fclose(input);
    return status;
}

int main(int argc, char** argv)
{
    setvbuf(stdout, NULL, _IOLBF, 0); /* so that answers and reports keep their order */
    prepare_adviser();
    learn_memory_type_names();
    const int status = run(argc - 1, argv + 1);
    if (fflush(stdout) != 0 || ferror(stdout)) {
        perror("standard output");
        return EXIT_NOT_UNDERSTOOD;
    }
    return status;
}
