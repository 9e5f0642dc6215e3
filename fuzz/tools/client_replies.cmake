# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(client_replies
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/client_replies.cpp
  LIBRARIES pxcl_client pxcl_printer
  LONGEST 8192
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/client_replies.dict
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/client_replies.seeds)
target_include_directories(fuzz_client_replies PRIVATE ${PROJECT_SOURCE_DIR}/tests/client)
