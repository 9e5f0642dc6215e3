# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# By hand: fuzz_texts -max_len=4096 CORPUS fuzz/texts.seeds
pxcl_add_fuzzer(texts
  SOURCES texts.cpp
  LAYERS util xml keyed responses commands api
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/texts.seeds)
