#include "system/terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <charconv>
#include <cstdlib>
#include <string_view>

namespace tool {

namespace {

constexpr size_t usual_columns = 80;

/// Returns the size of the terminal; zeros where the descriptor is none.
winsize terminal_size(int descriptor = STDOUT_FILENO) {
  winsize size{};
  if (isatty(descriptor) == 0 || ioctl(descriptor, TIOCGWINSZ, &size) != 0) return {};
  return size;
}

/// Returns the number in a variable of the environment; 0 where it holds none.
size_t number_in(const char *variable) {
  const char *const value = std::getenv(variable);
  if (value == nullptr) return 0;
  const std::string_view text(value);
  size_t number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && stop == text.data() + text.size() ? number : 0;
}

}  // namespace

bool takes_colours() {
  const char *const no_color = std::getenv("NO_COLOR");
  const char *const terminal = std::getenv("TERM");
  return isatty(STDOUT_FILENO) != 0 && (no_color == nullptr || *no_color == '\0') &&
         (terminal == nullptr || std::string_view(terminal) != "dumb");
}

size_t page_columns() {
  constexpr size_t narrowest = 40;
  constexpr size_t widest = 10000;
  size_t columns = number_in("COLUMNS");
  if (columns == 0) columns = terminal_size().ws_col;
  if (columns == 0) columns = usual_columns;
  return columns < narrowest ? narrowest : columns > widest ? widest : columns;
}

size_t terminal_rows() { return terminal_size().ws_row; }

size_t message_columns() {
  if (isatty(STDERR_FILENO) == 0) return 0;
  const size_t columns = terminal_size(STDERR_FILENO).ws_col;
  return columns == 0 ? usual_columns : columns;
}

}  // namespace tool
