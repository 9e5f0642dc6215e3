# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(engine
  SOURCES engine.cpp
  LAYERS util xml
  LONGEST 4096
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/engine.dict
  SEEDS ${PROJECT_SOURCE_DIR}/tests/data/engine)
target_include_directories(fuzz_engine PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
