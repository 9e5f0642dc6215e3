# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(settings
  SOURCES settings.cpp
  LAYERS util xml keyed responses device
  LONGEST 4096
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/replies.dict
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/settings.seeds)
