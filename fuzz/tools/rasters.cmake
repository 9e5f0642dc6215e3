# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(rasters
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/rasters.cpp
  LIBRARIES pxcl_printer
  LONGEST 4096
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/rasters.seeds)
