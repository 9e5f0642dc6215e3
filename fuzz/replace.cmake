# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(replace
  SOURCES replace.cpp
  LAYERS util xml keyed
  LONGEST 4096
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/engine.dict
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/replace.seeds)
