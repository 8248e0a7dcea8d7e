#!/bin/bash -eu
# Builds the fuzz targets of the libraries for a service that fuzzes. The service sets the compilers, their
# flags, LIB_FUZZING_ENGINE, and the folders SRC, WORK and OUT. Each target comes with its seeds and, where
# there is one, its dictionary.
cmake -S "$SRC/orvelasn1" -B "$WORK/build" -G Ninja -D CMAKE_BUILD_TYPE=Debug -D BUILD_SHARED_LIBS=OFF \
  -D ORVELASN1_TOOL=OFF -D ORVELASN1_FUZZ=ON -D ORVELASN1_SANITIZED=ON \
  -D ORVELASN1_FUZZ_ENGINE="$LIB_FUZZING_ENGINE"
cmake --build "$WORK/build" --target fuzz
FUZZ_SEEDS=$WORK/build/bin/fuzz_seeds sh "$SRC/orvelasn1/scripts/seeds.sh" "$WORK/seeds"

for program in "$WORK"/build/bin/fuzz_*; do
  target=${program##*/}
  group=${target#fuzz_}
  if [ "$group" = seeds ]; then continue; fi
  cp "$program" "$OUT"
  printf '[libfuzzer]\nmax_len = 4096\ntimeout = 10\ndetect_leaks = 0\n[environment]\nTZ = UTC\n' >"$OUT/$target.options"
  if [ -d "$WORK/seeds/$group" ]; then
    (cd "$WORK/seeds/$group" && zip -q -r "$OUT/${target}_seed_corpus.zip" .)
  fi
  if [ -f "$SRC/orvelasn1/tests/fuzz/$group.dict" ]; then
    cp "$SRC/orvelasn1/tests/fuzz/$group.dict" "$OUT/$target.dict"
  fi
done
