# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# A short, repeatable run of one fuzz target: TARGET, RUNS, ARGUMENTS, SEEDS, FOLDER (made anew).
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER}/corpus)
execute_process(
  COMMAND ${TARGET} ${ARGUMENTS} -runs=${RUNS} -seed=1 -timeout=20 -print_final_stats=1 -artifact_prefix=${FOLDER}/ ${FOLDER}/corpus ${SEEDS}
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${TARGET} failed: ${result}; the input is in ${FOLDER}")
endif()
