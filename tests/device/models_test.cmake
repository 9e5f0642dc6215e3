# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# Makes the tables of a small catalogue, then spoils one list and expects a refusal with that list's path.

function(make_tables status message)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -DCATALOGUE=${WORK} "-DTABLES=FIRST=2;SECOND=3" -DOUTPUT=${WORK}/tables.inc -P ${GENERATOR}
    RESULT_VARIABLE result ERROR_VARIABLE text)
  set(${status} ${result} PARENT_SCOPE)
  set(${message} "${text}" PARENT_SCOPE)
endfunction()

set(short "A1series\nB2series\n")
set(twice "A1series\nB2series\nA1series\n")
set(blank "A1series\nB 2series\nC3series\n")
set(suffix "A1series\nB2\nC3series\n")

file(REMOVE_RECURSE ${WORK})
file(WRITE ${WORK}/FIRST.txt "# a note\nZ9series\nZ8series\n")
file(WRITE ${WORK}/SECOND.txt "A1series\nB2series\n# a note\nC3series")
make_tables(status message)
if(EXISTS ${WORK}/tables.inc)
  file(READ ${WORK}/tables.inc tables)
endif()
if(NOT status EQUAL 0 OR NOT tables MATCHES "FIRST.*Z9series.*Z8series.*nullptr.*SECOND.*A1series.*B2series.*C3series.*nullptr")
  message(FATAL_ERROR "a good catalogue: ${status}\n${message}${tables}")
endif()

if(FAULT STREQUAL "missing")
  file(REMOVE ${WORK}/SECOND.txt)
else()
  file(WRITE ${WORK}/SECOND.txt "${${FAULT}}")
endif()
make_tables(status message)
if(status EQUAL 0 OR NOT message MATCHES "SECOND\\.txt")
  message(FATAL_ERROR "fault '${FAULT}': ${status}\n${message}")
endif()
