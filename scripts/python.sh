#!/bin/sh
# Builds the Python package against the libraries of the preset release, and runs its tests.
#
#   sh scripts/python.sh
set -eu
cd "$(dirname "$0")/.."
. scripts/lib.sh

has_module() {
  /usr/bin/python3 -c "import $1"
}

want_python() {
  want python3-dev test -e "$(/usr/bin/python3 -c 'import sysconfig; print(sysconfig.get_path("include"))')/Python.h"
  want python3-cffi has_module cffi
  want python3-setuptools has_module setuptools
  want python3-pytest has_module pytest
  want python3-cryptography has_module cryptography
  want mypy has mypy
  want openssl has openssl
}

provide want_build_tools want_tool_libraries want_certificates want_python

cmake --preset release -D ORVELASN1_PYTHON=ON
cmake --build --preset release --target orvelasn1_python orvelasn1_tool
ctest --preset release -R '^Python' --output-on-failure
