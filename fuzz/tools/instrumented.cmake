# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# The tools are built with marks in their code, so that the targets see what they reach.
foreach(tool pxcl_client pxcl_printer pxcl_virtual_channel pxcl_cli)
  target_compile_options(${tool} PRIVATE -fsanitize=fuzzer-no-link)
endforeach()
