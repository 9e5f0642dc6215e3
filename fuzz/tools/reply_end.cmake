# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

find_package(pugixml REQUIRED)
pxcl_add_fuzzer(reply_end
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/reply_end.cpp
  LIBRARIES pxcl_client pxcl_printer pugixml::pugixml
  LONGEST 1024
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/reply_end.dict
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/reply_end.seeds)
