# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# By hand: fuzz_replies_capability -dict=fuzz/replies.dict -max_len=4096 CORPUS tests/data/replies
foreach(family Head Status JobList Capability Support)
  string(TOLOWER ${family} name)
  pxcl_add_fuzzer(replies_${name}
    SOURCES replies.cpp ${PROJECT_SOURCE_DIR}/tests/responses/parsers.cpp
    LAYERS util xml keyed responses
    SEEDS ${PROJECT_SOURCE_DIR}/tests/data/replies)
  target_include_directories(fuzz_replies_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/responses)
  target_compile_definitions(fuzz_replies_${name} PRIVATE FAMILY=k${family})
endforeach()
