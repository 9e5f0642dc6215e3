# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(profiles
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/profiles.cpp
  LIBRARIES pxcl_printer pxcl::pxcl
  LONGEST 4096
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/profiles.dict
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/profiles.seeds)
