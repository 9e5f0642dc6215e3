# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# Warnings and sanitizers for every target of this tree.
add_compile_options(-Wall -Wextra -Wconversion -Wshadow -Werror)
if(PXCL_SANITIZE)
  add_compile_options(-fsanitize=${PXCL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${PXCL_SANITIZE})
  # Its runtime is a C++ program's alone, and C programs use the library too.
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_compile_options(-fno-sanitize=function)
  endif()
endif()
