#!/bin/sh
# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# Instructions per call, by callgrind: instructions.sh ENGINE [CASE...]. What a run takes beside the
# calls is cancelled out by counting two runs of different length. Writes "CASE NAME COUNT" lines.
set -eu

engine=$1
shift
[ $# -gt 0 ] || set -- status job_list capability replace

collected() { # CASE/NAME CALLS: instructions of the whole program
  valgrind --tool=callgrind --callgrind-out-file=/dev/null "$engine" --once "$1" "$2" 2>&1 |
    sed -n 's/.*Collected : \([0-9]*\).*/\1/p'
}

for case in "$@"; do
  for name in engine rapidxml pugixml expat libxml2 floor; do
    few=$(collected "$case/$name" 5)
    many=$(collected "$case/$name" 25)
    echo "$case $name $(((many - few) / 20))"
  done
done
