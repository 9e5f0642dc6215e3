/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 *
 * A status monitor: decodes a reply to GetStatus and tells what the printer is doing.
 *   status_monitor reply.xml 00000042
 */
#include <pxcl.h>
#include <stdio.h>

/* Fields hold rows of a dictionary; 65535 is "absent or unknown". */
static const char* keyword(const ClssDicRow* dictionary, uint16_t row) {
  return row == 65535 ? "-" : dictionary[row].keyword;
}

static void print_paper(const ClssStatus* status) {
  for (int slot = 0; slot < 8; ++slot) {
    const uint16_t type = status->currentPaperType[slot], size = status->currentPaperSize[slot];
    if (type == 65535 || size == 65535) break; /* the first empty slot ends the list */
    const ClssDicRow* types =
        status->panelMedia[slot] == 1 ? glb_clssdicPanelMedia : glb_clssdicPaperTypeTbl;
    printf("paper:  %s, %s (%.1f x %.1f mm)\n", keyword(types, type),
           keyword(glb_clssdicPaperSizeTbl, size), glb_PaperOutwardSizeTbl[size].width / 100.0,
           glb_PaperOutwardSizeTbl[size].height / 100.0);
  }
}

static void print_status(const ClssStatus* status) {
  printf("status: %s, %s", keyword(glb_clssdicStatusTbl, status->common.status),
         keyword(glb_clssdicStatusDetailTbl, status->common.statusDetail));
  if (status->common.supportCode[0] != '\0') printf(", code %s", status->common.supportCode);
  printf("\nink:    %s\n", status->inkState == 65535 ? "-"
                           : status->inkState == 2   ? "all well"
                                                     : "needs a look");
  print_paper(status);
}

static void print_job(const ClssStatus* status) {
  printf("job:    %s %s, %s, %d pages done\n", status->common.jobID,
         keyword(glb_clssdicJobProgressTbl, status->common.jobProgress),
         keyword(glb_clssdicStateTbl, status->jobState), (int)status->completeImpression);
}

int main(int argc, char** argv) {
  static char reply[65536];
  FILE* file = argc == 3 ? fopen(argv[1], "rb") : NULL;
  if (file == NULL) {
    fputs("usage: status_monitor reply.xml job-id\n", stderr);
    return 2;
  }
  const size_t length = fread(reply, 1, sizeof reply, file);
  fclose(file);

  ClssStatus status = {.leading = 1};
  const int32_t result = CLSS_ParseStatusResponsePrint2(reply, length, argv[2], &status);
  if (result < 0) {
    fprintf(stderr, "no status reply (%d)\n", (int)result);
    return 1;
  }
  print_status(&status);
  if (result == 0) print_job(&status); /* 1: the printer knows no such job */
  return 0;
}
