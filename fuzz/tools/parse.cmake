# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(parse
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/parse.cpp
  LIBRARIES pxcl_cli
  LONGEST 4096
  DICTIONARY ${PROJECT_SOURCE_DIR}/fuzz/replies.dict
  SEEDS ${PROJECT_SOURCE_DIR}/tests/data/replies)
