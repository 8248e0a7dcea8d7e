#!/bin/sh
# Prints the outcome of each test of a build, one a line: passed, failed or skipped, a blank, and its name.
#
#   sh scripts/outcomes.sh BUILD
#
# CTest runs many tests of GoogleTest in one process, see cmake/suites.cmake. BUILD/results.xml has the
# outcomes of the processes, BUILD/suites their tests and the outcomes of these. A test without an outcome
# has failed: its process ended before it. A process that fails although its tests pass, as it does where
# memory leaks, counts as a failure under its own name.
set -eu
cd "$1"
for list in suites/*.tests; do
  [ -e "$list" ] || continue
  program=${list%.tests}
  find "$program" -name '*.xml' -exec cat {} + 2>/dev/null |
    awk -v list="$list" '
      # Returns the attribute of the element on this line, or "".
      function attribute(name) {
        if (!match($0, " " name "=\"[^\"]*\"")) return ""
        return substr($0, RSTART + length(name) + 3, RLENGTH - length(name) - 4)
      }
      FILENAME == list { entry[$2] = $1; order[++count] = $2; next }
      /^ *<testcase / {
        test = attribute("classname") "." attribute("name")
        outcome[test] = attribute("result") == "completed" ? "passed" : "skipped"
      }
      /^ *<failure / { outcome[test] = "failed" }
      END {
        for (i = 1; i <= count; ++i) {
          test = order[i]
          print entry[test], (test in outcome ? outcome[test] : "failed"), test
        }
      }' "$list" -
done | awk '
  FILENAME != "results.xml" {
    print $2, $3
    known[$1] = 1
    if ($2 == "failed") failed[$1] = 1
    next
  }
  /^[[:space:]]*<testcase / {
    match($0, / name="[^"]*"/)
    name = substr($0, RSTART + 7, RLENGTH - 8)
    good = / status="run"/
    if (!good && !(name in failed)) print (/ status="disabled"/ ? "skipped" : "failed"), name
    if (good && !(name in known)) print "passed", name
  }' - results.xml
