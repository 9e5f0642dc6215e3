// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0
//
// Prints three values of the status reply on standard input.
#include <pxcl.h>
#include <stdio.h>

#define PRINT "cmd/zirk:contents/zirk:param_set servicetype=\"print\"/"
#define AT(key) \
  { .path = PRINT key, .pathLength = sizeof PRINT key - 1 }

int main(void) {
  static char reply[65536];
  ClXmlParameter value[] = {AT("zirk:status"), AT("zirk:status_detail"), AT("zirk:jobinfo jobID")};
  ClXmlRequest request = {.document = reply, .parameters = value, .parameterCount = 3};
  request.documentLength = fread(reply, 1, sizeof reply, stdin);
  if (ClXmlRequestParameter(&request) != 0) return 1;
  for (int i = 0; i < 3; ++i)
    printf("%.*s\n", (int)value[i].valueLength, reply + value[i].valueOffset);
}
