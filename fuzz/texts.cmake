# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(texts
  SOURCES texts.cpp
  LAYERS util xml keyed responses commands api
  LONGEST 4096
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/texts.seeds)
