/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 *
 * The vocabulary of the protocol: every keyword that a command or a reply may hold, one table each.
 *
 * A keyword is known by its row index. Row 0 is unused in every table but the service types, so
 * that index 0 can mean "not set"; 65535 is "not found". Unused rows (null keyword, code 65535)
 * keep the indices of the rows behind them stable. The number beside each table counts its rows,
 * unused ones included. The spellings, the odd ones too, are those that printers send and expect.
 */
#ifndef PXCL_DICTIONARIES_H
#define PXCL_DICTIONARIES_H

#include <stdint.h>

#include "pxcl_export.h"

PXCL_BEGIN_DECLS

/* One row of a dictionary. */
typedef struct ClssDicRow {
  const char* keyword; /* zero-terminated; null in an unused row */
  uint16_t code;       /* the keyword's protocol code; 65535 when it has none */
} ClssDicRow;

/* servicetype="...": the service that a command or reply is about. Row 0 is in use: "print". */
PXCL_API extern const ClssDicRow glb_clssdicServiceTypeTbl[];
PXCL_API extern const uint16_t CLSS_NUM_SERVICETYPE_LIST; /* 10 */

/* Groups of ink tanks to clean or check. */
PXCL_API extern const ClssDicRow glb_clssdicInkgroupTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_INKGROUP; /* 5 */

/* Where paper comes from. */
PXCL_API extern const ClssDicRow glb_clssdicInputbinTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_INPUTBIN; /* 6 */

/* The paper types that are printable discs. */
PXCL_API extern const ClssDicRow glb_clssdicPaperTypeDiscLabelPrintTbl[];
PXCL_API extern const uint16_t CLSS_NUM_PAPERTYPE_DISC_LABEL_PRINT; /* 3 */

/* papertype: the media types. */
PXCL_API extern const ClssDicRow glb_clssdicPaperTypeTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_PAPERTYPE; /* 30 */

/* papersize: the media sizes. */
PXCL_API extern const ClssDicRow glb_clssdicPaperSizeTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_PAPERSIZE; /* 83 */

/* mismatch_mode: what the printer does when the loaded paper is not the one asked for. */
PXCL_API extern const ClssDicRow glb_clssdicMismatchModeTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_MISMATCH_MODE; /* 3 */

/* host_environment: the operating system that the job comes from. */
PXCL_API extern const ClssDicRow glb_clssdicHostEnvironmentTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_HOST_ENVIRONMENT; /* 8 */

/* Which of the printer's network interfaces a MAC address belongs to. */
PXCL_API extern const ClssDicRow glb_clssdicMacAddressSortTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_MACADDRESS_SORT; /* 5 */

/* device_side_guide: whether the printer guides its user through loading a disc. */
PXCL_API extern const ClssDicRow glb_clssdicDeviceSideGuideTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_DEVICE_SIDE_GUIDE; /* 3 */

/* printpreparation: what has to be loaded by hand before a page. */
PXCL_API extern const ClssDicRow glb_clssdicPrintPreparationTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_PRINT_PREPARATION; /* 3 */

/* tca: the state of one ink tank. */
PXCL_API extern const ClssDicRow glb_clssdicTCATbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_TCA; /* 5 */

/* Variants of one printer model. */
PXCL_API extern const ClssDicRow glb_clssdicSubModel[];
PXCL_API extern const uint16_t CLSS_DICNUM_SUBMODEL; /* 3 */

/* Media types that are chosen on the printer's panel. */
PXCL_API extern const ClssDicRow glb_clssdicPanelMedia[];
PXCL_API extern const uint16_t CLSS_DICNUM_PANEL_PAPERTYPE; /* 4 */

/* What the printer's own web pages guide a user through. */
PXCL_API extern const ClssDicRow glb_clssdicRemoteUIGuideTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_REMOTEUI_GUIDE; /* 2 */

/* Links to the printer's own web pages, of type A. */
PXCL_API extern const ClssDicRow glb_clssdicRemoteUIpagelinkTypeATbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_REMOTEUI_PAGELINK_TYPEA; /* 8 */

/* Links to the printer's own web pages. */
PXCL_API extern const ClssDicRow glb_clssdicRemoteUIpagelinkTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_REMOTEUI_PAGELINK; /* 8 */

/* nextpage: whether another page follows. */
PXCL_API extern const ClssDicRow glb_clssdicNextpageTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_NEXTPAGE; /* 3 */

/* The owner's consent to sending usage information. */
PXCL_API extern const ClssDicRow glb_clssdicPLIagreementTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_PLI_AGR; /* 4 */

/* stapleside: the edge along which two-sided pages are turned. */
PXCL_API extern const ClssDicRow glb_clssdicStapleSideTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_STAPLESIDE; /* 3 */

/* duplexprint. Three rows hold "ON": 2 as such, 3 with the long, 4 with the short staple side; a
 * look-up always finds row 2. */
PXCL_API extern const ClssDicRow glb_clssdicDuplexPrintTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_DUPLEXPRINT; /* 5 */

/* printcolormode. */
PXCL_API extern const ClssDicRow glb_clssdicColormodeTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_COLORMODE; /* 5 */

/* borderlessprint. */
PXCL_API extern const ClssDicRow glb_clssdicBorderlessTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_BORDERLESS; /* 3 */

/* format, support_data_format: the form in which page data are sent. */
PXCL_API extern const ClssDicRow glb_clssdicDataFormatTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_DATAFORMAT; /* 9 */

/* jobprogress. */
PXCL_API extern const ClssDicRow glb_clssdicJobProgressTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_JOBPROGRESS; /* 5 */

/* status_detail: why the printer's status is what it is. */
PXCL_API extern const ClssDicRow glb_clssdicStatusDetailTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_STATUSDETAIL; /* 8 */

/* jobprogress_detail/state. */
PXCL_API extern const ClssDicRow glb_clssdicStateTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_STATE; /* 9 */

/* status: what the printer is doing. */
PXCL_API extern const ClssDicRow glb_clssdicStatusTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_STATUS; /* 7 */

/* response_detail: why a command was refused. */
PXCL_API extern const ClssDicRow glb_clssdicResponseDetailTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_RESDETAIL; /* 12 */

/* response, ijresponse: the result of a command. */
PXCL_API extern const ClssDicRow glb_clssdicResponseTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_RESPONSE; /* 3 */

/* ijoperation: the vendor's own operations that have a response. */
PXCL_API extern const ClssDicRow glb_clssdicIJOperationTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_IJOPERATION; /* 5 */

/* operation. A command at an odd index is followed by its response at the next even one. */
PXCL_API extern const ClssDicRow glb_clssdicOperationTbl[];
PXCL_API extern const uint16_t CLSS_DICNUM_OPERATION; /* 27 */

/* Not rows of a dictionary: the entries of the tables of supported paper. */
PXCL_API extern const uint16_t CLSS_NUM_PAPERTYPE;  /* 23 */
PXCL_API extern const uint16_t CLSS_NUM_PAPERSIZE;  /* 81 */
PXCL_API extern const uint16_t CLSS_NUM_PAPERSIZE2; /* 83 */

/* The namespaces of the protocol, side by side: 0 common ("zirk"), 1 vendor ("vrx"), 2 print schema
 * ("tolm"). A namespace index, wherever one is passed or stored, is a position in these two. */
PXCL_API extern const char* const glb_NameSpacePrefix[3];
PXCL_API extern const char* const glb_NameSpace[3]; /* URIs; their host is chosen at build time */

PXCL_END_DECLS

#endif /* PXCL_DICTIONARIES_H */
