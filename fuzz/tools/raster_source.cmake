# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

find_package(Cups REQUIRED)
find_package(fmt REQUIRED)

pxcl_add_fuzzer(raster_source
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/raster_source.cpp $<FILTER:$<TARGET_OBJECTS:pxcl_command>,EXCLUDE,/main>
  LIBRARIES pxcl_virtual_channel Cups::Cups fmt::fmt
  LONGEST 4096
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/raster_source.seeds)
