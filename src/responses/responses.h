/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 */
#ifndef PXCL_RESPONSES_H
#define PXCL_RESPONSES_H

/* Decoding of the printer's replies.
 *
 *  1. A reply is a pointer and a length in bytes; it need not be terminated, is only read, and no
 *     pointer into it is kept. Every call may be made from any thread.
 *  2. Keywords are stored as their row index in the dictionary that the field names; 65535 is
 *     "absent, empty or unknown". Keywords are matched exactly, case included.
 *  3. Elements are named below by their path in the reply, with the prefixes "zirk" (common) and
 *     "vrx" (vendor); a reply may bind any prefix to these namespaces. "print:" stands for
 *     cmd/zirk:contents/zirk:param_set servicetype="print"/, likewise "maintenance:".
 *  4. Where a call fails, its record holds what was decoded before the failing step.
 *  5. -2 from any call that reads a reply also means that the text is not XML as far as its root's
 *     end tag, that its root is not `cmd`, or that memory ran out while it was scanned.
 *  6. Numbers that a reply states are passed on unchanged, in the printer's own units. */

#include <stdint.h>

#include "keyed.h"
#include "pxcl_export.h"

PXCL_BEGIN_DECLS

/* ---- Records ------------------------------------------------------------------------------- */

/* clang-format off */

/* How an operation and its answer belong together; indexed by the operation's dictionary row. */
typedef struct ClssOperationInfo {
  uint32_t partner;    /* row of the command's answer, or of the command answered; 0 in unused rows */
  uint32_t isResponse; /* 1 for a response, 0 for a command and for unused rows */
} ClssOperationInfo;

/* The head that every reply has. */
typedef struct ClssResponseCommon {
  uint16_t reserved;       /* in: must be 0 */
  uint16_t serviceType;    /* servicetype of the service block: 0 print, 1 device, 2 scan,
                              3 maintenance */
  uint16_t operation;      /* glb_clssdicOperationTbl, a response; 65535 until known. zirk:operation */
  uint16_t response;       /* glb_clssdicResponseTbl: 1 "OK", 2 "NG"; 65535 until known. zirk:response */
  uint16_t responseDetail; /* glb_clssdicResponseDetailTbl; 65535 when absent and unless "NG".
                              zirk:response_detail */
  uint16_t ijOperation;    /* glb_clssdicIJOperationTbl, a response; 65535 when absent.
                              vrx:ijoperation */
  uint16_t ijResponse;     /* glb_clssdicResponseTbl; 65535 without ijOperation. vrx:ijresponse */
  char jobID[9];           /* at most 8 characters, terminated; all zero when absent.
                              zirk:jobID, else zirk:jobstatus/zirk:jobID */
} ClssResponseCommon;

/* The status block that every status reply has. */
typedef struct ClssStatusCommon {
  uint16_t status;       /* glb_clssdicStatusTbl; 65535 when absent. zirk:status */
  uint16_t statusDetail; /* glb_clssdicStatusDetailTbl; 65535 when absent; always 7 with support
                            code "4103". zirk:status_detail */
  char jobID[9];         /* at most 8 characters, terminated; all zero when absent.
                            zirk:jobstatus/zirk:jobID */
  uint16_t jobProgress;  /* glb_clssdicJobProgressTbl; 65535 when absent.
                            zirk:jobstatus/zirk:jobprogress */
  char supportCode[11];  /* at most 10 characters, terminated; all zero when absent.
                            zirk:current_support_code */
} ClssStatusCommon;

/* Status of the printer, its loaded paper and its inks, and of one job. The three arrays hold one slot for
 * each loaded bin whose type and size are both known, in bin order. The first 65535 ends the list; what
 * stands behind it means nothing. */
typedef struct ClssStatus {
  uint16_t leading;             /* version for the print settings (1); parsers do not touch it */
  ClssStatusCommon common;      /* the status block */
  uint16_t currentPaperType[8]; /* glb_clssdicPaperTypeTbl, or glb_clssdicPanelMedia where panelMedia is 1;
                                   65535 ends the list. print:zirk:currentpapertype
                                   physicalinputbin="inputbin_p1" .. "inputbin_p7" */
  uint16_t currentPaperSize[8]; /* glb_clssdicPaperSizeTbl; 65535 ends the list.
                                   print:zirk:currentpapersize physicalinputbin="inputbin_p1" .. */
  uint16_t panelMedia[8];       /* 1 when only glb_clssdicPanelMedia knows the type, else 0 */
  uint16_t inkState;            /* 65535 no ink listed, 1 not every ink is "AC", 2 every ink is.
                                   print:zirk:marker_info/zirk:ink/vrx:tca */
  int32_t completeImpression;   /* impressions of the job completed so far; -1 when absent.
                                   zirk:jobinfo/zirk:complete_impression */
  uint16_t jobState;            /* glb_clssdicStateTbl; 65535 when absent.
                                   zirk:jobinfo/zirk:jobprogress_detail/zirk:state */
} ClssStatus;

/* What a paper size allows. An absent or empty element reads as zeros. All but the first is asked for under
 * the namespace that lists the size. */
typedef struct ClssPaperSize {
  uint16_t version;                /* in: must be 3 */
  uint16_t paperSize;              /* glb_clssdicPaperSizeTbl. print:papersize */
  uint32_t printAreaBorder[2];     /* two numbers of printarea_border papersize="..." */
  uint32_t printAreaBorderless[2]; /* two numbers of printarea_borderless papersize="..." */
  uint32_t printAreaDuplex[2];     /* two numbers of printarea_duplex papersize="..." */
  uint16_t sizeItemTag;            /* namespace that lists the size: 0 zirk, 1 vrx, 2 tolm */
  uint32_t marginBorder[4];        /* four numbers of margin_border papersize="..." */
  uint32_t marginBorderless[4];    /* four numbers of margin_borderless papersize="..." */
  uint32_t marginDuplex[4];        /* four numbers of margin_duplex papersize="..." */
} ClssPaperSize;

/* Front and back of a two-sided panel medium; types are reported only when both are known. */
typedef struct ClssMediaMap {
  uint16_t version;   /* in: must be 0 */
  uint16_t frontType; /* glb_clssdicPaperTypeTbl; 65535 when absent.
                         print:vrx:mediamap papertype="..."/vrx:front */
  uint16_t backType;  /* glb_clssdicPaperTypeTbl; 65535 when absent.
                         print:vrx:mediamap papertype="..."/vrx:back */
  uint16_t frontTag;  /* namespace of the front type: 1 (vrx) */
  uint16_t backTag;   /* namespace of the back type: 1 (vrx) */
} ClssMediaMap;

/* What a media type allows. All but the first is asked for under the namespace that lists the type. */
typedef struct ClssMediaType {
  uint16_t version;         /* in: must be 3 */
  uint16_t paperType;       /* glb_clssdicPaperTypeTbl. print:papertype */
  uint16_t borderlessOff;   /* 2 when bordered print ("OFF") is listed, else 1.
                               borderlessprint papertype="..." */
  uint16_t borderlessOn;    /* 2 when borderless print ("ON") is listed, else 1. The same element */
  uint16_t colorModes[21];  /* glb_clssdicColormodeTbl, ascending by code; the rest 65535.
                               printcolormode papertype="..." */
  uint16_t duplexModes[21]; /* glb_clssdicDuplexPrintTbl, ascending by code, "ON" spread over the staple
                               sides listed (3 long side, 4 short side); the rest 65535.
                               duplexprint papertype="...", print:stapleside */
  uint16_t nameSpace;       /* namespace that lists the type: 0 zirk, 1 vrx, 2 tolm */
} ClssMediaType;

/* clang-format on */

/* ---- Operations ---------------------------------------------------------------------------- */

/* One row for each row of glb_clssdicOperationTbl and of glb_clssdicIJOperationTbl. */
PXCL_API extern const ClssOperationInfo glb_OperationInfoTbl[27];
PXCL_API extern const ClssOperationInfo glb_IJOperationInfoTbl[5];

/* The response that answers a command: its row in glb_clssdicOperationTbl, 0 for an unused row.
 * -2: not a row of the table, or itself a response. */
PXCL_API int32_t CLSS_GetCommandOperationPair(uint16_t operation);

/* The partner of any operation, so that a response gives its command; 0 for an unused row.
 * -2: not a row of the table. */
PXCL_API int32_t CLSS_GetOperationPair(uint16_t operation);

/* ---- The head of a reply ------------------------------------------------------------------- */

/* Tells which response a reply is (row of glb_clssdicOperationTbl) and of which service (0 print,
 * 1 device, 2 scan, 3 maintenance). Both results are 65535 until known.
 *  0  both known
 * -2  an argument missing, the reply unreadable, the operation a command, or no service block
 * -5  the operation is not in the dictionary
 * -9  no operation, or an empty one */
PXCL_API int32_t getOperation_ServiceType(const char* document, uint64_t length,
                                          uint16_t* operation, uint16_t* serviceType);

/* Decodes the head of any reply. `parsePosition` receives the offset at which the scan of the reply
 * ended, 0 on failure.
 *  0   decoded
 * -2   an argument missing, the reply unreadable, the operation (or vendor operation) a command, no
 *      service block, or a job identifier of more than 8 characters
 * -5   operation or vendor operation not in its dictionary
 * -8   record->reserved is not 0
 * -9   no operation, or an empty one
 * -10  no response, or a vendor operation without vendor response
 * -13  "NG" without a detail element (an empty one is allowed)
 * -15  response or vendor response not in the dictionary
 * -16  "NG" with a detail that is not in the dictionary */
PXCL_API int32_t CLSS_ParseResponseCommon(const char* document, uint64_t length,
                                          uint64_t* parsePosition, ClssResponseCommon* record);

/* The same, cut down to what a print filter needs: the operation, the job identifier (9 bytes are
 * written, zero-padded) and, through the inner pointer, the detail of an "NG" (65535 without one).
 * Returns what CLSS_ParseResponseCommon returns; -2 also for a negative length and for a missing
 * output. On failure nothing is written. */
PXCL_API int32_t PXCL_GetInfoResponse(const char* document, int32_t length, uint16_t* operation,
                                      char* jobID, uint16_t** responseDetail);

/* ---- Status -------------------------------------------------------------------------------- */

/* Decodes the status block of a "GetStatusResponse" of any service. The first five of `keys` name,
 * in this order, the elements of status, status detail, job identifier, job progress and support
 * code.
 *  0  decoded
 * -2  an argument missing, fewer than five keys, the reply unreadable, no service block, the
 *     operation a command, or a job identifier or support code that is too long for its field
 * -4  a key without text, or with a value pointer but no value length, or the reverse
 * -5  the operation is another response, or unknown
 * -9  no operation, or an empty one */
PXCL_API int32_t parseCommonStatusResponse(const char* document, uint64_t length,
                                           const ClssKeyValue* keys, uint32_t keyCount,
                                           ClssStatusCommon* record);

/* Decodes a print status reply; jobState and completeImpression become 65535 and -1.
 *  0  decoded
 * -2  an argument missing, the reply unreadable, no service block, the operation a command, or a
 *     job identifier or support code that is too long for its field
 * -3  the list of status details has not as many error codes as items; the record is complete
 * -5  the operation is another response, or unknown
 * -9  no operation, or an empty one */
PXCL_API int32_t CLSS_ParseStatusResponsePrint(const char* document, uint64_t length,
                                               ClssStatus* record);

/* The same, and then the job block (print:zirk:jobinfo) when its description begins with `jobID`, a
 * terminated text: the record's jobID, jobProgress, jobState and completeImpression become those of
 * the job. Without jobID, or when the status part does not give 0, no job block is looked at.
 *  1  the reply holds no block for this job
 * else as CLSS_ParseStatusResponsePrint */
PXCL_API int32_t CLSS_ParseStatusResponsePrint2(const char* document, uint64_t length,
                                                const char* jobID, ClssStatus* record);

/* Decodes the job block (maintenance:zirk:jobinfo) alone; the other fields are not touched.
 *  0  decoded
 *  1  the reply holds no block for this job
 * -2  an argument missing, or the reply unreadable */
PXCL_API int32_t CLSS_ParseStatusResponseMaintenance(const char* document, uint64_t length,
                                                     const char* jobID, ClssStatus* record);

/* Lists the job identifiers of a reply (attribute jobID of print:zirk:jobinfo) that have exactly 8
 * characters. `count` holds the number of slots and receives the number filled; slots left over
 * become empty texts. Only the first `count` jobs of the reply are looked at, those with other
 * identifiers among them. Without slots, or with a count below 1, it receives the number of jobs.
 *  0  listed
 * -2  an argument missing, or the reply unreadable */
PXCL_API int32_t CLSS_ParseJobIDListResponse(const char* document, uint64_t length,
                                             char (*slots)[9], int32_t* count);

/* Status, status detail and support code (11 bytes are written, zero-padded) of a print status
 * reply. The outputs are written only when the result is not negative.
 * -2  also for a negative length and for a missing output
 * else as CLSS_ParseStatusResponsePrint */
PXCL_API int32_t PXCL_GetStatus(const char* document, int32_t length, uint32_t* status,
                                uint32_t* statusDetail, char* supportCode);

/* The same, with the identifier of the job. Both texts are written without a terminator, so that
 * the caller clears its buffers first: 11 bytes for supportCode, 9 for jobIDOut.
 * 10  the reply holds no block for this job; the outputs are written
 * -2  also for a negative length and for a missing output
 * else as CLSS_ParseStatusResponsePrint2 */
PXCL_API int32_t PXCL_GetStatus2(const char* document, int32_t length, const char* jobID,
                                 uint32_t* status, uint32_t* statusDetail, char* supportCode,
                                 char* jobIDOut);

/* The same for the maintenance job, which comes without a status block: status and statusDetail
 * receive 65535, and no support code is written.
 *  1  the reply holds no block for this job; the outputs are written
 * -2  also for a negative length and for a missing output
 * else as CLSS_ParseStatusResponseMaintenance */
PXCL_API int32_t PXCL_GetStatus_Maintenance(const char* document, int32_t length, const char* jobID,
                                            uint32_t* status, uint32_t* statusDetail,
                                            char* supportCode, char* jobIDOut);

/* ---- Capabilities: sizes, media, pixels ---------------------------------------------------- */

/* Every call from here on that reads a "GetCapabilityResponse" may also return
 * -5  another operation, or none
 * -6  the reply is not "OK"
 * save CLSS_ParseCapabilityResponsePrint_MediaMap, which reads whatever it is given. */

/* Paper sizes (rows of glb_clssdicPaperSizeTbl) and media types (rows of glb_clssdicPaperTypeTbl)
 * that the library decodes, ascending. */
PXCL_API extern const uint16_t glb_supportedPaperSizeTbl[81];
PXCL_API extern const uint16_t glb_supportedPaperTypeTbl[23];

/* The two tables, and the number of their entries. */
PXCL_API const uint16_t* CLSS_GetParsePossibleSize(void);
PXCL_API int32_t CLSS_GetParsePossibleSizeNum(void);
PXCL_API const uint16_t* CLSS_GetParsePossibleMedia(void);
PXCL_API int32_t CLSS_GetParsePossibleMediaNum(void);

/* One of the paper sizes that a reply lists, counted from 0 in ascending order of their codes.
 * Index -1 is a query: `index` receives the number of sizes, and `record` is not looked at.
 *  0  decoded, or counted
 * -2  an argument missing, an index below -1, above 65535 or past the last size, the reply
 *     unreadable, or more than 2 numbers in an area or 4 in a margin
 * -3  fewer numbers than that; the areas and margins before it are stored
 * -7  no size listed
 * -8  record->version is not 3 */
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_PaperSize(const char* document, uint64_t length,
                                                             int32_t* index, ClssPaperSize* record);

/* One of the media types that a reply lists; index as above.
 *  0  decoded, or counted
 * -2  an argument missing, an index below -1, above 65535 or past the last type, the reply
 *     unreadable, or more keywords in one of the type's elements than their dictionary holds
 * -7  no type listed
 * -8  record->version is not 3 */
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_MediaType(const char* document, uint64_t length,
                                                             int32_t* index, ClssMediaType* record);

/* An addition of this library: all paper sizes of a reply at once, each decoded as the indexed call
 * does it, in one scan of the reply however many there are. `count` holds the number of records,
 * each with version 3, and receives the number filled. Without records, or with a count below 1, it
 * receives the number of sizes.
 *  0  decoded, or counted
 * else what CLSS_ParseCapabilityResponsePrint_PaperSize returns for the first size that fails, or
 * for all of them; `count` then receives the number of good records before it, but stays when an
 * argument is missing, the reply is refused or memory runs out. */
PXCL_API int32_t PXCL_ParseCapabilityResponsePrint_PaperSizes(const char* document, uint64_t length,
                                                              ClssPaperSize* records,
                                                              int32_t* count);

/* An addition of this library: the same for the media types. */
PXCL_API int32_t PXCL_ParseCapabilityResponsePrint_MediaTypes(const char* document, uint64_t length,
                                                              ClssMediaType* records,
                                                              int32_t* count);

/* Least and greatest numbers of pixels (print:min_pixels, print:max_pixels), cut to 16 bits; an
 * absent least reads as zeros.
 *  0  decoded
 * -2  an argument missing, or the reply unreadable; nothing is written
 * -3  not exactly two numbers in either
 * -7  no greatest number */
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_Pixels(const char* document, uint64_t length,
                                                          uint16_t* minFirst, uint16_t* minSecond,
                                                          uint16_t* maxFirst, uint16_t* maxSecond);

/* Front and back medium of a panel medium, a row of glb_clssdicPanelMedia.
 *  0  decoded; also when the reply maps nothing
 * -2  an argument missing, not a row of the dictionary, the reply unreadable, or more media in one
 *     element than the dictionary of paper types holds
 * -8  record->version is not 0 */
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_MediaMap(const char* document, uint64_t length,
                                                            uint16_t panelMediaIndex,
                                                            ClssMediaMap* record);

/* ---- Capabilities: does the printer support it? -------------------------------------------- */

/* Is a data format (glb_clssdicDataFormatTbl) listed in print:support_data_format?
 *  2  yes
 *  1  no
 * -2  an argument missing, the reply unreadable or not a row of the dictionary */
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_FormatType(const char* document, uint64_t length,
                                                              uint16_t value);

/* The value itself when it is listed, 0 otherwise and on every failure:
 *   NextPage             print:nextpage          glb_clssdicNextpageTbl
 *   PrintPreparation     print:printpreparation  glb_clssdicPrintPreparationTbl
 *   MismatchMode         print:mismatch_mode     glb_clssdicMismatchModeTbl
 *   DVD_DeviceSideGuide  print:vrx:device_side_guide/vrx:item name="disc"
 *                                                glb_clssdicDeviceSideGuideTbl */
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_NextPage(const char* document, uint64_t length,
                                                            uint16_t value);
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_PrintPreparation(const char* document,
                                                                    uint64_t length,
                                                                    uint16_t value);
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_MismatchMode(const char* document,
                                                                uint64_t length, uint16_t value);
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_DVD_DeviceSideGuide(const char* document,
                                                                       uint64_t length,
                                                                       uint16_t value);

/* The value itself (glb_clssdicHostEnvironmentTbl) when it is listed in print:host_environment or
 * maintenance:host_environment, 7 when only others are, 0 when none is and on every failure. */
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_HostEnvironment(const char* document,
                                                                   uint64_t length, uint16_t value);
PXCL_API int32_t CLSS_ParseCapabilityResponseMaintenance_HostEnvironment(const char* document,
                                                                         uint64_t length,
                                                                         uint16_t value);

/* Is the element there (print:job_queue, print:datetime, maintenance:datetime), under whichever
 * namespace, empty or not?
 *  2  yes
 *  1  no
 * -2  an argument missing, or the reply unreadable */
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_JobQueue(const char* document, uint64_t length);
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_DateTime(const char* document, uint64_t length);
PXCL_API int32_t CLSS_ParseCapabilityResponseMaintenance_DateTime(const char* document,
                                                                  uint64_t length);

/* Is a medium for disc labels (glb_clssdicPaperTypeDiscLabelPrintTbl) listed in print:papertype?
 *  2  yes
 *  1  no
 * -2  an argument missing, or the reply unreadable */
PXCL_API int32_t CLSS_ParseCapabilityResponsePrint_IsDiscLabelPrint(const char* document,
                                                                    uint64_t length);

/* Host environment "linux" of the print or of the maintenance service: 3 when it is listed, 7 when
 * only others are, 0 when none is and on every failure. */
PXCL_API int32_t PXCL_ParseCapabilityResponsePrint_HostEnv(const char* document, uint32_t length);
PXCL_API int32_t PXCL_ParseCapabilityResponseMaintenance_HostEnv(const char* document,
                                                                 uint32_t length);

/* As CLSS_ParseCapabilityResponsePrint_MismatchMode. */
PXCL_API int32_t PXCL_ParseCapabilityResponsePrint_MismatchMode(const char* document,
                                                                uint32_t length, uint16_t mode);

/* As the CLSS_ functions of these names; -2 also for a negative length. */
PXCL_API int32_t PXCL_ParseCapabilityResponsePrint_DateTime(const char* document, int32_t length);
PXCL_API int32_t PXCL_ParseCapabilityResponseMaintenance_DateTime(const char* document,
                                                                  int32_t length);

PXCL_END_DECLS

#endif /* PXCL_RESPONSES_H */
