/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 */
#ifndef PXCL_DEVICE_H
#define PXCL_DEVICE_H

/* What a printer is and what it can be asked to print: device-ID strings and the lists of models,
 * print settings completed from the loaded paper and the printer's capabilities, and the dimensions
 * of paper.
 *
 * 1. A device ID is an IEEE 1284 string, `deviceID` of `length` bytes, not terminated: fields of a
 * key, a colon, a value and a semicolon, such as "CMD:ZIRK,NOLP;".
 * 2. The answer to whatever is not in a device ID is "not present". A null string, a length outside
 * 1 to 2^31-1 and a lack of memory answer the same.
 * 3. White space in a device ID is passed over, except inside the keys "CMD:" and "SOJ:"
 * themselves.
 * 4. Print settings hold rows of the dictionaries (dictionaries.h); 65535 is "not set".
 */

#include <stdint.h>

#include "pxcl_export.h"
#include "responses.h"

PXCL_BEGIN_DECLS

/* ---- Device IDs ---- */

/* The command protocol that the printer speaks. Returns 1 for the older one, which "KWNP" stands
 * for and which is the answer when neither token is there; 2 for the newer one: "NOLP" and no
 * "KWNP".
 */
PXCL_API int32_t CLSS_GetProtocol(const char* deviceID, int64_t length);

/* CLSS_GetProtocol for applications; returns what that returns. */
PXCL_API int32_t PXCL_GetProtocol(const char* deviceID, int64_t length);

/* Whether the printer takes the XML commands: ZIRK, followed by "," or ";", in the first field
 * "CMD:" that a ";" closes. Returns 2 when it does, otherwise 1.
 */
PXCL_API int32_t CLSS_HasZIRK(const char* deviceID, int64_t length);

/* Whether the printer reports usage information: NOLP in the first field "SOJ:", by the same rules.
 * Returns 2 when it does, otherwise 1.
 */
PXCL_API int32_t CLSS_HasPLI(const char* deviceID, int64_t length);

/* Returns 1 when a model of MINP_PRINTER_LIST occurs in the device ID, otherwise 0. */
PXCL_API int32_t CLSS_IsSupportMinP(const char* deviceID, int64_t length);

/* Returns 1 when a model of KWNP_PRINTER_LIST_14AUTUMN occurs in the device ID, otherwise 0. */
PXCL_API int32_t CLSS_IsSupportKWNP_From14Autumn(const char* deviceID, int64_t length);

/* Returns 1 when `selector` is 1 and a model of CORVEL_PRINTER_LIST occurs in the device ID,
 * otherwise 0. */
PXCL_API int32_t CLSS_IsSupportCorvel(const char* deviceID, int64_t length, int16_t selector);

/* The version of the request that a printer with the Corvel feature takes. Returns 0 to 3, which is
 * the entry of CORVEL_REQUEST_VERSION_INFO_LIST beside the first model of CORVEL_PRINTER_LIST that
 * occurs in the device ID; -1 when none does or `selector` is not 1.
 */
PXCL_API int32_t CLSS_GetCorvelRequestVersionInfo(const char* deviceID, int64_t length,
                                                  int16_t selector);

/* ---- Tokens and models: words for searchString, each list closed by a null pointer. A model
 * matches wherever its name occurs; there are no word boundaries. ---- */

PXCL_API extern const char* const PROTOCOL_DEVICEID_OLD[];      /* 1 token, "KWNP" */
PXCL_API extern const char* const PROTOCOL_DEVICEID_NEW[];      /* 1 token, "NOLP" */
PXCL_API extern const char* const ZIRK_DEVICEID[];              /* 2 tokens, "ZIRK;" and "ZIRK," */
PXCL_API extern const char* const PLI_DEVICEID[];               /* 2 tokens, "NOLP;" and "NOLP," */
PXCL_API extern const char* const MINP_PRINTER_LIST[];          /* 85 models */
PXCL_API extern const char* const CORVEL_PRINTER_LIST[];        /* 15 models */
PXCL_API extern const char* const KWNP_PRINTER_LIST_14AUTUMN[]; /* 29 models */
PXCL_API extern const char* const supportNetworkSetting[];      /* 22 models, for callers only */
PXCL_API extern const char* const noSupportWebManual[];         /* 34 models, for callers only */
PXCL_API extern const char* const UnnecessaryCertification[];   /* 6 models, for callers only */

/* Request versions, parallel to CORVEL_PRINTER_LIST; the last one stands beside its null pointer.
 */
PXCL_API extern const uint32_t CORVEL_REQUEST_VERSION_INFO_LIST[16];

/* ---- Print settings ---- */

/* What to print on, and how. The caller's; 65535 in a field is "not set". */
typedef struct ClssPrintSettings {
  uint16_t version;     /* must be 2 */
  uint16_t paperSize;   /* row of glb_clssdicPaperSizeTbl */
  uint16_t paperType;   /* row of glb_clssdicPaperTypeTbl */
  uint16_t borderless;  /* row of glb_clssdicBorderlessTbl: 1 "OFF", 2 "ON" */
  uint16_t colorMode;   /* row of glb_clssdicColormodeTbl: 1 "color" to 4 "coldblack" */
  uint16_t duplexPrint; /* row of glb_clssdicDuplexPrintTbl: 1 "OFF", 2 to 4 "ON" */
} ClssPrintSettings;

/* Sets every field but the version to 65535. Returns 0; -2 when `record` is null; -8 when its
 * version is not 2 (nothing is written then).
 */
PXCL_API int32_t CLSS_initPrintSettings(ClssPrintSettings* record);

/* Completes borderless, colorMode and duplexPrint for the paperSize and paperType of `record` from
 * `document`, the `length` bytes of a reply to GetCapability. What the three fields hold on entry
 * is wished for and is kept where the printer allows it with that paper; what the printer does not
 * offer at all becomes 65535. Where no wish is set: borderless printing, or printing with borders
 * when `preferBordered` is not 0; "color", or else the first mode of the paper; duplex "OFF".
 * Returns 0, or
 *   -2  an argument is null or empty, paperSize or paperType is 65535, memory is short, or the
 *       reply is not a good one that lists both; an entry that cannot be read hides those after it
 *   -8  the version of `record` is not 2
 * A failure leaves `record` as it was.
 */
PXCL_API int32_t CLSS_AutoMakeOtherPrintSettings(int16_t preferBordered, const char* document,
                                                 uint64_t length, ClssPrintSettings* record);

/* Chooses paperSize, paperType or both from the paper that is loaded, then completes the rest as
 * CLSS_AutoMakeOtherPrintSettings does. `status` is what CLSS_ParseStatusResponsePrint filled, with
 * `leading` set to 1. The mode says what is chosen and which slot fits:
 *   0  the size: a slot that holds paperType
 *   1  the type: a slot that holds paperSize
 *   2  both, not plain paper: every type but 1 and 15; 13, 14 and 17 only where panelMedia is 1,
 *      2 and 3 only where it is not
 *   3  both, plain paper: type 1 where panelMedia is not 1, and type 15; prefers borders
 * Returns 0, or
 *   -2   an argument is null or empty, the mode is above 3, what is given (the type in mode 0, the
 *        size in mode 1) is 65535, or the completion failed
 *   -7   no paper is loaded; in modes 0 and 1 also when none fits
 *   -8   the version of `record` is not 2, or `leading` is not 1
 *   -17  two slots fit, even with the same paper; in modes 2 and 3 also when none fits
 * A choice that fails leaves 65535 in what it was to choose; a completion that fails leaves the
 * choice.
 */
PXCL_API int32_t CLSS_AutoMakePrintSettings(uint16_t mode, const char* document, uint64_t length,
                                            const ClssStatus* status, ClssPrintSettings* record);

/* Whether print settings are for discs: always returns 0. */
PXCL_API int32_t CLSS_IsDiscLabelPrintSettings(void);

/* ---- Dimensions of paper ---- */

/* Outer dimensions of a sheet. */
typedef struct ClssPaperOutwardSize {
  int32_t width;  /* hundredths of a millimetre; -1 in a row without a paper size */
  int32_t height; /* hundredths of a millimetre; -1 in a row without a paper size */
} ClssPaperOutwardSize;

/* By row of glb_clssdicPaperSizeTbl; some rows that have no keyword there have dimensions here. */
PXCL_API extern const ClssPaperOutwardSize glb_PaperOutwardSizeTbl[83];

/* The outer dimensions for a row of glb_clssdicPaperSizeTbl, in hundredths of a millimetre. Returns
 * the height in the upper 32 bits and the width in the lower 32; all bits are set for a row without
 * a paper size and for 83 and above.
 */
PXCL_API uint64_t CLSS_GetPaperOutwardSize(uint16_t paperSize);

PXCL_END_DECLS

#endif /* PXCL_DEVICE_H */
