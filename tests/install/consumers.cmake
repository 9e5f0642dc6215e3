# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_match pattern)
  if(NOT output MATCHES "${pattern}")
    message(FATAL_ERROR "expected ${pattern}, got: ${output}")
  endif()
endfunction()

# The tree is moved after its installation: nothing in it may know where it was installed.
set(prefix ${WORK}/moved)
file(REMOVE_RECURSE ${prefix} ${WORK}/installed)
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/installed)
file(RENAME ${WORK}/installed ${prefix})

# Public headers only.
file(GLOB headers RELATIVE ${prefix}/include/pxcl ${prefix}/include/pxcl/*)
string(JOIN " " output ${headers})
expect_match("^clxml.h commands.h device.h dictionaries.h keyed.h kwvs.h pxcl.h pxcl_export.h responses.h$")

# find_package: the examples as a project of their own, with either library.
foreach(library pxcl::pxcl pxcl::pxcl_static)
  string(MAKE_C_IDENTIFIER ${library} name)
  set(tree ${WORK}/${name})
  file(REMOVE_RECURSE ${tree})
  run(${CMAKE_COMMAND} -S ${EXAMPLES} -B ${tree} -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_C_COMPILER=${CC} -DCMAKE_CXX_COMPILER=${CXX} -DPXCL_EXAMPLES_LIBRARY=${library})
  run(${CMAKE_COMMAND} --build ${tree})
  run(${CMAKE_CTEST_COMMAND} --test-dir ${tree} --output-on-failure)
  expect_match("100% tests passed")
endforeach()
find_package(pxcl 2.0 QUIET PATHS ${prefix} NO_DEFAULT_PATH)
if(pxcl_FOUND OR NOT pxcl_CONSIDERED_VERSIONS STREQUAL VERSION)
  message(FATAL_ERROR "version 2.0 was asked for: ${pxcl_FOUND}, ${pxcl_CONSIDERED_VERSIONS}")
endif()

# pkg-config, with the shared library; then the archive, which a C compiler links without the C++ runtime.
find_program(pkg_config pkg-config REQUIRED)
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
run(${pkg_config} --modversion pxcl)
expect_match("^${VERSION}$")
run(${pkg_config} --cflags --libs pxcl)
separate_arguments(flags UNIX_COMMAND "${output}")
run(${CC} -std=c11 ${EXAMPLES}/status_monitor.c -o ${WORK}/monitor ${flags})
run(${WORK}/monitor ${EXAMPLES}/status_reply.xml 00000042)
expect_match("status: stopped.*job: +00000042")
run(${CXX} -std=c++20 ${EXAMPLES}/print_filter.cpp -o ${WORK}/filter ${flags})
run(${WORK}/filter ${EXAMPLES}/capability_reply.xml)
expect_match("StartJob.*EndJob")
run(${CC} -std=c11 ${EXAMPLES}/status_monitor.c -o ${WORK}/monitor_static
  -I${prefix}/include/pxcl ${prefix}/${LIBDIR}/libpxcl.a)
run(${WORK}/monitor_static ${EXAMPLES}/status_reply.xml 00000042)
expect_match("status: stopped.*job: +00000042")
