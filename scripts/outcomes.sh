#!/bin/sh
# Says what came of each test of a build, a line each: passed, failed or skipped, a blank, and its name.
#
#   sh scripts/outcomes.sh BUILD
#
# CTest runs the tests of GoogleTest many to a process, see cmake/suites.cmake. BUILD/results.xml says
# what came of its processes, BUILD/suites which tests they hold and what came of these. A test of
# which nothing is known, because its process came to an end before it, has failed. So has, under its
# own name, a process that failed though none of its tests did, as it does where memory leaks.
set -eu
cd "$1"
for list in suites/*.tests; do
  [ -e "$list" ] || continue
  program=${list%.tests}
  find "$program" -name '*.xml' -exec cat {} + 2>/dev/null |
    awk -v list="$list" '
      # The attribute of the element on this line, or nothing.
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
