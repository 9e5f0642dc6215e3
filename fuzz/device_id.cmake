# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(device_id
  SOURCES device_id.cpp
  LAYERS util xml keyed responses device
  LONGEST 1024
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/device_id.dict
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/device_id.seeds)
