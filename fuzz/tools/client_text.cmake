# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

find_package(pugixml REQUIRED)
pxcl_add_fuzzer(client_text
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/client_text.cpp
  LIBRARIES pxcl_client pxcl_printer pugixml::pugixml
  LONGEST 512
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/client_text.dict
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/client_text.seeds)
