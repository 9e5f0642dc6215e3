/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 */
#ifndef PXCL_EXPORT_H
#define PXCL_EXPORT_H

/* PXCL_API marks what the library exports; everything else is hidden. */
#define PXCL_API __attribute__((visibility("default")))

#ifdef __cplusplus
#define PXCL_BEGIN_DECLS extern "C" {
#define PXCL_END_DECLS }
#else
#define PXCL_BEGIN_DECLS
#define PXCL_END_DECLS
#endif

#endif /* PXCL_EXPORT_H */
