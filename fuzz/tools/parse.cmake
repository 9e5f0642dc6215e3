# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

find_package(Cups REQUIRED)
find_package(fmt REQUIRED)
find_package(nlohmann_json REQUIRED)

# The command's own objects, all but the one that holds its main function.
pxcl_add_fuzzer(parse
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/parse.cpp $<FILTER:$<TARGET_OBJECTS:pxcl_command>,EXCLUDE,/main>
  LIBRARIES pxcl_virtual_channel Cups::Cups fmt::fmt nlohmann_json::nlohmann_json
  LONGEST 4096
  DICTIONARY ${PROJECT_SOURCE_DIR}/fuzz/replies.dict
  SEEDS ${PROJECT_SOURCE_DIR}/tests/data/replies)
