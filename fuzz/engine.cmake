# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# By hand: fuzz_engine -dict=fuzz/engine.dict -max_len=4096 CORPUS tests/data/engine
pxcl_add_fuzzer(engine SOURCES engine.cpp LAYERS util xml SEEDS ${PROJECT_SOURCE_DIR}/tests/data/engine)
target_include_directories(fuzz_engine PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
