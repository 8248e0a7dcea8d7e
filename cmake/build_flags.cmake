# Warnings and hardening that every target of the project shares, as two interface targets.
include_guard()

# Warnings. Clang's -Weverything is on, except for what does not fit this code:
set(clang_exceptions
    -Wno-c++98-compat # the code is C++20
    -Wno-c++98-compat-pedantic
    -Wno-c++20-compat
    -Wno-padded # the layout of the records is the public interface
    -Wno-unsafe-buffer-usage # newer compilers only; the cursor is where buffers are guarded
    -Wno-unknown-warning-option # older compilers do not know the line above
    -Wno-documentation-unknown-command
    -Wno-disabled-macro-expansion) # the C runtime's own macros
add_library(orvelasn1_warnings INTERFACE)
target_compile_options(
  orvelasn1_warnings
  INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow
            -Wcast-qual -Wcast-align -Wformat=2 -Wundef>
            $<$<CXX_COMPILER_ID:Clang>:-Weverything ${clang_exceptions}>
            $<$<BOOL:${ORVELASN1_WERROR}>:-Werror>)

# The same for tests. GoogleTest's macros make globals with constructors.
add_library(orvelasn1_test_warnings INTERFACE)
target_link_libraries(orvelasn1_test_warnings INTERFACE orvelasn1_warnings)
target_compile_options(
  orvelasn1_test_warnings
  INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-global-constructors
            -Wno-exit-time-destructors
            -Wno-used-but-marked-unused
            -Wno-weak-vtables>)

# Hardening, for libraries that are the first to read octets from attackers. They throw nothing, but keep
# their unwind tables, a sixth of their size: without them a backtrace from an element function that a
# program hands to a list ends at the library.
add_library(orvelasn1_hardening INTERFACE)
target_compile_options(
  orvelasn1_hardening INTERFACE -fstack-protector-strong $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions
                                -fno-rtti> -fno-semantic-interposition -fasynchronous-unwind-tables)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64|i.86")
  # The code marks its branch targets. The library's note promises only the shadow stack: the C runtime's
  # own start files, which are linked in, have no such marks on Debian.
  target_compile_options(orvelasn1_hardening INTERFACE -fcf-protection=full)
  target_link_options(orvelasn1_hardening INTERFACE -Wl,-z,shstk)
endif()
if(NOT ORVELASN1_SANITIZED)
  target_compile_options(orvelasn1_hardening
                         INTERFACE "SHELL:-include ${CMAKE_CURRENT_LIST_DIR}/fortify.h")
endif()
target_link_options(orvelasn1_hardening INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack
                    -Wl,--as-needed -Wl,-Bsymbolic-functions)
