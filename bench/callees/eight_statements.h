/* The body that log statements are measured in: each source defines STATEMENT(text) its own way. */
#ifndef EIGHT_STATEMENTS_H
#define EIGHT_STATEMENTS_H

#define EIGHT_STATEMENTS \
    STATEMENT("port");   \
    a += b;              \
    STATEMENT("lag");    \
    a += b;              \
    STATEMENT("vport");  \
    a += b;              \
    STATEMENT("vlag");   \
    a += b;              \
    STATEMENT("tunnel"); \
    a += b;              \
    STATEMENT("trap");   \
    a += b;              \
    STATEMENT("route");  \
    a += b;              \
    STATEMENT("group");  \
    a += b;

#endif
