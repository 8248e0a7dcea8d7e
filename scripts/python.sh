#!/bin/sh
# Builds the Python package against the libraries of the preset release, and runs its tests. Then makes a wheel of the
# same sources, and runs some of them against what is in it.
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
  want python3-pip has_module pip
  want python3-wheel has_module wheel
  want python3-pytest has_module pytest
  want python3-cryptography has_module cryptography
  want mypy has mypy
  want openssl has openssl
}

provide want_build_tools want_tool_libraries want_certificates want_python

cmake --preset release -D ORVELASN1_PYTHON=ON
cmake --build --preset release --target orvelasn1_python orvelasn1_tool
ctest --preset release -R '^Python' --output-on-failure

say "=== The wheel"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp -r python "$scratch/python"
libraries=$PWD/build/release/lib
ORVELASN1_INCLUDE=$PWD/include ORVELASN1_LIB=$libraries /usr/bin/python3 -m pip wheel -q --no-index \
  --no-build-isolation --no-deps --wheel-dir "$scratch" "$scratch/python"
/usr/bin/python3 -m pip install -q --root-user-action ignore --no-index --no-deps \
  --target "$scratch/installed" "$scratch"/*.whl
LD_LIBRARY_PATH=$libraries PYTHONPATH=$scratch/installed /usr/bin/python3 -m pytest -q -p no:cacheprovider \
  "$scratch/python/tests/test_decode.py" "$scratch/python/tests/test_views.py"
