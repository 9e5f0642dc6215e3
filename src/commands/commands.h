/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 */
#ifndef PXCL_COMMANDS_H
#define PXCL_COMMANDS_H

/* Command builders: each writes one XML command document, a single line, into the caller's buffer.
 *
 * 1. Text that a caller passes (job ID, bidi, job description, mode, date and time) is a string
 *    ended by a zero byte and is written as given. Nothing is escaped or checked: the caller writes
 *    "&", "<" and ">" as "&amp;", "&lt;" and "&gt;". A job description stands in a CDATA section:
 *    there nothing is to be escaped, and it must not hold "]]>". No text may lie in `buffer`.
 * 2. Every builder ends in `buffer`, `size` in bytes and `length`. The length never counts a
 *    terminator.
 *    - `buffer` null and `size` 0 is a size query: `length` receives the bytes needed, the status
 *      is CLSS_COMMAND_OK. For formatted and keyed commands that is an upper bound: a smaller
 *      buffer is refused even where the document itself would fit.
 *    - A size below the need: CLSS_COMMAND_BUFFER_TOO_SMALL, `length` receives the need, the buffer
 *      is untouched.
 *    - Otherwise the document is written and `length` receives its exact length.
 *    - A null `length`, a buffer with size 0 or a size without a buffer: CLSS_COMMAND_BAD_ARGUMENT.
 *    Builders that differ say so: SetConfigurationDevice and the maintenance commands.
 * 3. The rest of the buffer depends on the kind of command, which each builder names:
 *    - fixed: untouched, no terminator follows.
 *    - formatted and keyed: the buffer is cleared first, so that zeros follow. The size is taken as
 *      a signed 32-bit number for that: a buffer of 2^31 to 2^32 bytes is not cleared, one of 2^32
 *      + k is over k bytes. One zero byte follows the document whenever there is room for it.
 *    - maintenance: untouched, no terminator follows.
 * 4. `length` is left alone by every other failure. The PXCL_ calls that keep a length of their own
 *    (they say "the length is always stored") store 0 then.
 * 5. Every builder can return CLSS_COMMAND_BAD_ARGUMENT and CLSS_COMMAND_BUFFER_TOO_SMALL. Nothing is
 *    allocated, but for what SetConfigurationNS takes to decode a reply.
 *    CLSS_COMMAND_NOT_FORMATTED comes from a formatted command when sizes do not fit 32 bits, from
 *    a keyed one when a text is empty, and from a maintenance one when texts are too long. After
 *    these two a keyed command's buffer holds the command with placeholders for its texts; else it
 *    is untouched. Each function states only what it returns beyond that, and what it adds to these
 *    causes.
 * 6. No state is kept: any thread may call any builder.
 */

#include <stdint.h>

#include "pxcl_export.h"

PXCL_BEGIN_DECLS

enum {
  CLSS_COMMAND_OK = 0,
  CLSS_COMMAND_NO_MEMORY = -1,     /* reserved: documents are written without a block */
  CLSS_COMMAND_BAD_ARGUMENT = -2,  /* null or inconsistent argument, unknown index or selector */
  CLSS_COMMAND_NOT_ACCEPTED = -3,  /* a combination or text length that is not taken */
  CLSS_COMMAND_NOT_FORMATTED = -4, /* a text that is too long for its command, or empty */
  CLSS_COMMAND_BAD_SETTING = -7,   /* a settings value out of range */
  CLSS_COMMAND_BAD_VERSION = -8,   /* a settings record of another version */
  CLSS_COMMAND_BUFFER_TOO_SMALL = -100 /* `length` receives the size that is needed */
};

/* Limits of the arguments. */
enum {
  CLSS_JOB_DESCRIPTION_MAX = 64,   /* bytes of a job description */
  CLSS_CONFIGURATION_VERSION = 2,  /* ClssConfigurationPaper.version */
  CLSS_DEVICE_SETTINGS_VERSION = 1 /* ClssDeviceSettings.version */
};
#define CLSS_SETTING_ABSENT 65535 /* a setting that is not sent */

/* Paper of a print job. */
typedef struct ClssConfigurationPaper {
  uint16_t version;    /* 2 */
  uint16_t paperSize;  /* row of glb_clssdicPaperSizeTbl; an unused row is sent as an empty text */
  uint16_t paperType;  /* row of glb_clssdicPaperTypeTbl; an unused row is sent as an empty text */
  uint16_t borderless; /* row of glb_clssdicBorderlessTbl: 1 off, 2 on */
} ClssConfigurationPaper;

/* Modes of a print job. */
typedef struct ClssConfigurationMode {
  uint16_t colorMode;   /* row of glb_clssdicColormodeTbl, 1 to 4; 65535: not sent */
  uint16_t duplexPrint; /* row of glb_clssdicDuplexPrintTbl: 1 off, 2 on, 3 on with the staple at
                           the long side, 4 at the short side; 65535: not sent */
} ClssConfigurationMode;

/* The user's answer to sharing usage information. */
typedef struct ClssDeviceSettings {
  uint16_t version;      /* 1 */
  uint16_t pliAgreement; /* row of glb_clssdicPLIagreementTbl: 1 unknown, 2 disagree, 3 agree */
} ClssDeviceSettings;

/* ---- Fixed commands ---- */

/* Asks for the capabilities of the print (selector 0), device (1) or maintenance (3) service.
 * An unknown selector is CLSS_COMMAND_BAD_ARGUMENT before anything else is looked at.
 */
PXCL_API int32_t CLSS_MakeCommand_GetCapability(char* buffer, uint64_t size, uint64_t* length,
                                                int32_t selector);

/* The same with 32-bit lengths and no size query: a size of 0 is CLSS_COMMAND_BAD_ARGUMENT, and the
 * length is not stored. Else the length is always stored.
 */
PXCL_API int32_t PXCL_MakeGetCapabilityCommand(char* buffer, uint32_t size, uint32_t* length,
                                               uint32_t selector);

/* Asks for the configuration of the print (selector 0) or device (1) service. An unknown selector
 * is
 * CLSS_COMMAND_BAD_ARGUMENT before anything else is looked at.
 */
PXCL_API int32_t CLSS_MakeCommand_GetConfiguration(char* buffer, uint64_t size, uint64_t* length,
                                                   int32_t selector);

/* Switches the printer off; puts it into firmware update mode; ends a hand-over; asks for the
 * status of the device; asks for the print jobs' IDs.
 */
PXCL_API int32_t CLSS_MakeCommand_PowerOff(char* buffer, uint64_t size, uint64_t* length);
PXCL_API int32_t CLSS_MakeCommand_FRomUpMode(char* buffer, uint64_t size, uint64_t* length);
PXCL_API int32_t CLSS_MakeCommand_Handoveroff(char* buffer, uint64_t size, uint64_t* length);
PXCL_API int32_t CLSS_MakeCommand_GetStatusDevice(char* buffer, uint64_t size, uint64_t* length);
PXCL_API int32_t CLSS_MakeCommand_GetJobIDList(char* buffer, uint64_t size, uint64_t* length);

/* Asks for the status of the print or maintenance service: a fixed command for a null job ID, a
 * keyed one about that job otherwise.
 */
PXCL_API int32_t CLSS_MakeCommand_GetStatusPrint(const char* jobID, char* buffer, uint64_t size,
                                                 uint64_t* length);
PXCL_API int32_t CLSS_MakeCommand_GetStatusMaintenance(const char* jobID, char* buffer,
                                                       uint64_t size, uint64_t* length);

/* The same without a job ID; the length is always stored. */
PXCL_API int32_t PXCL_MakeCommand_GetStatusPrint(char* buffer, uint32_t size, uint32_t* length);
PXCL_API int32_t PXCL_MakeCommand_GetStatusMaintenance(char* buffer, uint32_t size,
                                                       uint32_t* length);

/* ---- Job commands, formatted ---- */

/* Opens a job. `serviceType` is a row of glb_clssdicServiceTypeTbl, `hostEnvironment` 0 (not sent)
 * or a row of glb_clssdicHostEnvironmentTbl, `jobDescription` null (not sent) or at most 64 bytes,
 * `bidi` "0" or "1". `mode` says which detections are told: 0 none, 1 misdetection on, 2 paper
 * detection not forced, 3 both. In this order:
 *   CLSS_COMMAND_BAD_ARGUMENT  `buffer`, `size` and `length`, null job ID or bidi, unknown service
 *                              type
 *   CLSS_COMMAND_NOT_ACCEPTED  a host environment without a description, an unknown mode, a
 *                              description of more than 64 bytes
 *   CLSS_COMMAND_BAD_ARGUMENT  a host environment that is no row of its dictionary
 */
PXCL_API int32_t CLSS_MakeCommand_StartJob3(uint16_t serviceType, uint16_t hostEnvironment,
                                            const char* jobDescription, int16_t mode,
                                            const char* jobID, const char* bidi, char* buffer,
                                            uint64_t size, uint64_t* length);

/* StartJob3 for the print service without host environment and description; StartJob with mode 0.
 * */
PXCL_API int32_t CLSS_MakeCommand_StartJob2(int16_t mode, const char* jobID, const char* bidi,
                                            char* buffer, uint64_t size, uint64_t* length);
PXCL_API int32_t CLSS_MakeCommand_StartJob(const char* jobID, const char* bidi, char* buffer,
                                           uint64_t size, uint64_t* length);

/* StartJob3 for the print service with mode 2, and for the maintenance service with mode 0, both
 * with bidi "0". A negative size is widened with its sign. The length is always stored.
 */
PXCL_API int32_t PXCL_MakeCommand_StartJob3(uint32_t hostEnvironment, const char* jobDescription,
                                            const char* jobID, char* buffer, int32_t size,
                                            uint32_t* length);
PXCL_API int32_t PXCL_MakeCommand_StartJob3_Maintenance(uint32_t hostEnvironment,
                                                        const char* jobDescription,
                                                        const char* jobID, char* buffer,
                                                        uint64_t size, uint64_t* length);

/* Closes or aborts a job. A null job ID or an unknown service type is CLSS_COMMAND_BAD_ARGUMENT. */
PXCL_API int32_t CLSS_MakeCommand_EndJob(uint16_t serviceType, const char* jobID, char* buffer,
                                         uint64_t size, uint64_t* length);
PXCL_API int32_t CLSS_MakeCommand_CancelJob(uint16_t serviceType, const char* jobID, char* buffer,
                                            uint64_t size, uint64_t* length);

/* CancelJob for the print and the maintenance service, EndJob for the maintenance service. The
 * length is always stored.
 */
PXCL_API int32_t PXCL_MakeCommand_CancelJob(const char* jobID, char* buffer, uint32_t size,
                                            uint32_t* length);
PXCL_API int32_t PXCL_MakeCommand_CancelJob_Maintenance(const char* jobID, char* buffer,
                                                        uint32_t size, uint32_t* length);
PXCL_API int32_t PXCL_MakeCommand_EndJob_Maintenance(const char* jobID, char* buffer, uint32_t size,
                                                     uint64_t* length);

/* Switches the printer's mode inside a job to the mode named by `modeText`. A null job ID or mode
 * text or an unknown service type is CLSS_COMMAND_BAD_ARGUMENT.
 */
PXCL_API int32_t CLSS_MakeCommand_ModeShift(uint16_t serviceType, const char* jobID,
                                            const char* modeText, char* buffer, uint64_t size,
                                            uint64_t* length);

/* ---- Data and page commands, keyed ---- */

/* Announces `dataSize` bytes of a print job in the format of the name. The size is written as a
 * signed 32-bit number. A null job ID or a data size of 0 is CLSS_COMMAND_BAD_ARGUMENT.
 */
PXCL_API int32_t CLSS_MakeCommand_SendDataJPEG(const char* jobID, uint32_t dataSize, char* buffer,
                                               uint64_t size, uint64_t* length);
PXCL_API int32_t CLSS_MakeCommand_SendDataJPEGPAGE(const char* jobID, uint32_t dataSize,
                                                   char* buffer, uint64_t size, uint64_t* length);
PXCL_API int32_t CLSS_MakeCommand_SendDataPWGRaster(const char* jobID, uint32_t dataSize,
                                                    char* buffer, uint64_t size, uint64_t* length);

/* Announces raw pixels of `width` x `height`, three bytes each; the data size is the low 32 bits of
 * their product, written as a signed number. A null job ID, a width or a height of 0 is
 * CLSS_COMMAND_BAD_ARGUMENT.
 */
PXCL_API int32_t CLSS_MakeCommand_SendDataRAW(const char* jobID, uint16_t width, uint16_t height,
                                              char* buffer, uint64_t size, uint64_t* length);

/* SendDataPWGRaster with the size before the buffer and no size query: a size below 1 is refused.
 * Any failure is CLSS_COMMAND_BAD_ARGUMENT; `length` still receives the need when the buffer is too
 * small.
 */
PXCL_API int32_t PXCL_GetSendDataPWGRasterCommand(const char* jobID, uint32_t dataSize,
                                                  int64_t size, char* buffer, uint64_t* length);

/* Configures the next page of a print job. `nextPage` is a row of glb_clssdicNextpageTbl,
 * `printPreparation` a row of glb_clssdicPrintPreparationTbl; 0 leaves the element out. A null job
 * ID or an unknown row is CLSS_COMMAND_BAD_ARGUMENT.
 */
PXCL_API int32_t CLSS_MakeCommand_SetPageConfiguration2(const char* jobID, uint16_t nextPage,
                                                        uint16_t printPreparation, char* buffer,
                                                        uint64_t size, uint64_t* length);

/* The same without print preparation. The PXCL_ call returns CLSS_COMMAND_BAD_ARGUMENT for any
 * failure; `length` still receives the need when the buffer is too small.
 */
PXCL_API int32_t CLSS_MakeCommand_SetPageConfiguration(const char* jobID, uint16_t nextPage,
                                                       char* buffer, uint64_t size,
                                                       uint64_t* length);
PXCL_API int32_t PXCL_GetSetPageConfigurationCommand(const char* jobID, uint16_t nextPage,
                                                     char* buffer, uint64_t size, uint64_t* length);

/* Configures a print job: date and time (null leaves the element out) and the device's own guide
 * for printing on discs, a row of glb_clssdicDeviceSideGuideTbl (0 leaves the element out). A null
 * job ID or an unknown row is CLSS_COMMAND_BAD_ARGUMENT.
 */
PXCL_API int32_t CLSS_MakeCommand_SetJobConfiguration(const char* jobID, const char* dateTime,
                                                      uint16_t deviceSideGuide, char* buffer,
                                                      uint64_t size, uint64_t* length);

/* The same without the guide. The length of the PXCL_ call is always stored, and a negative size is
 * widened with its sign.
 */
PXCL_API int32_t CLSS_MakeCommand_SetTime(const char* jobID, const char* dateTime, char* buffer,
                                          uint64_t size, uint64_t* length);
PXCL_API int32_t PXCL_MakeCommand_SetJobConfiguration(const char* jobID, const char* dateTime,
                                                      char* buffer, int32_t size, uint32_t* length);

/* ---- Print and device settings, formatted ---- */

/* Sets paper and modes of a print job. With the printer's capability reply the paper size and the
 * media settings carry the namespace under which the printer lists that size and that type (the
 * last entry of the reply wins); without one, all are in the common namespace. In this order:
 *   CLSS_COMMAND_BAD_ARGUMENT  `buffer`, `size` and `length`, null job ID, a reply without a length
 *                              or a length without a reply
 *   CLSS_COMMAND_BAD_VERSION   `paper.version` is not 2
 *   CLSS_COMMAND_BAD_SETTING   paper size or type 65535; borderless, colour mode or duplex that is
 *                              no row with a keyword (65535 is accepted for the last two)
 *   CLSS_COMMAND_BAD_ARGUMENT  the reply does not list the paper size or type, or is no such reply
 *   CLSS_COMMAND_BAD_SETTING   paper size or type that is no row of its dictionary
 *   CLSS_COMMAND_NOT_FORMATTED namespace declarations of more than 2047 bytes
 */
PXCL_API int32_t CLSS_MakeCommand_SetConfigurationNS(ClssConfigurationPaper paper,
                                                     ClssConfigurationMode mode, const char* jobID,
                                                     const char* capability,
                                                     uint64_t capabilityLength, char* buffer,
                                                     uint64_t size, uint64_t* length);

/* SetConfigurationNS from six values: `settings` holds an ignored one, then paper size, paper type,
 * borderless, colour mode and duplex. Any failure is CLSS_COMMAND_BAD_ARGUMENT; `length` still
 * receives the need when the buffer is too small.
 */
PXCL_API int32_t PXCL_GetSetConfigurationCommand(const uint16_t* settings, const char* jobID,
                                                 uint64_t size, const char* capability,
                                                 uint64_t capabilityLength, char* buffer,
                                                 uint64_t* length);

/* Sets the user's answer to sharing usage information. A buffer with size 0 is a size query here; a
 * size without a buffer is CLSS_COMMAND_BUFFER_TOO_SMALL below the need and
 * CLSS_COMMAND_BAD_ARGUMENT from there on. In this order:
 *   CLSS_COMMAND_BAD_ARGUMENT  null `length` or job ID
 *   CLSS_COMMAND_BAD_VERSION   `settings.version` is not 1
 *   CLSS_COMMAND_BAD_SETTING   an agreement that is no row with a keyword
 */
PXCL_API int32_t CLSS_MakeCommand_SetConfigurationDevice(ClssDeviceSettings settings,
                                                         const char* jobID, char* buffer,
                                                         uint64_t size, uint64_t* length);

/* ---- Maintenance commands ----
 *
 * The buffer is required: a null one, like a null job ID or `length`, is CLSS_COMMAND_BAD_ARGUMENT,
 * and a buffer with size 0 is the size query. CLSS_COMMAND_NOT_FORMATTED also means that job ID and
 * date and time together do not fit the 2047 bytes that hold them with their tags, or that the
 * document, its holes and a terminator would take more than 2048 bytes.
 * The PXCL_ calls pass their arguments on; a negative size is widened with its sign.
 */

/* Configures a maintenance job; a null date and time leaves the element out. */
PXCL_API int32_t CLSS_MakeCommand_SetJobConfiguration_Maintenance(const char* jobID,
                                                                  const char* dateTime,
                                                                  char* buffer, uint64_t size,
                                                                  uint64_t* length);
PXCL_API int32_t PXCL_MakeCommand_SetJobConfiguration_Maintenance(const char* jobID,
                                                                  const char* dateTime,
                                                                  char* buffer, int32_t size,
                                                                  uint64_t* length);

/* Prints a nozzle check pattern. */
PXCL_API int32_t CLSS_MakeCommand_TestPrint(const char* jobID, char* buffer, uint64_t size,
                                            uint64_t* length);
PXCL_API int32_t PXCL_MakeCommand_TestPrint(const char* jobID, char* buffer, int32_t size,
                                            uint64_t* length);

/* Aligns the print heads (sent as a test print of its own type). */
PXCL_API int32_t CLSS_MakeCommand_AutoRegistration(const char* jobID, char* buffer, uint64_t size,
                                                   uint64_t* length);
PXCL_API int32_t PXCL_MakeCommand_AutoAlignment(const char* jobID, char* buffer, int32_t size,
                                                uint64_t* length);

/* Cleans the print heads of all inks, the regular way. */
PXCL_API int32_t CLSS_MakeCommand_Cleaning(const char* jobID, char* buffer, uint64_t size,
                                           uint64_t* length);
PXCL_API int32_t PXCL_MakeCommand_Cleaning(const char* jobID, char* buffer, int32_t size,
                                           uint64_t* length);

PXCL_END_DECLS

#endif /* PXCL_COMMANDS_H */
