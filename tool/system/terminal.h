// The terminals that standard output and standard error may be.
#ifndef ORVELASN1_TOOL_SYSTEM_TERMINAL_H
#define ORVELASN1_TOOL_SYSTEM_TERMINAL_H

#include <cstddef>

namespace tool {

/// Whether standard output is a terminal that wants colours: NO_COLOR is not set, and TERM does not
/// say "dumb".
bool takes_colours();

/// Returns the number of columns for a page: COLUMNS of the environment, else those of the
/// terminal, else 80.
size_t page_columns();

/// Returns the number of rows of the terminal; 0 where standard output is none, or its size is not
/// known.
size_t terminal_rows();

/// Returns the number of columns of the terminal that standard error is, 80 where it does not say
/// how many; 0 where standard error is none.
size_t message_columns();

}  // namespace tool

#endif
