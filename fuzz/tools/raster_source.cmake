# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(raster_source
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/raster_source.cpp
  LIBRARIES pxcl_cli
  LONGEST 4096
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/raster_source.seeds)
