// The same uses of every function, compiled as C++: one text for both languages.
#include "every_function.c"  // NOLINT(bugprone-suspicious-include)
