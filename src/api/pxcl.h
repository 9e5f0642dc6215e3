/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 */
#ifndef PXCL_H
#define PXCL_H

/* pxcl: the XML command protocol of inkjet printers.
 *
 * Commands are written into the caller's buffer (commands.h), replies are decoded into the caller's
 * records (responses.h), device IDs and print settings are looked into (device.h). The layers below
 * are exported as well: path keys and dictionaries (keyed.h, dictionaries.h), the XML engine
 * (clxml.h) and byte, string and number primitives (kwvs.h). The library does no transport: the
 * caller carries documents to the printer and back.
 *
 *  1. Text is a pointer and a length in bytes, not terminated, unless a function says otherwise;
 *     job IDs, dates and other small texts that go into commands are strings ended by a zero byte.
 *     Nothing is read at or past text + length. Lengths have 64 bits on every processor; where
 *     addresses have 32, a text longer than memory can be is refused, or nothing is found in it.
 *  2. The caller owns every document, buffer and record that it passes. Nothing passed is kept
 *     after the call returns. What a call allocates it frees before it returns, on success and
 *     failure alike; contexts, blocks and results that are handed out name the call that gives them
 *     back.
 *  3. On failure a command's buffer and length are untouched, but for what commands.h names; a
 *     reply's record holds what was decoded before the failing step.
 *  4. Commands: text is written as given. Callers escape "&", "<" and ">" themselves, and keep
 *     "]]>" out of a job description. A buffer that is too small is told the size that is needed.
 *  5. Every status is a signed 32-bit number, 0 for success and negative for a failure. Each layer
 *     has its own codes, and each function lists those that it can return:
 *       kwvs.h       -128 bad argument, -158 buffer too small
 *       clxml.h      -1 to -13 for a call, 1 and -9, -101 to -103 for one path
 *       keyed.h      -1 memory, -2 argument or document, -4 buffer or record, -5, -6 reply
 *       commands.h   CLSS_COMMAND_...: -1 to -4, -7, -8, -100
 *       responses.h  -1 to -16
 *       device.h     -1 to -17
 *       pxcl.h       -1
 *     Positive results carry answers: dictionary rows, counts, 1 for no and 2 for yes.
 *  6. There is no state. Any thread may make any call, but two calls must not write to the same
 *     buffer or record at once.
 *  7. Nothing is logged, but for the debug lines of PXCL_GetPrintCommand.
 *  8. Two calls are additions of our own: PXCL_ParseCapabilityResponsePrint_PaperSizes and
 *     PXCL_ParseCapabilityResponsePrint_MediaTypes in responses.h decode all sizes or all types of
 *     a capability reply in one scan.
 */

#include <stdint.h>

#include "clxml.h"
#include "commands.h"
#include "device.h"
#include "dictionaries.h"
#include "keyed.h"
#include "kwvs.h"
#include "pxcl_export.h"
#include "responses.h"

PXCL_BEGIN_DECLS

/* ---- The commands of a print filter ---- */

/* Writes the command of one step of a print job: 1 StartJob, 2 ModeShift, 3 EndJob, all for the
 * print service; the data of the job goes between 2 and 3. Buffer and size are those of commands.h,
 * and `length` (which must not be null) is always stored, 0 on a failure without a need. On
 * success, a size query included, one debug line is written to standard error.
 *   0     written, or a size query; also for any other step, which writes nothing and leaves
 *         `length`
 *   else  what CLSS_MakeCommand_StartJob2, _ModeShift or _EndJob returns; -2 also for a null
 *         `length`
 */
PXCL_API int32_t PXCL_GetPrintCommand(char* buffer, uint64_t size, uint64_t* length,
                                      const char* jobID, uint64_t step);

/* ---- Small values in text files ---- */

/* Writes `dataLength` bytes as a text of letters with a checksum, 2 * dataLength + 9 characters.
 * All of `output` is cleared first, so a terminator follows if there is room for one.
 *   >0  the number of characters
 *   -1  `outputSize` is smaller than that, a pointer is null (`data` may be when it is empty), or
 *       the number does not fit 32 bits; `output` is untouched
 */
PXCL_API int32_t PXCL_EncodeToString(const uint8_t* data, uint64_t dataLength, char* output,
                                     uint64_t outputSize);

/* Reads such a text back; what follows its checksum is not looked at. `output` needs
 * (textLength - 9) / 2 bytes, all of it is cleared first, and no terminator is written.
 *   >=0  the number of bytes
 *   -1   `outputSize` is smaller than that, or a pointer is null: `output` is untouched
 *   -1   a letter that is none of "a" to "p" among the data: the bytes before it stay in `output`
 *   -1   no "=", no whole checksum behind it or another one than the data's, or data that would not
 *        fit: `output` is all zeros
 */
PXCL_API int32_t PXCL_DecodeFromString(const char* text, uint64_t textLength, uint8_t* output,
                                       uint64_t outputSize);

/* Looks the value of a tag up in a text file. `path` and `tag` are strings ended by a zero byte.
 * Only lines that begin with an asterisk, a percent sign and a blank count; behind these three
 * bytes stands
 *   #TAG:value    a value of one line, or
 *   #TAG>         the start of a block: the texts of the lines up to
 *   #<TAG         its end are the value, joined without their line feeds.
 * The first of either wins. A marker is cut after 126 bytes, a line after 1024: what follows is
 * read as a line of its own. With `decode` 1 the value is what PXCL_DecodeFromString makes of the
 * text, with any other the text itself.
 *   >=0  the value's length; `*result` is a block with the value and a zero byte behind it, which
 *        the caller gives back with free()
 *   -1   the file cannot be read, no such tag, a block without its end, an empty text, a text that
 *        does not decode, a null argument, or no memory; `*result` is null
 */
PXCL_API int32_t PXCL_GetStringWithTagFromFile(const char* path, const char* tag, int32_t decode,
                                               char** result);

/* ---- The printer's clock ---- */

/* Writes a job, not an XML command, that sets the printer's clock to the local time: 65 bytes, no
 * terminator. The size must be at least 66.
 *   0   written; `length` receives the number of bytes
 *   -1  a smaller size, a null pointer, or a time that cannot be told in 14 digits; nothing is
 *       written
 */
PXCL_API int32_t PXCL_MakeKWLSetTimeJob(uint8_t* buffer, uint64_t size, uint64_t* length);

PXCL_END_DECLS

#endif /* PXCL_H */
