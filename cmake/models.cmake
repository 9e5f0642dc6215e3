# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# Makes the tables of model names:
#   cmake -DCATALOGUE=<folder> -DTABLES=<name>=<count>;... -DOUTPUT=<file> -P models.cmake
# A list is <folder>/<name>.txt: one name a line, in the order of the table; a line that begins with # is a comment.

function(read_names file result)
  if(NOT EXISTS ${file})
    message(FATAL_ERROR "${file}: no such model list")
  endif()
  file(STRINGS ${file} lines REGEX "^[^#]")
  foreach(name IN LISTS lines)
    if(NOT name MATCHES "^[A-Za-z0-9+._-]+series$")
      message(FATAL_ERROR "${file}: '${name}' is no model name (no blanks, ends in \"series\")")
    endif()
  endforeach()
  set(${result} "${lines}" PARENT_SCOPE)
endfunction()

function(check_count file names count)
  list(LENGTH names found)
  if(NOT found EQUAL count)
    message(FATAL_ERROR "${file}: ${found} names, and the table has ${count}")
  endif()
  list(REMOVE_DUPLICATES names)
  list(LENGTH names distinct)
  if(NOT distinct EQUAL count)
    message(FATAL_ERROR "${file}: a name stands there twice")
  endif()
endfunction()

set(text "// Made from the model catalogue by models.cmake.\n")
foreach(entry IN LISTS TABLES)
  string(REGEX MATCH "^(.+)=(.+)$" entry "${entry}")
  set(table ${CMAKE_MATCH_1})
  set(count ${CMAKE_MATCH_2})
  set(file ${CATALOGUE}/${table}.txt)
  read_names(${file} names)
  check_count(${file} "${names}" ${count})
  list(TRANSFORM names REPLACE "(.+)" "    \"\\1\",\n")
  string(JOIN "" rows ${names})
  string(APPEND text "constexpr const char* const ${table}[] = {\n${rows}    nullptr,\n};\n")
endforeach()
file(CONFIGURE OUTPUT ${OUTPUT} CONTENT "${text}" @ONLY)
