/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 *
 * Keyed access: reading and rewriting a document by path keys, turning its texts into dictionary
 * indices, numbers and strings, and reading the item sets that a capability reply lists.
 *
 * A path key names an element from the root on, each element with its table prefix and followed by
 * its attributes: cmd/zirk:contents/zirk:param_set servicetype="print"/zirk:jobID. A bare attribute
 * name at the end asks for that attribute's value.
 *
 * Text is a pointer and a length and need not be terminated, unless a function says otherwise.
 * Statuses, unless a function says otherwise: 0 success; -1 memory is short; -2 bad argument, or
 * the document cannot be scanned; -4 a record or buffer is invalid.
 */
#ifndef PXCL_KEYED_H
#define PXCL_KEYED_H

#include <stdint.h>

#include "clxml.h"
#include "dictionaries.h"
#include "pxcl_export.h"

PXCL_BEGIN_DECLS

/* ---- Get and replace ------------------------------------------------------------------------- */

/* One path key, and for a replacement the text that goes there. */
typedef struct ClssKeyValue {
  const char* key;      /* the path key; not terminated, never null */
  uint64_t keyLength;   /* its bytes; never 0 */
  const char* value;    /* the new text, or null */
  uint64_t valueLength; /* its bytes; 0 exactly when value is null */
} ClssKeyValue;

/* Size of the work buffer for a document of documentLength bytes: that length plus the value
 * lengths of all `count` records. The new document of ReplaceXmlDataByKey is never longer. */
PXCL_API uint64_t Get_NeedBufferSize(uint64_t documentLength, const ClssKeyValue* records,
                                     uint32_t count);

/* Makes the request that the engine takes: one ClXmlParameter (SetCL_XML) or ClXmlListParameter
 * (SetCL_XML2) per record, in their order, and a zero-filled work buffer of Get_NeedBufferSize
 * bytes as `output`. The document and the keys are not copied: they must outlive the context.
 *  0  *context is the request; give it back with ClearCL_XML or ClearCL_XML2
 * -1  memory is short
 * -2  document, length, records, count or context is null or 0
 * -4  a record has no key; SetCL_XML: a value without its length, or the other way round
 * On failure nothing stays allocated and *context is left alone. */
PXCL_API int32_t SetCL_XML(const char* document, uint64_t length, const ClssKeyValue* records,
                           uint32_t count, ClXmlRequest** context);
PXCL_API int32_t SetCL_XML2(const char* document, uint64_t length, const ClssKeyValue* records,
                            uint32_t count, ClXmlRequest** context);

/* Gets the first text at each key: afterwards (*context)->parameters holds one ClXmlParameter per
 * record with status (1 found; -101 not found; -102 <a></a>; -103 <a/>), value offset and length.
 * Statuses and ownership are those of SetCL_XML; any failure of the engine is -2. */
PXCL_API int32_t GetXmlDataByKey(const char* document, uint64_t length, const ClssKeyValue* records,
                                 uint32_t count, ClXmlRequest** context);

/* Gets every text at each key: (*context)->parameters holds one ClXmlListParameter per record, with
 * its ranges. Release the context with ClearCL_XML2. Values of the records are not looked at.
 * Statuses are those of SetCL_XML2; any failure of the engine is -2. */
PXCL_API int32_t GetXmlDataByKeyList(const char* document, uint64_t length,
                                     const ClssKeyValue* records, uint32_t count,
                                     ClXmlRequest** context);

/* Replaces the text at each key by the record's value: (*context)->output then holds the new
 * document and outputSize its length. A key that is not found changes nothing. An element written
 * <a/> needs more room than the work buffer has, unless other values shrink the document: -2.
 * Statuses and ownership are those of SetCL_XML; any failure of the engine is -2. */
PXCL_API int32_t ReplaceXmlDataByKey(const char* document, uint64_t length,
                                     const ClssKeyValue* records, uint32_t count,
                                     ClXmlRequest** context);

/* Releases a context: parameters, work buffer and the context itself. ClearCL_XML2 releases the
 * ranges of a list context first. 1, or 0 for a null context. */
PXCL_API int32_t ClearCL_XML(ClXmlRequest* context);
PXCL_API int32_t ClearCL_XML2(ClXmlRequest* context);

/* ---- Values ---------------------------------------------------------------------------------- */

/* What all of these read is the value of a text: its bytes up to the first comma or zero byte, with
 * every blank dropped (blanks only: tabs stay). So " ON ,x" is ON and "1 2" is 12. */

/* Looks a keyword up, whole and with its case; the first row that is equal wins.
 *  0  *index and *code are the row's; both are 65535 when no row is equal
 * -2  a pointer is null, or rowCount or length is 0 */
PXCL_API int32_t GetVasloID(const ClssDicRow* dictionary, uint32_t rowCount, const char* text,
                            uint64_t length, uint16_t* index, uint16_t* code);

/* Reads a decimal number, signed and held within 32 bits.
 *  0  *value is the number, a negative one in two's complement; 0x80000000 for a text that is none
 * -2  text or value is null, or length is 0 */
PXCL_API int32_t GetValue(const char* text, uint64_t length, uint32_t* value);

/* Copies the value with a terminating zero into `destination` of `size` bytes.
 *  1  copied
 *  0  it does not fit, or an argument is null or empty; nothing was written */
PXCL_API int32_t SetStringValue(const char* text, uint64_t length, char* destination, int32_t size);

/* Tests whether the value is a job ID (8 decimal digits), and the expected one (zero-terminated;
 * null: any will do).
 *  0  it is
 *  1  it is a job ID, but another one
 * -2  it is none, text is null or length is 0 */
PXCL_API int32_t CheckJobID(const char* expected, const char* text, uint64_t length);

/* With a dictionary GetVasloID, without one GetValue, whose numbers have the code 65535.
 *  0  *value is the row index (65535 when the keyword is in no row) or the number, *code its code
 * -2  with a dictionary: as GetVasloID; value or code is null
 * -4  without a dictionary: text is null or length is 0 */
PXCL_API int32_t GetIdOrValue(const ClssDicRow* dictionary, uint32_t rowCount, const char* text,
                              uint64_t length, uint32_t* value, uint16_t* code);

/* A new zero-terminated block (KWVSDisposePTRX) with a text's bytes up to the first comma, every
 * blank dropped; null for a null or empty text or when memory is short. */
PXCL_API char* CopyValueText(const char* text, uint64_t length);

/* ---- Templates ------------------------------------------------------------------------------- */

/* Upper bound in bytes of a template filled with `count` arguments: its length, plus that of every
 * argument that is not null, plus 1. The markers are counted too, and so are arguments that no
 * marker takes. With a count below 1 the arguments are not looked at.
 * -2 for a null text, -4 when the sum does not fit 32 bits. */
PXCL_API int32_t Get_NeedBufferSize2(const char* text, const char* const* arguments, int32_t count);

/* Fills the template in `buffer` (zero-terminated) in place: the k-th "%s" takes the k-th argument,
 * a null one inserts nothing, every other byte stays. Nothing is escaped.
 * >=0  length of the filled text without its terminating zero
 *  -1  memory is short
 *  -2  size or count is below 1, a pointer is null, or there are more markers than arguments
 *  -4  size is below Get_NeedBufferSize2, even if the filled text would fit
 * On failure the buffer is as it was. */
PXCL_API int32_t clss_Sprintf(char* buffer, int32_t size, const char* const* arguments,
                              int32_t count);

/* ---- Item sets ------------------------------------------------------------------------------- */

/* One value of an item. */
typedef struct ItemEntry {
  uint32_t value; /* row index, or the number where there is no dictionary, or 1 absent 2 present */
  uint16_t nameSpace; /* 0 to 2, position in glb_NameSpacePrefix: where the element was found */
  int16_t code;       /* the row's protocol code; -1 when there is none */
} ItemEntry;

/* The text of an element. */
typedef struct ItemText {
  char* text;    /* zero-terminated, owned; null when the element is absent */
  uint16_t size; /* bytes, the terminating zero included; 0 when absent */
} ItemText;

/* One item that a reply lists: what is asked for, and the answer. */
typedef struct ItemSet {
  ItemEntry* entries;       /* answer, owned once filled; null when nothing was found */
  ItemText* auxiliary;      /* answer in text mode of Get_ItemSetByReq, owned; null otherwise */
  uint32_t entryCount;      /* answer: number of entries */
  const char* pathTemplate; /* path key with two "%s": namespace prefix, item name */
  const char* itemName;     /* the element's name, zero-terminated */
  uint32_t mode;            /* 1: is it there under each namespace; any other: its list of values */
  const ClssDicRow* dictionary; /* the vocabulary of its values; null for numbers */
  uint32_t rowCount;            /* rows of the dictionary */
} ItemSet;

/* Does the document answer `operation` (index in glb_clssdicOperationTbl) with "OK"?
 *  0  it does
 * -1  memory is short
 * -2  null document, length 0, operation 0 or not below 27, or the document cannot be scanned
 * -5  no operation element, or another operation
 * -6  no response element (print, device, scan, maintenance: the first counts), or it is not "OK"
 */
PXCL_API int32_t CheckOpeAndRes(const char* document, uint64_t length, uint16_t operation);

/* Reads one item under all three namespaces.
 * Mode 1 makes three entries, one a namespace: value 2 when the element is there, 1 when not.
 * Any other mode splits the element's text at commas into values. Blank values are skipped, and
 * keywords that are not in the dictionary are dropped. Entries are ordered by code, those without
 * one first; numbers stay in the order of the text.
 *  0  entries and entryCount are set: null and 0 when nothing was found
 * -1  memory is short
 * -2  null argument, length 0, a found element with empty text, values but a dictionary of 0 rows,
 *     or the document cannot be scanned
 * -4  no path key can be formed: template null, empty, with more than two markers, or longer than
 *     2047 bytes with its arguments (by Get_NeedBufferSize2)
 * On failure the item is left as it was. Entries that it held before are never freed: release them
 * first. */
PXCL_API int32_t Get_ItemSet(const char* document, uint64_t length, ItemSet* item);

/* CheckOpeAndRes, then Get_ItemSet for each item in order up to the first that fails, all in one
 * scan. The first status that is not 0, else 0. A count below 1 only checks. When an item fails,
 * those before it are filled: release them. */
PXCL_API int32_t Get_ItemSetList(const char* document, uint64_t length, uint16_t operation,
                                 ItemSet* items, int32_t count);

/* Reads items under one namespace, chosen by an attribute's value, in one scan. Their templates
 * have three markers: namespace prefix, item name, attribute value.
 * List mode (any but 1) gives each item exactly rowCount - 1 entries: its values, those with a code
 * first and by code, then fillers (value 65535 with a dictionary, 0 without; code -1). Keywords
 * that are not in the dictionary are kept, with the value 65535; number lists stay as they are.
 * Text mode (1) gives each item its element's text in `auxiliary`, an empty one when the element is
 * there but empty, a null one when it is absent. Entries are null, whatever entryCount says.
 *  0  all items are filled
 * -1  memory is short
 * -2  null document or items, length 0, nameSpace above 2, list mode with a rowCount of 0, more
 *     values than entries, a text longer than 65534 bytes, or the document cannot be scanned
 * -4  count is 0 (tested first), or a path key cannot be formed as in Get_ItemSet
 * Items are left alone when an argument is refused. Otherwise what they held before is overwritten,
 * never freed, and on failure they end with null pointers and no entries. */
PXCL_API int32_t Get_ItemSetByReq(const char* document, uint64_t length, ItemSet* items,
                                  uint16_t count, const char* attributeValue, uint16_t nameSpace,
                                  uint32_t mode);

/* Frees what the items own and clears those pointers; nothing for null items or a count below 1. */
PXCL_API void ReleaseItemSetList(ItemSet* items, int32_t count);

/* Does the reply to `operation` list `wanted` for an item? The item is not changed.
 *     2  it does
 *     1  the item is listed without it
 * 65535  the item has no entries
 *    -2  null document or item, length 0, or a rowCount that is neither 0 nor above wanted
 * Statuses of Get_ItemSetList are passed on. */
PXCL_API int32_t checkSuport(const char* document, uint64_t length, uint16_t operation,
                             const ItemSet* item, uint16_t wanted);

/* ---- Tokens in plain text -------------------------------------------------------------------- */

/* Finds the field that follows one occurrence of a start token (0: the first; occurrences do not
 * overlap) and ends before the next end token. An empty end token makes an empty field. Tokens are
 * zero-terminated. A pointer into the text, and *fieldLength its bytes; null, and 0, when there is
 * no such field: a null argument, length below 1, negative occurrence, start token not found that
 * often, nothing behind it, or no end token. */
PXCL_API const char* getToken(const char* text, int32_t length, const char* start, const char* end,
                              int32_t occurrence, uint32_t* fieldLength);

/* Number of occurrences of a token that do not overlap; 0 for null arguments or an empty token. */
PXCL_API uint32_t getTokenTotal(const char* text, uint64_t length, const char* token);

/* Index of the first word of a list (zero-terminated words, null-ended) that occurs anywhere in the
 * text, up to a zero byte in it, once its blanks, tabs, line feeds and carriage returns are dropped.
 * Words are taken as they are: one with a blank in it is never found. -1 when none occurs, text or
 * words is null, length is below 1 or memory is short. */
PXCL_API int32_t searchString(const char* text, int32_t length, const char* const* words);

PXCL_END_DECLS

#endif /* PXCL_KEYED_H */
