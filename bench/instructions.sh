#!/bin/sh
# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# Instructions per call of every row of benchmark programs, counted by callgrind:
# instructions.sh PROGRAM... writes "COUNT PROGRAM ROW" lines. Unlike times they are the same on a
# busy machine.
set -eu

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

for program in "$@"; do
  name=$(basename "$program")
  valgrind --tool=callgrind --log-file="$folder/log" --callgrind-out-file="$folder/$name" \
    "$program" --count || { cat "$folder/log" >&2; exit 1; }
  [ -e "$folder/$name.1" ] || {
    echo "$program was built where valgrind's headers were missing: build it anew" >&2
    exit 1
  }
  # Each row of the program has left a dump of its own: 10 calls.
  awk -v program="$name" '
    /^desc: Trigger: Client Request: / { row = substr($0, 32) }
    /^summary: / && row != "" { printf "%.0f %s %s\n", $2 / 10, program, row; row = "" }
  ' $(ls "$folder/$name".* | sort -t . -k 2 -n)
  rm -f "$folder/$name"*
done
