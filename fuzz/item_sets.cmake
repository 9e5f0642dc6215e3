# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(item_sets
  SOURCES item_sets.cpp
  LAYERS util xml keyed
  LONGEST 2048
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/item_sets.seeds)
