# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

pxcl_add_fuzzer(printer_requests
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/printer_requests.cpp
  LIBRARIES pxcl_printer pxcl_client
  LONGEST 8192
  DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/printer_requests.dict
  SEEDS ${CMAKE_CURRENT_LIST_DIR}/printer_requests.seeds)
