# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(engine_words
  SOURCES engine_words.cpp
  LAYERS util xml
  LONGEST 128
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/engine_words.seeds)
target_include_directories(fuzz_engine_words PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
