/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 *
 * The three commands that bracket a job's data: StartJob, ModeShift, EndJob.
 *   job_steps 00000042
 */
#include <pxcl.h>
#include <stdio.h>

int main(int argc, char** argv) {
  if (argc != 2) {
    fputs("usage: job_steps job-id\n", stderr);
    return 2;
  }
  for (uint64_t step = 1; step <= 3; ++step) {
    char command[1024];
    uint64_t length = 0;
    const int32_t status = PXCL_GetPrintCommand(command, sizeof command, &length, argv[1], step);
    if (status != 0) {
      fprintf(stderr, "step %d: %d\n", (int)step, (int)status);
      return 1;
    }
    printf("%.*s\n", (int)length, command);
  }
  return 0;
}
