/*
 * Included before everything else. The C library checks the sizes that it knows in every optimised
 * build, unless the user or the distribution has chosen how.
 */
#if defined(__OPTIMIZE__) && !defined(_FORTIFY_SOURCE)
#define _FORTIFY_SOURCE 2
#endif
