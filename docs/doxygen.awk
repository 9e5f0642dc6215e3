# SPDX-FileCopyrightText: 2026 The pxcl developers
# SPDX-License-Identifier: Apache-2.0

# Shows the headers to Doxygen: their comments are plain text, so nothing in them may be taken for markup. The first
# comment is about the file, one behind code is about what stands before it, one on its own about what follows, up to
# the next empty line. Lines of a table (a status and what it means, or an indented line) keep their shape.

function escape(text) {
  sub(/^ *- /, "\036 ", text)
  gsub(/[\\@&#<>%"$]/, "\\\\&", text)
  while (match(text, /`[^`]*`/))
    text = substr(text, 1, RSTART - 1) "<code>" substr(text, RSTART + 1, RLENGTH - 2) "</code>" substr(text, RSTART + RLENGTH)
  sub(/\036/, "  \\&bull;", text)
  return text
}

# The comment about a file is prose in numbered points: there only what stands further in is a table.
function is_row(text, kind) {
  if (kind != "") return text ~ /^      / || text ~ /^ *-?[0-9]+  /
  return text ~ /^ *[^ ]+  +[^ ]/ || text ~ /^  /
}

# Takes a comment of its own, without its marks, and gives its lines as Doxygen wants them.
function convert(text, kind,   lines, n, i, line, row, result) {
  n = split(text, lines, "\n")
  row = 0
  result = "/** " kind "\n"
  for (i = 1; i <= n; i++) {
    line = lines[i]
    sub(/^ *\* ?/, "", line)
    if (line ~ /SPDX-/ || line ~ /clang-format/) continue
    if (is_row(line, kind) != row) {
      row = !row
      result = result (row ? "<pre>\n" : "</pre>\n")
    }
    if (line ~ /^ *([0-9]+\.|-) /) result = result "\n"
    result = result escape(line) "\n"
  }
  return result (row ? "</pre>\n" : "") "*/\n"
}

function finish_block() {
  if (block ~ /^ *-+ /) {  # a heading of a section
    printf "%s", "\n"
  } else if (!file_told) {
    plain = block
    gsub(/[^\n]*(SPDX-|clang-format)[^\n]*/, "", plain)
    gsub(/[ *\n]/, "", plain)
    if (plain != "") {
      printf "%s", convert(block, "@file")
      file_told = 1
    }
  } else if (block !~ /clang-format/) {
    doc = convert(block, "")
    held = block
  }
}

# What no declaration follows is about the file as well.
held != "" && !in_block {
  told = !/^ *$/
  printf "%s", told ? doc : convert(held, "@file")
  held = ""
}

in_block {
  if (index($0, "*/")) {
    block = block "\n" substr($0, 1, index($0, "*/") - 1)
    in_block = 0
    finish_block()
  } else {
    block = block "\n" $0
  }
  next
}
in_tail {
  line = $0
  sub(/^ *\*? */, "", line)
  if (index(line, "*/")) {
    in_tail = 0
    sub(/ *\*\//, "", line)
    print escape(line) " */"
  } else {
    print escape(line)
  }
  next
}

/^ *\/\*/ && !/\*\/ *[^ ]/ {
  block = $0
  sub(/^ *\/\* ?/, "", block)
  if (index(block, "*/")) {
    block = substr(block, 1, index(block, "*/") - 1)
    finish_block()
  } else {
    in_block = 1
  }
  next
}

/^ *$/ { told = 0; doc = ""; print; next }

{
  # Several declarations under one comment share it.
  if (/^PXCL_API/) {
    if (!told && doc != "") printf "%s", doc
    told = 0
  }
  at = index($0, "/*")
  if (!at) { print; next }
  rest = substr($0, at + 2)
  if (index(rest, "*/")) {
    sub(/ *\*\/.*/, "", rest)
    print substr($0, 1, at - 1) "/**<" escape(rest) " */"
  } else {
    print substr($0, 1, at - 1) "/**<" escape(rest)
    in_tail = 1
  }
}
