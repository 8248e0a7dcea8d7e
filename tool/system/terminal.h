// The terminal that standard output may be.
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

}  // namespace tool

#endif
