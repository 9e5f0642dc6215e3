/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 */
#ifndef KWVS_H
#define KWVS_H

/* Utility primitives: zero-filled blocks, byte ranges, bounded strings and decimal conversion.
 *
 * 1. Every function is total: a null pointer or an empty length never crashes. Misuse is
 *    KWVS_BAD_ARGUMENT where the result is a status, null where it is a pointer, and no effect
 * where there is none.
 * 2. Functions whose name ends in X take a length as an unsigned 64-bit size; the plain ones take a
 *    signed 32-bit length, and anything below 1 is empty. Where addresses have 32 bits, a size that
 *    no memory can have is as good as 0, but that such ranges are never equal.
 * 3. Copies and appends take the source first and the destination second.
 * 4. There is no state: any thread may call any function.
 */

#include <stdint.h>

#include "pxcl_export.h"

PXCL_BEGIN_DECLS

enum {
  KWVS_OK = 0,
  KWVS_BAD_ARGUMENT = -128,    /* null pointer, unknown selector, mode or flag */
  KWVS_BUFFER_TOO_SMALL = -158 /* KWVS4sToString only */
};

/* What KWVSStringTo4s returns on error. */
#define KWVS_NO_NUMBER INT32_MIN

/* Byte orders of KWVSCheckEndian. */
enum {
  KWVS_ENDIAN_HOST = 0, /* taken to be little-endian */
  KWVS_ENDIAN_BIG = 1,
  KWVS_ENDIAN_LITTLE = 2
};

/* Flags of KWVS4sToString: one base, perhaps one layout, perhaps KWVS_NO_TERMINATOR. */
enum {
  KWVS_BASE_DECIMAL = 1, /* signed; the other bases print the value as unsigned */
  KWVS_BASE_OCTAL = 2,
  KWVS_BASE_HEXADECIMAL = 3, /* upper-case digits */
  KWVS_BASE_BINARY = 4,
  KWVS_NO_TERMINATOR = 16,
  KWVS_PAD_BLANKS = 64, /* fills the whole buffer: blanks, minus sign, digits */
  KWVS_PAD_ZEROS = 96   /* fills the whole buffer: minus sign, zeros, digits */
};

/* Modes of KWVSStringTo4s. */
enum {
  KWVS_READ_BY_PREFIX = 0, /* "0x" or "0X": 16; a leading "0": 8; else 10 */
  KWVS_READ_DECIMAL = 1,
  KWVS_READ_OCTAL = 2,
  KWVS_READ_HEXADECIMAL = 3, /* with or without "0x" or "0X" */
  KWVS_READ_BINARY = 4
};

/* The version of these primitives, "ver2.00 (2009_0518)". */
PXCL_API extern const char kwvs_version[20];

/* Stores the system's value for `selector` in `value`: 3 for selector 1, else 0.
 * Returns KWVS_OK for selector 1; KWVS_BAD_ARGUMENT for any other, and for a null `value`.
 */
PXCL_API int32_t KWVSGetSystemInfo(int32_t selector, uint32_t* value);

/* ---- Blocks: the caller owns what it asked for and gives it back once. ---- */

/* A zero-filled block of `size` bytes, to be given back with KWVSDisposeHNDL; null when `size` is
 * below 1 or memory is short.
 */
PXCL_API void* KWVSNewHNDL(int32_t size);

/* Frees the block in the variable `*handle` (a `void *`, by its address) and sets the variable to
 * null, so that a second call does nothing. A null address does nothing.
 */
PXCL_API void KWVSDisposeHNDL(void** handle);

/* Both return `handle` unchanged: blocks do not move. */
PXCL_API void* KWVSLockHNDL(void* handle);
PXCL_API void* KWVSUnlockHNDL(void* handle);

/* A zero-filled block of `size` bytes, to be given back with KWVSDisposePTR; null when `size` is
 * below 1 (0 in the X form) or memory is short.
 */
PXCL_API void* KWVSNewPTR(int32_t size);
PXCL_API void* KWVSNewPTRX(uint64_t size);

/* Frees a block; null is ignored. The two are the same. */
PXCL_API void KWVSDisposePTR(void* block);
PXCL_API void KWVSDisposePTRX(void* block);

/* ---- Byte order ---- */

/* Whether data must be swapped between two byte orders (KWVS_ENDIAN_...).
 * Returns 1 when the orders differ, 0 when they match, KWVS_BAD_ARGUMENT when either is unknown.
 */
PXCL_API int32_t KWVSCheckEndian(int32_t source, int32_t target);

/* Reverses the bytes of `count` units of `unit` bytes (2 or 4) in place; `data` needs no alignment.
 * Does nothing for null data, a count below 1 or any other unit.
 */
PXCL_API void KWVSSwapData(void* data, int32_t unit, int32_t count);

/* ---- Byte ranges, lengths in bytes ---- */

/* Copies `length` bytes; the ranges may overlap in either direction. */
PXCL_API void KWVSCopyData(const void* source, void* destination, int32_t length);
PXCL_API void KWVSCopyDataX(const void* source, void* destination, uint64_t length);

/* Fills `length` bytes with `value`. */
PXCL_API void KWVSSetData(void* destination, uint8_t value, int32_t length);
PXCL_API void KWVSSetDataX(void* destination, uint8_t value, uint64_t length);

/* Returns 1 when the first `length` bytes are equal (an empty length is), 0 when not,
 * KWVS_BAD_ARGUMENT when either pointer is null.
 */
PXCL_API int32_t KWVSCompData(const void* first, const void* second, int32_t length);
PXCL_API int32_t KWVSCompDataX(const void* first, const void* second, uint64_t length);

/* The first (forward) or last (reverse) byte equal to `value`; null when there is none, `data` is
 * null, `length` is 0 or the range wraps around the address space.
 */
PXCL_API const void* KWVSForwardSearchByte(const void* data, uint64_t length, uint8_t value);
PXCL_API const void* KWVSReverseSearchByte(const void* data, uint64_t length, uint8_t value);

/* The first (forward) or last (reverse) place where `pattern` stands in `data`; null when there is
 * none, a pointer is null, a length is 0, the pattern is longer than the data or the range wraps
 * around the address space.
 */
PXCL_API const void* KWVSForwardSearchData(const void* data, uint64_t length, const void* pattern,
                                           uint64_t patternLength);
PXCL_API const void* KWVSReverseSearchData(const void* data, uint64_t length, const void* pattern,
                                           uint64_t patternLength);

/* ---- Strings: 8-bit, ended by a zero byte; bytes compare as unsigned ---- */

/* Returns 0 when equal, 1 when `first` is greater, -1 when it is smaller (a beginning of the other
 * is), KWVS_BAD_ARGUMENT when either is null.
 */
PXCL_API int32_t KWVSCompString(const char* first, const char* second);

/* Returns the number of bytes before the terminator; KWVS_BAD_ARGUMENT for null. */
PXCL_API int32_t KWVSGetLenOfString(const char* string);

/* Copies `source` with its terminator; the caller sizes the destination.
 * Returns the number of bytes without the terminator; KWVS_BAD_ARGUMENT, and nothing written, when
 * either is null.
 */
PXCL_API int32_t KWVSCopyString(const char* source, char* destination);

/* Appends `source` to the string in `destination`; the caller sizes the destination.
 * Returns the new length of `destination`; KWVS_BAD_ARGUMENT, and nothing written, when either is
 * null.
 */
PXCL_API int32_t KWVSCatString(const char* source, char* destination);

/* ---- Numbers ---- */

/* Writes `value` as text of the given base, layout and termination (see the flags above).
 * Returns the number of bytes written, the terminator counted if there is one;
 *   KWVS_BAD_ARGUMENT      null buffer, size 0, unknown base or layout
 *   KWVS_BUFFER_TOO_SMALL  `size` is below sign, digits and terminator; nothing is written. It is
 *                          told before an unknown layout is.
 */
PXCL_API int32_t KWVS4sToString(int32_t value, char* buffer, uint64_t size, uint32_t flags);

/* Reads a number: white space (blank, tab, line feed, carriage return), one "-" or "+", a prefix if
 * the mode has one, digits up to the first byte that is none. Nothing is read at or past `text` +
 * `length`. Returns the value, saturated at INT32_MIN and INT32_MAX while all its digits are
 * consumed, and stores the number of bytes read from the start of the text in `consumed` (which may
 * be null). Returns KWVS_NO_NUMBER, `consumed` 0, for a null text, length 0, an unknown mode, or no
 * digit where the number should begin.
 */
PXCL_API int32_t KWVSStringTo4s(const char* text, uint64_t length, uint64_t* consumed,
                                int32_t mode);

PXCL_END_DECLS

#endif /* KWVS_H */
