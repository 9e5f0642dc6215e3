# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(builders
  SOURCES builders.cpp
  LAYERS util xml keyed responses commands
  LONGEST 4096
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/replies.dict
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/builders.seeds)
target_include_directories(fuzz_builders PRIVATE ${PROJECT_SOURCE_DIR}/src/device ${PROJECT_SOURCE_DIR}/src/api)
