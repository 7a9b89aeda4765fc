/* Asks the library what engineers meet in logs and reports: kriolilglu(1) is its manual.
 *
 * A request is a line of words. One is given as arguments, any number in a file or on standard
 * input: there each line is printed as it stands, and below it what the library answers. */
#include "request.h"

#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const struct form {
    const char* heading; /* of the forms from here on; perhaps empty */
    const char* name;    /* of one word or two */
    const char* arguments;
    const char* text; /* of the forms in front without one, too */
    answer_t* answer;
} forms[] = {
#define REQUEST(function, ...) {__VA_ARGS__, answer_##function},
#include "requests.inc"
};

static const char* form_name(const void* list, size_t index)
{
    return ((const struct form*)list)[index].name;
}

static const names_t requests = {"request", form_name, forms, COUNT_OF(forms)};

/* ---- Help ---- */

/* Whether its name begins with these words. */
static bool is_about(const struct form* form, const char* words)
{
    return begins(form->name, words) && strchr(" ", form->name[strlen(words)]) != NULL;
}

static bool is_request(const char* words)
{
    size_t i = 0;
    while (i < COUNT_OF(forms) && !is_about(&forms[i], words)) {
        i++;
    }
    return i < COUNT_OF(forms);
}

static const char* two_words(const char* const* words, size_t count)
{
    static char both[64];
    snprintf(
        both, sizeof both, "%s%s%s", words[0], count > 1 ? " " : "", count > 1 ? words[1] : "");
    return both;
}

bool answer_help(const request_t* request)
{
    if (request->count == 0) {
        puts("usage: kriolilglu REQUEST | FILE | -\n\n"
             "  $ kriolilglu status 14\n"
             "  $ kriolilglu name port_oper_speed 17\n"
             "  $ kriolilglu port 0x40000000 vlan_ports_set");
        for (const struct form* form = forms; form != forms + COUNT_OF(forms); form++) {
            printf("%s  %s%s\n", form->heading, form->name, form->arguments);
        }
        printf("\n%s", forms[0].text);
        return true;
    }
    const char* both = two_words(request->text, request->count);
    const char* name = is_request(both) ? both : request->text[0];
    bool has_text = false;
    for (const struct form* form = forms; form != forms + COUNT_OF(forms); form++) {
        if (is_about(form, name)) {
            printf("  %s%s\n", form->name, form->arguments);
            has_text = true;
        }
        if (has_text && form->text[0] != '\0') {
            fputs(form->text, stdout);
            has_text = false;
        }
    }
    return is_request(name) || no_such(&requests, name);
}

/* ---- Making a request ---- */

/* Which of the names between the bars it is. */
static bool read_alternative(const char* alternatives, const char* word, uint32_t* value)
{
    const char* name = alternatives;
    for (; strlen(word) != strcspn(name, "|") || !begins(name, word); ++*value) {
        name += strcspn(name, "|");
        if (*name++ == '\0') {
            return report("'%s' is not one of %s", word, alternatives);
        }
    }
    return true;
}

/* A placeholder says what the word is. */
static bool read_argument(const char* placeholder, const char* word, request_t* request)
{
    uint32_t* value = &request->value[request->count];
    request->text[request->count++] = word;
    if (strstr("ENUMERATION MODULE PORT|TYPE|FUNCTION REQUEST TEXT VALUE", placeholder) != NULL) {
        return true;
    }
    ky_ip_prefix_t* prefix = strcmp(placeholder, "SOURCE") == 0  ? &request->key.source_addr
                             : strcmp(placeholder, "GROUP") == 0 ? &request->key.mc_group_addr
                                                                 : NULL;
    return prefix != NULL                     ? read_prefix(word, prefix)
           : strchr(placeholder, '|') != NULL ? read_alternative(placeholder, word, value)
                                              : read_value(placeholder, word, value);
}

/* Reads the words behind a request's name as its form says. */
static bool read_arguments(const struct form* form, const char* const* words, request_t* request)
{
    const bool has_options = strchr(form->arguments, '=') != NULL;
    const char* rest = form->arguments;
    char placeholder[64] = "";
    bool is_repeated = false;
    bool fits = true;
    for (; fits && *words != NULL; words++) {
        if (has_options && strchr(*words, '=') != NULL) {
            request->text[request->count++] = *words;
            continue;
        }
        if (!is_repeated) {
            rest += strspn(rest, " [].");
            snprintf(placeholder, sizeof placeholder, "%.*s", (int)strcspn(rest, " ]."), rest);
            rest += strlen(placeholder);
            is_repeated = strncmp(rest + strspn(rest, "]"), "...", 3) == 0;
        }
        fits = placeholder[0] != '\0' && strchr(placeholder, '=') == NULL;
        if (fits && !read_argument(placeholder, *words, request)) {
            return false;
        }
    }
    rest += strspn(rest, " ].");
    fits = fits && strchr("[", *rest) != NULL; /* what is left is optional */
    return fits || report("usage: %s%s", form->name, form->arguments);
}

/* Makes the request that the words are; a null word follows the last one. */
static bool make_request(const char* const* words, size_t count)
{
    request_t request = {0};
    if (count > WORDS_MAX) {
        return report("it has more than %d words", WORDS_MAX);
    }
    for (size_t used = count > 1 ? 2 : 1; used != 0; used--) {
        const size_t i = find(&requests, two_words(words, used), 0);
        if (i < COUNT_OF(forms)) {
            return read_arguments(&forms[i], words + used, &request) && forms[i].answer(&request);
        }
    }
    return no_such(&requests, is_request(words[0]) ? two_words(words, count) : words[0]);
}

/* ---- A file of requests ---- */

static bool failed(const char* what)
{
    return report("%s: %s", what, strerror(errno)); // NOLINT(concurrency-mt-unsafe): one thread
}

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

static bool replay(const char* name)
{
    char* line = NULL;
    size_t size = 0;
    unsigned count = 0;
    for (ssize_t length; (length = getline(&line, &size, stdin)) != -1;) {
        line_number++;
        count += !replay_line(line, (size_t)length);
    }
    free(line);
    const unsigned lines = line_number;
    line_number = 0;
    is_refused = false; /* whatever the library refused */
    return (ferror(stdin) == 0 || failed(name)) &&
           (count == 0 || report("%u of %u lines were not understood", count, lines));
}

/* Does what the arguments ask for; a null word follows the last one. */
static bool run(const char** words, size_t count)
{
    const char* first = words[0];
    if (count == 0) {
        return report("usage: kriolilglu REQUEST | FILE | -, or kriolilglu --help");
    }
    if (strcmp(first, "--version") == 0) {
        puts("kriolilglu " VERSION);
        return true;
    }
    if (first[0] == '-' && first[1] != '\0') {
        return report("unknown option '%s'; 'kriolilglu --help' shows what there is", first);
    }
    if (count > 1 || is_request(first)) {
        return make_request(words, count);
    }
    return strcmp(first, "-") == 0 || freopen(first, "r", stdin) != NULL
               ? replay(first)
               : failed(first) || (strpbrk(first, "./") == NULL && no_such(&requests, first));
}

int main(int argc, char** argv)
{
    const size_t count = argc == 0 ? 0 : (size_t)argc - 1;
    const char** words = (const char**)argv + 1;
    for (size_t i = 0; i < count; i++) {
        if (strcmp(words[i], "--help") == 0 || strcmp(words[i], "-h") == 0) {
            memmove(words + 1, words, i * sizeof *words);
            words[0] = "help";
        }
    }
    setvbuf(stdout, NULL, _IOLBF, 0); /* so that answers and reports keep their order */
    learn_names();
    const bool ok = run(words, count);
    const bool is_written = fflush(stdout) == 0 && ferror(stdout) == 0;
    return ok && (is_written || failed("standard output")) ? is_refused : 2;
}
