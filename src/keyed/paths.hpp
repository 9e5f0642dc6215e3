// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

// Every path key of the protocol: the elements from the root on, each with its table prefix and its
// attributes; a bare attribute name at the end asks for that attribute's value. Item templates
// leave holes ("%s") for the namespace prefix, the item's name and an attribute's value.

#pragma once

#include <array>

#include "util/types.hpp"

// The block of one service ("print", "device", "scan", "maintenance").
#define PXCL_PARAM_SET(service) "cmd/zirk:contents/zirk:param_set servicetype=\"" service "\""
#define PXCL_PRINT PXCL_PARAM_SET("print")
#define PXCL_MAINTENANCE PXCL_PARAM_SET("maintenance")

namespace pxcl::keyed::path {

inline constexpr char kOperation[] = "cmd/zirk:contents/zirk:operation";

// Heads of replies, by service type number.
inline constexpr u16 kServices = 4;

// clang-format off
#define PXCL_FOR_EACH_SERVICE(tail)  \
  {PXCL_PARAM_SET("print") tail,     \
   PXCL_PARAM_SET("device") tail,    \
   PXCL_PARAM_SET("scan") tail,      \
   PXCL_PARAM_SET("maintenance") tail}
// clang-format on

inline constexpr std::string_view kParamSet[kServices] = PXCL_FOR_EACH_SERVICE("");
inline constexpr std::string_view kResponse[kServices] = PXCL_FOR_EACH_SERVICE("/zirk:response");
inline constexpr std::string_view kResponseDetail[kServices] =
    PXCL_FOR_EACH_SERVICE("/zirk:response_detail");
inline constexpr std::string_view kIJOperation[kServices] =
    PXCL_FOR_EACH_SERVICE("/vrx:ijoperation");
inline constexpr std::string_view kIJResponse[kServices] = PXCL_FOR_EACH_SERVICE("/vrx:ijresponse");
inline constexpr std::string_view kJobID[kServices] = PXCL_FOR_EACH_SERVICE("/zirk:jobID");
inline constexpr std::string_view kJobStatusJobID[kServices] =
    PXCL_FOR_EACH_SERVICE("/zirk:jobstatus/zirk:jobID");

#undef PXCL_FOR_EACH_SERVICE

// Status of the printer and of its current job.
inline constexpr char kStatus[] = PXCL_PRINT "/zirk:status";
inline constexpr char kStatusDetail[] = PXCL_PRINT "/zirk:status_detail";
inline constexpr char kJobProgress[] = PXCL_PRINT "/zirk:jobstatus/zirk:jobprogress";
inline constexpr char kSupportCode[] = PXCL_PRINT "/zirk:current_support_code";
inline constexpr char kInk[] = PXCL_PRINT "/zirk:marker_info/zirk:ink/vrx:tca";
inline constexpr char kStatusItemID[] = PXCL_PRINT "/zirk:status_detail_list/zirk:item id";
inline constexpr char kStatusErrorCode[] =
    PXCL_PRINT "/zirk:status_detail_list/zirk:item id/zirk:error_code";

// The paper in each input bin.
struct BinPaths {
  std::string_view paperType;
  std::string_view paperSize;
};
#define PXCL_BIN(bin)                                                    \
  {                                                                      \
    PXCL_PRINT "/zirk:currentpapertype physicalinputbin=\"" bin "\"",    \
        PXCL_PRINT "/zirk:currentpapersize physicalinputbin=\"" bin "\"" \
  }
inline constexpr BinPaths kBins[] = {
    PXCL_BIN("inputbin_p1"), PXCL_BIN("inputbin_p2"), PXCL_BIN("inputbin_p3"),
    PXCL_BIN("inputbin_p4"), PXCL_BIN("inputbin_p5"), PXCL_BIN("inputbin_p6"),
    PXCL_BIN("inputbin_p7"),
};
#undef PXCL_BIN

// One block per job.
struct JobPaths {
  std::string_view jobID;  // the attribute's value, quotes included
  std::string_view description;
  std::string_view progress;
  std::string_view state;
  std::string_view completeImpression;
};
#define PXCL_JOB(service)                                                                      \
  {                                                                                            \
    PXCL_PARAM_SET(service)                                                                    \
    "/zirk:jobinfo jobID", PXCL_PARAM_SET(service) "/zirk:jobinfo jobID/zirk:job_description", \
        PXCL_PARAM_SET(service) "/zirk:jobinfo jobID/zirk:jobprogress",                        \
        PXCL_PARAM_SET(service) "/zirk:jobinfo jobID/zirk:jobprogress_detail/zirk:state",      \
        PXCL_PARAM_SET(service) "/zirk:jobinfo jobID/zirk:complete_impression"                 \
  }
inline constexpr JobPaths kPrintJob = PXCL_JOB("print");
inline constexpr JobPaths kMaintenanceJob = PXCL_JOB("maintenance");
#undef PXCL_JOB

// What commands are filled in at.
inline constexpr char kPrintJobID[] = PXCL_PRINT "/zirk:jobID";
inline constexpr char kMaintenanceJobID[] = PXCL_MAINTENANCE "/zirk:jobID";
inline constexpr char kFormat[] = PXCL_PRINT "/zirk:format";
inline constexpr char kDataSize[] = PXCL_PRINT "/zirk:datasize";
inline constexpr char kDataWidth[] = PXCL_PRINT "/zirk:datawidth";
inline constexpr char kDataLength[] = PXCL_PRINT "/zirk:datalength";
inline constexpr char kNextPage[] = PXCL_PRINT "/vrx:nextpage";
inline constexpr char kPrintPreparation[] = PXCL_PRINT "/vrx:printpreparation";
inline constexpr char kDateTime[] = PXCL_PRINT "/zirk:datetime";
inline constexpr char kDiscSideGuide[] = PXCL_PRINT "/vrx:device_side_guide/vrx:item name=\"disc\"";

// Items of capability replies: by prefix and name, or by prefix, name and attribute value.
inline constexpr char kPrintItem[] = PXCL_PRINT "/%s:%s";
inline constexpr char kMaintenanceItem[] = PXCL_MAINTENANCE "/%s:%s";
inline constexpr char kPrintItemByAttribute[] = PXCL_PRINT "/%s:%s=\"%s\"";
inline constexpr char kPrintItemFront[] = PXCL_PRINT "/%s:%s=\"%s\"/vrx:front";
inline constexpr char kPrintItemBack[] = PXCL_PRINT "/%s:%s=\"%s\"/vrx:back";

// The same without holes: an item under each namespace, in the order of their indices.
using ItemPaths = std::array<std::string_view, 3>;
// clang-format off
#define PXCL_PRINT_ITEM(name) \
  {PXCL_PRINT "/zirk:" name, PXCL_PRINT "/vrx:" name, PXCL_PRINT "/tolm:" name}
// clang-format on
inline constexpr ItemPaths kPaperSizes = PXCL_PRINT_ITEM("papersize");
inline constexpr ItemPaths kPaperTypes = PXCL_PRINT_ITEM("papertype");
inline constexpr ItemPaths kStapleSides = PXCL_PRINT_ITEM("stapleside");

// Elements that repeat for every paper size or type: up to the attribute that names it.
inline constexpr ItemPaths kPrintAreaBorder = PXCL_PRINT_ITEM("printarea_border papersize");
inline constexpr ItemPaths kPrintAreaBorderless = PXCL_PRINT_ITEM("printarea_borderless papersize");
inline constexpr ItemPaths kPrintAreaDuplex = PXCL_PRINT_ITEM("printarea_duplex papersize");
inline constexpr ItemPaths kMarginBorder = PXCL_PRINT_ITEM("margin_border papersize");
inline constexpr ItemPaths kMarginBorderless = PXCL_PRINT_ITEM("margin_borderless papersize");
inline constexpr ItemPaths kMarginDuplex = PXCL_PRINT_ITEM("margin_duplex papersize");
inline constexpr ItemPaths kBorderlessPrint = PXCL_PRINT_ITEM("borderlessprint papertype");
inline constexpr ItemPaths kPrintColorMode = PXCL_PRINT_ITEM("printcolormode papertype");
inline constexpr ItemPaths kDuplexPrint = PXCL_PRINT_ITEM("duplexprint papertype");
#undef PXCL_PRINT_ITEM

}  // namespace pxcl::keyed::path
