# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

foreach(family Head Status JobList Capability Support)
  string(TOLOWER ${family} name)
  pxcl_add_fuzzer(replies_${name}
    SOURCES replies.cpp ${PROJECT_SOURCE_DIR}/tests/responses/parsers.cpp
    LAYERS util xml keyed responses
    LONGEST 4096
    DICTIONARY ${CMAKE_CURRENT_LIST_DIR}/replies.dict
    SEEDS ${PROJECT_SOURCE_DIR}/tests/data/replies)
  target_include_directories(fuzz_replies_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/responses)
  target_compile_definitions(fuzz_replies_${name} PRIVATE FAMILY=k${family})
endforeach()
