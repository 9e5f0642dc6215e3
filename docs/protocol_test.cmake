# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# What the pages show is what the tests run. The command and the reply of protocol.md are those that the library is tested with, white space aside.
function(expect_same block file)
  file(READ ${file} text)
  string(REGEX REPLACE "<!--[^>]*-->" "" text "${text}")
  foreach(side block text)
    string(REGEX REPLACE ">[ \n]+<" "><" ${side} "${${side}}")
    string(STRIP "${${side}}" ${side})
  endforeach()
  if(NOT block STREQUAL text)
    message(FATAL_ERROR "protocol.md differs from ${file}")
  endif()
endfunction()

file(READ ${ROOT}/docs/protocol.md page)
string(REPLACE ";" "" page "${page}")
string(REGEX MATCHALL "```xml\n[^`]+```" blocks "${page}")
list(TRANSFORM blocks REPLACE "```(xml\n)?" "")
list(GET blocks 0 command)
list(GET blocks 1 reply)
expect_same("${command}" ${ROOT}/tests/data/commands/GetStatus_print_job.xml)
expect_same("${reply}" ${ROOT}/examples/status_reply.xml)

# So is the program that the readme shows.
file(READ ${ROOT}/README.md readme)
file(READ ${ROOT}/examples/three_paths.c program)
string(FIND "${program}" "#include" begin)
string(SUBSTRING "${program}" ${begin} -1 program)
string(FIND "${readme}" "${program}" found)
if(found EQUAL -1)
  message(FATAL_ERROR "README.md differs from examples/three_paths.c")
endif()
