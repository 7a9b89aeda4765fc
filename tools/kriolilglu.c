/* Asks the library what engineers meet in logs and reports: kriolilglu(1) is its manual.
 *
 * A request is a line of words. One is given as arguments, any number in a file or on standard
 * input: there each line is printed as it stands, and below it what the library answers. */
#include "names.h"
#include "output.h"
#include "request.h"
#include "words.h"

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

static const char* form_name(const void* list, size_t index)
{
    return index < COUNT_OF(forms) ? ((const struct form*)list)[index].name : NULL;
}

static const names_t requests = {"request", form_name, forms};

/* Whether its name begins with these words. */
static bool is_about(const struct form* form, const char* words)
{
    const size_t length = strlen(words);
    return begins(form->name, words) && (length == 0 || strchr(" ", form->name[length]) != NULL);
}

static bool is_request(const char* words)
{
    size_t i = 0;
    while (i < COUNT_OF(forms) && !is_about(&forms[i], words)) {
        i++;
    }
    return i != COUNT_OF(forms);
}

/* Prints the forms about these words, and in full what they do: a text is that of the forms in
 * front of it, too. */
static void print_forms(FILE* stream, const char* words, bool in_full)
{
    bool has_text = false;
    for (size_t i = 0; i < COUNT_OF(forms); i++) {
        if (is_about(&forms[i], words)) {
            fprintf(stream, "  %s%s\n", forms[i].name, forms[i].arguments);
            has_text = in_full;
        }
        if (has_text && forms[i].text[0] != '\0') {
            fputs(forms[i].text, stream);
            has_text = false;
        }
    }
}

/* Reports a request that has no such form, or does not exist; returns false. */
static bool misused(const char* name)
{
    if (!is_request(name)) {
        return no_such(&requests, name);
    }
    report("usage:");
    print_forms(stderr, name, false);
    return false;
}

bool answer_help(const request_t* request)
{
    char name[64] = "";
    for (size_t i = 0; i < request->count; i++) {
        const size_t length = strlen(name);
        snprintf(name + length, sizeof name - length, i == 0 ? "%s" : " %s", request->text[i]);
    }
    if (!is_request(name)) {
        return misused(name);
    }
    print_forms(stdout, name, request->count != 0);
    return true;
}

/* ---- Making a request ---- */

/* Which of the names between the bars it is. */
static bool read_alternative(const char* alternatives, const char* word, uint32_t* value)
{
    for (const char* name = alternatives; name != NULL; name = strchr(name, '|')) {
        name += name[0] == '|' ? 1 : 0;
        if (strlen(word) == strcspn(name, "|") && begins(name, word)) {
            return true;
        }
        (*value)++;
    }
    return report("'%s' is not one of %s", word, alternatives);
}

/* A placeholder says what the word is: text, a prefix, a value of an enumeration or a number. */
static bool read_argument(const char* placeholder, const char* word, request_t* request)
{
    uint32_t* value = &request->value[request->count];
    request->text[request->count++] = word;
    if (strstr("DESCRIPTION ENUMERATION MODULE OPTION=VALUE REQUEST TEXT VALUE", placeholder)) {
        return true;
    }
    if (strcmp(placeholder, "SOURCE") == 0) {
        return read_prefix(word, &request->key.source_addr);
    }
    if (strcmp(placeholder, "GROUP") == 0) {
        return read_prefix(word, &request->key.mc_group_addr);
    }
    if (strchr(placeholder, '|') != NULL) {
        return read_alternative(placeholder, word, value);
    }
    if (is_enumeration(placeholder)) {
        return read_value(placeholder, word, value);
    }
    const long width = strtol(placeholder + strcspn(placeholder, "0123456789"), NULL, 10);
    const int bits = width == 0 ? 32 : (int)width; /* UINT8, INT32, COUNT */
    const int64_t min = strncmp(placeholder, "INT", 3) == 0 ? -(INT64_C(1) << (bits - 1)) : 0;
    return read_number(word, min, min + (INT64_C(1) << bits) - 1, value);
}

/* Reads the words behind a request's name as its form says. Only an option has a word with "=". */
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
        const bool is_option = strchr(placeholder, '=') != NULL;
        bool is_missing = !is_optional;
        while (*words != NULL && (!has_options || (strchr(*words, '=') != NULL) == is_option)) {
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
    request_t request = {0};
    size_t one = 0;
    size_t two = 0;
    snprintf(both, sizeof both, "%s %s", words[0], count > 1 ? words[1] : "");
    if (count > WORDS_MAX) {
        return report("it has more than %d words", WORDS_MAX);
    }
    if (find(&requests, both, &two)) {
        return read_arguments(&forms[two], words + 2, &request) && forms[two].answer(&request);
    }
    if (find(&requests, words[0], &one)) {
        return read_arguments(&forms[one], words + 1, &request) && forms[one].answer(&request);
    }
    return misused(words[0]);
}

/* ---- A file of requests ---- */

static bool replay_line(char* line, size_t length)
{
    while (length != 0 && (line[length - 1] == '\n' || line[length - 1] == '\r')) {
        line[--length] = '\0';
    }
    const char first = line[strspn(line, " \t")];
    printf("%s%s\n", first == '\0' || first == '#' ? "" : "> ", line);
    if (strlen(line) != length) {
        return report("it holds a null character");
    }
    line[strcspn(line, "#")] = '\0';
    const char* words[WORDS_MAX + 2] = {NULL};
    size_t count = 0;
    char* rest = NULL;
    for (char* word = strtok_r(line, " \t", &rest); word != NULL && count <= WORDS_MAX;
         word = strtok_r(NULL, " \t", &rest)) {
        words[count++] = word;
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

static int run(int count, char** arguments)
{
    const char* first = count == 0 ? "--" : arguments[0];
    if (first[0] == '-' && first[1] != '\0') {
        const bool ok = strcmp(first, "--help") == 0 || strcmp(first, "--version") == 0;
        FILE* stream = ok ? stdout : stderr;
        fputs("kriolilglu " VERSION "\nusage: kriolilglu REQUEST | FILE | -\n\n", stream);
        print_forms(stream, "", false);
        return ok ? EXIT_ACCEPTED : EXIT_NOT_UNDERSTOOD;
    }
    if (count > 1 || is_request(first)) {
        return !make_request((const char* const*)arguments, (size_t)count) ? EXIT_NOT_UNDERSTOOD
               : is_refused                                                ? EXIT_REFUSED
                                                                           : EXIT_ACCEPTED;
    }
    FILE* input = strcmp(first, "-") == 0 ? stdin : fopen(first, "r");
    if (input == NULL) {
        perror(first);
        if (strpbrk(first, "./") == NULL) {
            misused(first);
        }
        return EXIT_NOT_UNDERSTOOD;
    }
    int status = replay(input);
    if (ferror(input)) {
        perror(first);
        status = EXIT_NOT_UNDERSTOOD;
    }
    fclose(input);
    return status;
}

int main(int argc, char** argv)
{
    setvbuf(stdout, NULL, _IOLBF, 0); /* so that answers and reports keep their order */
    learn_names();
    const int status = run(argc - 1, argv + 1);
    if (fflush(stdout) != 0 || ferror(stdout)) {
        perror("standard output");
        return EXIT_NOT_UNDERSTOOD;
    }
    return status;
}
