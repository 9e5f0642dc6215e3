/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 */
#ifndef CLXML_H
#define CLXML_H

/* clang-format off */
/* The XML engine. It answers one question about a command or a reply: at which byte ranges do the
 * values at the requested paths stand. One scan from the first byte to the last, no tree, no
 * validation, no entity decoding; the document is never altered: only the writer writes, into a
 * buffer of its own.
 *
 * 1. Text is a pointer and a length in bytes, not NUL-terminated unless a comment says so. Offsets
 *    count bytes from the start of the document. No function reads at or past pointer + length (the
 *    one exception is named at ClXmlRemovePath).
 * 2. White space is space, tab, line feed and carriage return. Comparisons are bytewise and
 *    case-sensitive.
 * 3. Documents and records belong to the caller. Blocks that the engine hands out come from
 *    ClXmlMemAlloc and go back through the function named at the field or function.
 * 4. A function that returns a status returns 0 for success and one of these otherwise:
 *
 *       2   the end tag of the root element was reached (step functions only)
 *      -1   a quoted value has no closing quote (ClXmlSplit_Element only)
 *      -2   bad argument: null pointer, zero length or count, an offset outside the document, both
 *           or neither of two requests given; an empty CDATA section, name or prefix
 *      -3   no "<?xml" followed by white space
 *      -4   "<?xml" stands elsewhere than at offset 0; the stop position tells where
 *      -5   the document ends too early: shorter than 6 bytes, "<" or "<!" at its end, or "<!>"
 *      -6   markup without its ">" (CDATA: "]]>"), or text that no "<" follows
 *      -7   "<" followed by something other than "?", "!", "/" or an ASCII letter; or a start tag
 *           in which a quoted value has no closing quote before the first ">"
 *      -8   malformed attribute: white space in its name, no value, "<" in its value
 *      -9   a requested path is null
 *     -10   an end tag does not match the innermost open element
 *     -11   out of memory
 *     -12   output buffer too small (ClXmlWrite, ClXmlReplaceParameter)
 *     -13   the root element is not <cmd> ... </cmd>
 *
 *    Functions that answer a question return 1 for yes and 0 for no, also 0 to a null argument.
 * 5. What became of one path is told by the status in its record, not by the return value:
 *
 *       1   found
 *    -101   no element (or attribute) at the path
 *    -102   found empty, written <name></name>
 *    -103   found empty, written <name/>
 *      -9   the path was null
 *
 * 6. A path spells the elements from the root down, separated by "/", each with its attributes:
 *    `cmd/zirk:contents/zirk:param_set servicetype="print"/zirk:jobID`. Prefixes are those of
 *    clNsTable, whatever prefixes the document declares for the same URIs; the root's name stays as
 *    written. An element that carries attributes in the document must be named with them. A "/"
 *    behind an odd number of double quotes does not separate. One attribute name without value,
 *    last in its element, stands for any value and admits further attributes; in the last element
 *    it asks for that attribute's value: `cmd/zirk:contents/zirk:jobinfo jobID`.
 * 7. The engine keeps no state between calls and has no globals that change: runs on different
 *    records may go on in parallel.
 */
/* clang-format on */

#include <stdint.h>

#include "pxcl_export.h"

PXCL_BEGIN_DECLS

/* Flag of a run: any root element will do, and qualified names in attribute values are not
 * resolved.
 */
#define CL_XML_COM_FLAG 0x1000

/* ---- Records of a run ---- */

/* One row of the namespace table. */
typedef struct ClXmlNameSpaceEntry {
  const char* uri;            /* NUL-terminated; null in the row that ends the table */
  const char* prefix;         /* NUL-terminated; names the namespace in requested paths */
  const char* declaredPrefix; /* in the document: what it declared for the URI; null until seen */
  uint64_t declaredPrefixLength; /* bytes; 0 until seen */
} ClXmlNameSpaceEntry;

/* The text that is scanned. */
typedef struct ClXmlDocument {
  const char* text;      /* the caller's */
  uint64_t length;       /* bytes */
  uint64_t stopPosition; /* offset where the scan ended (after -4: of "<?xml"); 0 before it began */
} ClXmlDocument;

/* One value found for a target. */
typedef struct ClXmlMatch {
  uint32_t serial; /* ClXmlParserData.serial when the value was stored */
  uint64_t offset; /* of the value in the document */
  uint64_t length; /* bytes; 0 for an empty element; an attribute's value includes its quotes */
  int32_t status;  /* 1, -102 or -103 */
} ClXmlMatch;

/* One requested path. */
typedef struct ClXmlTarget {
  const char* path;             /* the caller's; null is answered with -9 */
  uint64_t pathLength;          /* bytes; 0 matches every element */
  uint32_t kind;                /* 0 element text, 1 attribute value */
  const char* attributeName;    /* inside path; null for kind 0 */
  uint64_t attributeNameLength; /* bytes; 0 for kind 0 */
  ClXmlMatch*
      matches; /* in document order; null when there are none; moved out by ClXmlStoreParserData */
  uint32_t matchCount; /* entries of matches */
  int32_t status;      /* 0 at the start, then 1, -101 or -9 */
} ClXmlTarget;

/* One run. */
typedef struct ClXmlParserData {
  uint32_t flags;    /* 0 or CL_XML_COM_FLAG */
  uint32_t serial;   /* start tags met so far */
  char* currentPath; /* NUL-terminated path of the open elements; null before the root */
  ClXmlNameSpaceEntry* nameSpaceTable; /* the run's own copy of clNsTable */
  ClXmlDocument* document;             /* the run's own */
  ClXmlTarget* targets;                /* the run's own, in the order of the parameters */
  uint32_t targetCount;                /* entries of targets */
} ClXmlParserData;

/* ---- Records of the caller ---- */

/* A request. `parameters` holds ClXmlListParameter records for the list functions, ClXmlParameter
 * records for all others.
 */
typedef struct ClXmlRequest {
  const char* document;    /* in: the text */
  uint64_t documentLength; /* in: bytes, not 0 */
  char* output;        /* in: buffer of the writer, apart from the document; unused by requests */
  uint64_t outputSize; /* in: bytes of output; out: length of the new document, after -12 the size
                          needed */
  void* parameters;    /* in and out */
  uint32_t parameterCount; /* in: records in parameters, not 0 */
  uint64_t stopPosition;   /* out: ClXmlDocument.stopPosition */
} ClXmlRequest;

/* One path of a single request or a replacement. */
typedef struct ClXmlParameter {
  const char* path;        /* in: not null in the first record */
  uint64_t pathLength;     /* in: bytes, not 0 in the first record */
  uint64_t valueOffset;    /* out: of the first value; 0 when there is none */
  uint64_t valueLength;    /* out: bytes; 0 when there is none or it is empty */
  const char* newValue;    /* in: text to put in its place; null to only ask */
  uint64_t newValueOffset; /* out of the writer: where the value stands in the output */
  uint64_t newValueLength; /* in: bytes; 0 leaves the value as it is */
  int32_t status; /* out: 1, -101, -102, -103 or -9; -102 and -103 become 1 when replaced */
} ClXmlParameter;

/* A byte range of the document. */
typedef struct ClXmlValueRange {
  uint64_t offset; /* from the start of the document */
  uint64_t length; /* bytes */
} ClXmlValueRange;

/* One path of a list request. */
typedef struct ClXmlListParameter {
  const char* path;        /* in: not null in the first record */
  uint64_t pathLength;     /* in: bytes, not 0 in the first record */
  ClXmlValueRange* ranges; /* in: null; out: every value in document order, null when there is none
                            * or memory was short; freed by ClXmlRequestParameterListFree */
  uint32_t rangeCount;     /* out: values found; written only when there are some; read it only with
                              ranges */
  uint64_t reserved1;      /* left alone */
  uint32_t reserved2;      /* left alone */
  int32_t status;          /* out: 1, -101, or -102 / -103 of the first value when all are empty */
} ClXmlListParameter;

/* ---- Records of a start tag ---- */

/* One attribute; all pointers lead into the text that was split. */
typedef struct ClXmlAttribute {
  const char* name;     /* as written, prefix included */
  uint64_t nameLength;  /* bytes; 0 for `="x"` */
  const char* value;    /* at the opening double quote; null without "=" */
  uint64_t valueLength; /* bytes, both quotes counted; 0 without "=" */
} ClXmlAttribute;

/* The inside of a start tag, or one element of a path. */
typedef struct ClXmlElement {
  const char* name;           /* in the text that was split; null when there is none */
  uint64_t nameLength;        /* bytes */
  ClXmlAttribute* attributes; /* the caller's array; null for none */
  uint32_t attributeCount;    /* capacity of attributes */
} ClXmlElement;

/* The namespaces of the protocol: "zirk", "vrx", "tolm", "ikw" and an end row of nulls. Declared
 * prefixes are null.
 */
PXCL_API extern const ClXmlNameSpaceEntry clNsTable[5];

/* ---- Requests ---- */

/* Scans the document and stores the first value of every path. What was found before a failure is
 * stored too. The record's parameters, stop position and nothing else are written.
 * Returns 0; -2 null request, document, parameters or first path, zero length or count; -3 to -11
 * and -13.
 */
PXCL_API int32_t ClXmlRequestParameter(ClXmlRequest* request);

/* The same for a document with any root element: never -13. */
PXCL_API int32_t ClComXmlRequestParameter(ClXmlRequest* request);

/* Scans the document and stores every value of every path. Free the ranges with
 * ClXmlRequestParameterListFree, after a failure too. A range array that cannot be allocated stays
 * null; the result is that of the scan. As ClXmlRequestParameter; -2 also when a list parameter
 * holds ranges already.
 */
PXCL_API int32_t ClXmlRequestParameterList(ClXmlRequest* listRequest);

/* The same for a document with any root element: never -13. */
PXCL_API int32_t ClComXmlRequestParameterList(ClXmlRequest* listRequest);

/* Frees the ranges of every list parameter. The pointers stay as they are: clear or free the
 * records next.
 * Returns 0; -2 null request.
 */
PXCL_API int32_t ClXmlRequestParameterListFree(ClXmlRequest* listRequest);
PXCL_API int32_t ClComXmlRequestParameterListFree(ClXmlRequest* listRequest);

/* ClXmlRequestParameter, and when that is 0 ClXmlWrite; their statuses. */
PXCL_API int32_t ClXmlReplaceParameter(ClXmlRequest* request);

/* ---- Writer ---- */

/* Writes the document to the output with the found values replaced. To be called after
 * ClXmlRequestParameter on the same request. A record is applied when it has a new value (pointer
 * and length), its path was found and its value offset is not 0. An empty-element tag becomes
 * start tag, value and end tag: it grows by the value, the name's length and 2. Of two records for
 * the same value the later one is written. After success the output size is the length of the new
 * document, and every record with a new value has its place in the output (of several records with
 * the same path pointer all get what the one furthest back in the document got) and its status, 1
 * for what was empty.
 * Returns 0; -2 null request, document, output or parameters, zero size or count, a range outside
 * the document, ranges that overlap: nothing is written; -11; -12 too small: the output size is
 * set to the size needed, and the output holds as much of the unchanged document as fits.
 */
PXCL_API int32_t ClXmlWrite(ClXmlRequest* request);

/* Finds the name of the empty-element tag that `parameter->newValueOffset` (as recorded by the
 * scan: ">", "/" or white space of the tag) belongs to. `buffer` holds the tag up to its ">";
 * nothing behind that is read. The name ends at white space or "/".
 * Returns 0 and the name's offset and length; -2 null argument; -11 no such tag there.
 */
PXCL_API int32_t ClXmlCheckEmptyTagSpec(const char* buffer, const ClXmlParameter* parameter,
                                        uint64_t* nameOffset, uint64_t* nameLength);

/* Rewrites that tag in place: ">" over its "/", then the new value, then the end tag. What follows
 * the tag in the buffer is overwritten, and the buffer must have room for newValueLength + name
 * length + 2 more bytes than the tag. `parameter->newValueOffset` becomes the offset of the value,
 * `*end` the offset behind the end tag.
 * Returns 0; -2 null argument or new value; -11 no such tag there.
 */
PXCL_API int32_t ClXmlExpandEmptyElement(char* buffer, ClXmlParameter* parameter, uint64_t* end,
                                         uint64_t* nameLength);

/* ---- One run: set-up, scan, results ---- */

/* A zero-filled block of `size` bytes; null when size is 0 or memory is short. Give it back with
 * ClXmlMemFree.
 */
PXCL_API void* ClXmlMemAlloc(uint64_t size);

/* Gives a block back; null is allowed. */
PXCL_API void ClXmlMemFree(void* block);

/* Stores a fresh copy of clNsTable in `*out` (null when memory is short); 1, or 0 for a null `out`
 * or short memory.
 */
PXCL_API int32_t ClXmlInitializeNameSpaceTable(ClXmlNameSpaceEntry** out);

/* Frees such a copy; null is allowed. */
PXCL_API void ClXmlUnInitializeNameSpaceTable(ClXmlNameSpaceEntry* table);

/* Makes the record of a run, one target per parameter. Exactly one request is given: `request`
 * (ClXmlParameter records) or `listRequest` (ClXmlListParameter records). The document and the
 * paths must outlive the run.
 * Returns 0 and the record in `*out`; otherwise `*out` is untouched: -2 null `out`, both or
 * neither request, null document, parameters or first path, zero length, count or first path
 * length; -11.
 */
PXCL_API int32_t ClXmlInitializeParserData(ClXmlParserData** out, uint32_t flags,
                                           const ClXmlRequest* request,
                                           const ClXmlRequest* listRequest);

/* Frees a run: document record, targets, table and the record itself, but neither the current path
 * (ClXmlParse does) nor matches (ClXmlStoreParserData does). Null is allowed.
 */
PXCL_API void ClXmlUnInitializeParserData(ClXmlParserData* data);

/* Scans the whole document. Stores the stop position and frees the current path, except that after
 * -2 and -3 to -5 for the declaration no path was made and, save for -4, the stop position stays
 * 0.
 * Returns 0; -2; -3 to -8; -9 a null path was met by a text run (by an end tag: -2); -10; -11;
 * -13.
 */
PXCL_API int32_t ClXmlParse(ClXmlParserData* data);

/* Moves the results of a run into the request that it was made for (the other one null) and frees
 * the matches. Of a single request the first match reaches the caller, of a list request all do.
 * Returns 0; -2 both or neither request, null data, document or parameters, no targets.
 */
PXCL_API int32_t ClXmlStoreParserData(ClXmlParserData* data, ClXmlRequest* request,
                                      ClXmlRequest* listRequest);

/* ---- Steps of the scan ---- */

/* Looks for the declaration, which must open the document.
 * Returns 0; -2 null data, document or text; -3; -4 and its offset as the stop position; -5 fewer
 * than 6 bytes.
 */
PXCL_API int32_t ClXmlSearchStartPoint(ClXmlParserData* data);

/* Handles the markup whose "<" stands at `*position`: declaration, comment, CDATA section, start
 * or end tag. A comment ends at its first ">", so does a tag, inside a quoted value too. On return
 * `*position` is at the last byte consumed (the ">"); it is still at the "<" after -5, after -6
 * and after -7 for a bad first character.
 * Returns 0; 2; -2 null argument or a position behind the document's end, or an empty CDATA
 * section; -5; -6; -7; what the start tag, end tag or value gave.
 */
PXCL_API int32_t ClXmlCheckElement(ClXmlParserData* data, uint64_t* position);

/* Handles a start tag or empty-element tag. `*offset` is that of "<", `length` the distance from
 * there to ">". The own name goes into the path before the attributes are read: a declaration
 * applies to the attributes behind it and to what is inside, not to the name. For an empty-element
 * tag an empty match is recorded at `*offset` + 2 + the length of the inside, trimmed: at the ">"
 * of <a/> and the "/" of <a />, where the writer expects it.
 * Returns 0; 2 root closed; -2 null argument, zero length, outside the document, an attribute
 * without a name, or the empty match could not be recorded; -7; -8; -9; -10; -11; -13.
 */
PXCL_API int32_t ClXmlPrsStartElement(ClXmlParserData* data, const uint64_t* offset,
                                      uint64_t length);

/* Handles an end tag; arguments alike. Records an empty match at `*offset` if nothing was found in
 * the element.
 * Returns 0; 2 root closed; -2 null argument, length below 2, outside the document, no name, no
 * open element, or the empty match could not be recorded; -10; -11; -13.
 */
PXCL_API int32_t ClXmlPrsEndElement(ClXmlParserData* data, const uint64_t* offset, uint64_t length);

/* Stores the text from `*position`, which is not white space, to the next "<", without trailing
 * white space. On return `*position` is at the byte before that "<"; it is unchanged after -6.
 * Returns 0; -2 null argument, a position behind the document's end or at a "<"; -6 no "<"
 * follows; -9; -11.
 */
PXCL_API int32_t ClXmlPrsParameter(ClXmlParserData* data, uint64_t* position);

/* ---- Pieces of a start tag ---- */

/* Splits the inside of a start tag (no "<", ">" or closing "/") into name and attributes. The name
 * runs to the first white space. With an element, name and attributes are stored, as many as its
 * capacity allows; without one they are only counted. Values are what stands between two double
 * quotes behind "="; an attribute without "=" can only stand last; one with "=" but no double
 * quote behind it is dropped, and all that follows.
 * Returns the number of attributes; -1 null text or zero length, or a value without closing quote:
 * the element's name and attributes are then cleared.
 */
PXCL_API int32_t ClXmlSplit_Element(const char* text, uint64_t length, ClXmlElement* element);

/* Splits a qualified name at its first ":". The prefix is stored when its two outputs are given
 * and it is not empty, the local part (the whole name without ":") likewise; outputs not stored
 * are left alone.
 * Returns 1; 0 null or empty name, or neither pair of outputs given.
 */
PXCL_API int32_t ClXmlSplit_QName(const char* qname, uint64_t length, const char** prefix,
                                  uint64_t* prefixLength, const char** local,
                                  uint64_t* localLength);

/* The inside of a double-quoted value, without white space at its ends; may come out empty.
 * Returns 1; 0 null argument, or not in double quotes.
 */
PXCL_API int32_t ClXmlPare_AttValue(const char* value, uint64_t length, const char** inner,
                                    uint64_t* innerLength);

/* Takes one attribute of the start tag that was last added to the path. A name that begins with
 * "xmlns" is a namespace declaration: `*isNamespace` is 1, the first six bytes are dropped from
 * the attribute's name if it holds a ":", and ClXmlPickupNamespace is called with it. Any other is
 * added to the path and `*isNamespace` is 0.
 * Returns 0; -2 null argument or document, empty name or prefix; -8; -11; -13.
 */
PXCL_API int32_t ClXmlExtractAttribute(ClXmlParserData* data, ClXmlAttribute* attribute,
                                       int32_t* isNamespace);

/* Notes `prefix` as the declared one of the namespace whose URI is in `value` (quotes included),
 * unless that has one: the first declaration of a URI holds for the whole document. An unknown URI
 * is no failure.
 * Returns 0; -2 null argument or table, empty prefix, value shorter than two quotes.
 */
PXCL_API int32_t ClXmlPickupNamespace(ClXmlParserData* data, const char* prefix,
                                      uint64_t prefixLength, const char* value,
                                      uint64_t valueLength);

/* Returns 1 when both URIs are equal, one trailing "/" of either left out; 0 otherwise, and when
 * either is null or empty.
 */
PXCL_API int32_t ClXmlCompare_Uri(const char* a, uint64_t aLength, const char* b, uint64_t bLength);

/* ---- The current path ---- */

/* Appends `separator` (NUL-terminated: "/" before an element, " " before an attribute name, "="
 * before its value) and the name, with a declared prefix replaced by the table's. Without a path
 * yet the name becomes the path as it stands. A zero byte in the name ends the path there, until
 * the next call goes on in its place. Every call makes a block that just fits and frees the old
 * one.
 * Returns 0; -2 null argument, zero length; -11 the path is as before; -13 the first name does not
 * begin with "cmd" (and the run has no CL_XML_COM_FLAG).
 */
PXCL_API int32_t ClXmlAddPath(ClXmlParserData* data, const char* separator, const char* name,
                              uint64_t length);

/* Removes the last element from the path, cutting at the last "/" that separates. `name` is the
 * text of the end tag between "</" and ">", prefix as declared; both sides are compared up to
 * their first white space. The root, without CL_XML_COM_FLAG, closes as "cmd" and a ">" right
 * behind it: for a name of exactly three bytes outside the document, the byte at name[3] must be
 * readable; inside the document its end is a bound and gives -13.
 * Returns 0; 2 the root was closed, its path stays; -2 null argument, zero length, no path; -10;
 * -11 the path is as before; -13.
 */
PXCL_API int32_t ClXmlRemovePath(ClXmlParserData* data, const char* name, uint64_t length);

/* Frees a path block; null is allowed. */
PXCL_API void ClXmlClearPath(char* path);

/* Stores the length of the path's first element, up to the first "/" behind an even number of
 * double quotes or the whole.
 * Returns 1; 0 null or empty path, null `out`.
 */
PXCL_API int32_t ClXmlFirstElementLengthOfPath(const char* path, uint64_t length, uint64_t* out);

/* Stores the row (from 0) of the first namespace whose declared prefix begins with these bytes.
 * Documents are matched by leading bytes: one that declares "zirkx" makes "zirk" known too.
 * Returns 1; 0 none, null argument, zero length.
 */
PXCL_API int32_t ClXmlIsKnownNicknameNs(const ClXmlParserData* data, const char* prefix,
                                        uint64_t length, uint32_t* index);

/* ---- Targets ---- */

/* Stores the attribute name without value of the path's last element (the last, if several).
 * Returns 1; 0 none, null argument, null or empty path.
 */
PXCL_API int32_t ClXmlChkTargetPathRequestAttValue(const ClXmlTarget* target, const char** name,
                                                   uint64_t* nameLength);

/* Returns 1 when the target's path matches the current path; 0 otherwise, and when memory is
 * short. An empty target path matches always; every path does while there is no current one; one
 * with a trailing "/" matches all elements below it.
 */
PXCL_API int32_t ClXmlStoreValuePathCompare(const ClXmlParserData* data, uint32_t targetIndex);

/* Returns 1 when both names are equal and not empty. `data` is not used. */
PXCL_API int32_t ClXmlCompare_Tag(const ClXmlParserData* data, const ClXmlElement* requested,
                                  const ClXmlElement* current);

/* Returns 1 when every requested attribute is there with a matching value, and no others are
 * unless a requested one has no value. An element requested without attributes has none.
 */
PXCL_API int32_t ClXmlCompare_Attribute(const ClXmlParserData* data, const ClXmlElement* requested,
                                        const ClXmlElement* current);

/* Returns 1 when the value matches. A requested attribute without a double-quoted value matches
 * any value, `""` too, and sets `*nameOnly` to 1 (else it is left alone). Otherwise neither may be
 * empty; equal texts match, and without CL_XML_COM_FLAG so do qualified names that both belong to
 * the last namespace of the table, written with or without prefix.
 */
PXCL_API int32_t ClXmlCompare_AttValue(const ClXmlParserData* data, const ClXmlAttribute* requested,
                                       const ClXmlAttribute* current, int32_t* nameOnly);

/* Records a text at the current path for every element-text target that matches.
 * Returns 0; -2 null data or targets, zero offset, length or count, outside the document; -9 a
 * target has a null path (the others are served); -11 the scan must end here.
 */
PXCL_API int32_t ClXmlStoreValue(ClXmlParserData* data, uint64_t offset, uint64_t length);

/* Records the attribute value, quotes included, for every attribute target that matches the
 * current path. `attributes` are those of the innermost element without its declarations, as
 * written in the document; the first of a name counts.
 * Returns 0; -2 null argument or document, zero count, a value outside the document; -9; -11.
 */
PXCL_API int32_t ClXmlStoreAttValue(ClXmlParserData* data, const ClXmlAttribute* attributes,
                                    uint32_t count);

/* Records an empty match at `offset` for the first element-text target that matches the current
 * path and has no match with the current serial: -103 when `empty` is 1 (an empty-element tag),
 * else -102.
 * Returns 0, also when no target matches; -2 null data or targets, zero count, outside the
 * document; -9 a null path was met and nothing recorded; -11.
 */
PXCL_API int32_t ClXmlChkTargetPathOnly(ClXmlParserData* data, uint64_t offset, int32_t empty);

PXCL_END_DECLS

#endif /* CLXML_H */
