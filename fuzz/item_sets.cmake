# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# By hand: fuzz_item_sets -max_len=2048 CORPUS fuzz/item_sets.seeds
pxcl_add_fuzzer(item_sets
  SOURCES item_sets.cpp
  LAYERS util xml keyed
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/item_sets.seeds)
