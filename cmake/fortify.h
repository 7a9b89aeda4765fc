/* Included ahead of what ships, which is fortified where it is optimised. A level that the user's flags
 * or the compiler define stays: some distributions have a higher one. */
#if defined(__OPTIMIZE__) && !defined(_FORTIFY_SOURCE)
#define _FORTIFY_SOURCE 2
#endif
