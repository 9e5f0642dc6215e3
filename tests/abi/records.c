/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 */

/* The size of every record and the offset of every member, as compiled callers and bindings rely on
 * them: 64-bit pointers, natural alignment, no packing (x86-64 and AArch64 alike).
 */

#include <stddef.h>

#include "pxcl.h"

#define SIZE(record, size) _Static_assert(sizeof(record) == (size), "size of " #record)
#define AT(record, member, offset) \
  _Static_assert(offsetof(record, member) == (offset), #record "." #member)

/* clang-format off */

/* clxml.h */
SIZE(ClXmlNameSpaceEntry, 32); AT(ClXmlNameSpaceEntry, uri, 0); AT(ClXmlNameSpaceEntry, prefix, 8);
  AT(ClXmlNameSpaceEntry, declaredPrefix, 16); AT(ClXmlNameSpaceEntry, declaredPrefixLength, 24);
SIZE(ClXmlDocument, 24); AT(ClXmlDocument, text, 0); AT(ClXmlDocument, length, 8);
  AT(ClXmlDocument, stopPosition, 16);
SIZE(ClXmlMatch, 32); AT(ClXmlMatch, serial, 0); AT(ClXmlMatch, offset, 8); AT(ClXmlMatch, length, 16);
  AT(ClXmlMatch, status, 24);
SIZE(ClXmlTarget, 56); AT(ClXmlTarget, path, 0); AT(ClXmlTarget, pathLength, 8); AT(ClXmlTarget, kind, 16);
  AT(ClXmlTarget, attributeName, 24); AT(ClXmlTarget, attributeNameLength, 32); AT(ClXmlTarget, matches, 40);
  AT(ClXmlTarget, matchCount, 48); AT(ClXmlTarget, status, 52);
SIZE(ClXmlParserData, 48); AT(ClXmlParserData, flags, 0); AT(ClXmlParserData, serial, 4);
  AT(ClXmlParserData, currentPath, 8); AT(ClXmlParserData, nameSpaceTable, 16);
  AT(ClXmlParserData, document, 24); AT(ClXmlParserData, targets, 32); AT(ClXmlParserData, targetCount, 40);
SIZE(ClXmlRequest, 56); AT(ClXmlRequest, document, 0); AT(ClXmlRequest, documentLength, 8);
  AT(ClXmlRequest, output, 16); AT(ClXmlRequest, outputSize, 24); AT(ClXmlRequest, parameters, 32);
  AT(ClXmlRequest, parameterCount, 40); AT(ClXmlRequest, stopPosition, 48);
SIZE(ClXmlParameter, 64); AT(ClXmlParameter, path, 0); AT(ClXmlParameter, pathLength, 8);
  AT(ClXmlParameter, valueOffset, 16); AT(ClXmlParameter, valueLength, 24); AT(ClXmlParameter, newValue, 32);
  AT(ClXmlParameter, newValueOffset, 40); AT(ClXmlParameter, newValueLength, 48);
  AT(ClXmlParameter, status, 56);
SIZE(ClXmlListParameter, 48); AT(ClXmlListParameter, path, 0); AT(ClXmlListParameter, pathLength, 8);
  AT(ClXmlListParameter, ranges, 16); AT(ClXmlListParameter, rangeCount, 24);
  AT(ClXmlListParameter, reserved1, 32); AT(ClXmlListParameter, reserved2, 40);
  AT(ClXmlListParameter, status, 44);
SIZE(ClXmlValueRange, 16); AT(ClXmlValueRange, offset, 0); AT(ClXmlValueRange, length, 8);
SIZE(ClXmlAttribute, 32); AT(ClXmlAttribute, name, 0); AT(ClXmlAttribute, nameLength, 8);
  AT(ClXmlAttribute, value, 16); AT(ClXmlAttribute, valueLength, 24);
SIZE(ClXmlElement, 32); AT(ClXmlElement, name, 0); AT(ClXmlElement, nameLength, 8);
  AT(ClXmlElement, attributes, 16); AT(ClXmlElement, attributeCount, 24);

/* keyed.h */
SIZE(ClssKeyValue, 32); AT(ClssKeyValue, key, 0); AT(ClssKeyValue, keyLength, 8); AT(ClssKeyValue, value, 16);
  AT(ClssKeyValue, valueLength, 24);
SIZE(ClssDicRow, 16); AT(ClssDicRow, keyword, 0); AT(ClssDicRow, code, 8);
SIZE(ItemEntry, 8); AT(ItemEntry, value, 0); AT(ItemEntry, nameSpace, 4); AT(ItemEntry, code, 6);
SIZE(ItemText, 16); AT(ItemText, text, 0); AT(ItemText, size, 8);
SIZE(ItemSet, 64); AT(ItemSet, entries, 0); AT(ItemSet, auxiliary, 8); AT(ItemSet, entryCount, 16);
  AT(ItemSet, pathTemplate, 24); AT(ItemSet, itemName, 32); AT(ItemSet, mode, 40); AT(ItemSet, dictionary, 48);
  AT(ItemSet, rowCount, 56);

/* commands.h */
SIZE(ClssConfigurationPaper, 8); AT(ClssConfigurationPaper, version, 0);
  AT(ClssConfigurationPaper, paperSize, 2); AT(ClssConfigurationPaper, paperType, 4);
  AT(ClssConfigurationPaper, borderless, 6);
SIZE(ClssConfigurationMode, 4); AT(ClssConfigurationMode, colorMode, 0);
  AT(ClssConfigurationMode, duplexPrint, 2);
SIZE(ClssDeviceSettings, 4); AT(ClssDeviceSettings, version, 0); AT(ClssDeviceSettings, pliAgreement, 2);

/* responses.h */
SIZE(ClssOperationInfo, 8); AT(ClssOperationInfo, partner, 0); AT(ClssOperationInfo, isResponse, 4);
SIZE(ClssResponseCommon, 24); AT(ClssResponseCommon, reserved, 0); AT(ClssResponseCommon, serviceType, 2);
  AT(ClssResponseCommon, operation, 4); AT(ClssResponseCommon, response, 6);
  AT(ClssResponseCommon, responseDetail, 8); AT(ClssResponseCommon, ijOperation, 10);
  AT(ClssResponseCommon, ijResponse, 12); AT(ClssResponseCommon, jobID, 14);
SIZE(ClssStatusCommon, 28); AT(ClssStatusCommon, status, 0); AT(ClssStatusCommon, statusDetail, 2);
  AT(ClssStatusCommon, jobID, 4); AT(ClssStatusCommon, jobProgress, 14); AT(ClssStatusCommon, supportCode, 16);
SIZE(ClssStatus, 88); AT(ClssStatus, leading, 0); AT(ClssStatus, common, 2);
  AT(ClssStatus, currentPaperType, 30); AT(ClssStatus, currentPaperSize, 46); AT(ClssStatus, panelMedia, 62);
  AT(ClssStatus, inkState, 78); AT(ClssStatus, completeImpression, 80); AT(ClssStatus, jobState, 84);
SIZE(ClssPaperSize, 80); AT(ClssPaperSize, version, 0); AT(ClssPaperSize, paperSize, 2);
  AT(ClssPaperSize, printAreaBorder, 4); AT(ClssPaperSize, printAreaBorderless, 12);
  AT(ClssPaperSize, printAreaDuplex, 20); AT(ClssPaperSize, sizeItemTag, 28);
  AT(ClssPaperSize, marginBorder, 32); AT(ClssPaperSize, marginBorderless, 48);
  AT(ClssPaperSize, marginDuplex, 64);
SIZE(ClssMediaMap, 10); AT(ClssMediaMap, version, 0); AT(ClssMediaMap, frontType, 2);
  AT(ClssMediaMap, backType, 4); AT(ClssMediaMap, frontTag, 6); AT(ClssMediaMap, backTag, 8);
SIZE(ClssMediaType, 94); AT(ClssMediaType, version, 0); AT(ClssMediaType, paperType, 2);
  AT(ClssMediaType, borderlessOff, 4); AT(ClssMediaType, borderlessOn, 6); AT(ClssMediaType, colorModes, 8);
  AT(ClssMediaType, duplexModes, 50); AT(ClssMediaType, nameSpace, 92);

/* device.h */
SIZE(ClssPrintSettings, 12); AT(ClssPrintSettings, version, 0); AT(ClssPrintSettings, paperSize, 2);
  AT(ClssPrintSettings, paperType, 4); AT(ClssPrintSettings, borderless, 6);
  AT(ClssPrintSettings, colorMode, 8); AT(ClssPrintSettings, duplexPrint, 10);
SIZE(ClssPaperOutwardSize, 8); AT(ClssPaperOutwardSize, width, 0); AT(ClssPaperOutwardSize, height, 4);

/* clang-format on */
