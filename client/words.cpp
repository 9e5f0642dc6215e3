// SPDX-FileCopyrightText: 2026 The pxcl developers
// SPDX-License-Identifier: Apache-2.0

#include "client/words.hpp"

namespace pxcl::client {

std::optional<Word> Dictionary::at(std::uint16_t row) const {
  if (row >= count || rows[row].keyword == nullptr) return std::nullopt;
  return Word{row, rows[row].keyword};
}

std::optional<Word> Dictionary::find(std::string_view keyword) const {
  for (std::uint16_t row = 0; row < count; ++row) {
    const std::optional<Word> word = at(row);
    if (word && word->keyword == keyword) return word;
  }
  return std::nullopt;
}

Dictionary paper_sizes() {
  return {glb_clssdicPaperSizeTbl, CLSS_DICNUM_PAPERSIZE};
}
Dictionary paper_types() {
  return {glb_clssdicPaperTypeTbl, CLSS_DICNUM_PAPERTYPE};
}
Dictionary panel_types() {
  return {glb_clssdicPanelMedia, CLSS_DICNUM_PANEL_PAPERTYPE};
}
Dictionary color_modes() {
  return {glb_clssdicColormodeTbl, CLSS_DICNUM_COLORMODE};
}
Dictionary duplex_modes() {
  return {glb_clssdicDuplexPrintTbl, CLSS_DICNUM_DUPLEXPRINT};
}
Dictionary data_formats() {
  return {glb_clssdicDataFormatTbl, CLSS_DICNUM_DATAFORMAT};
}
Dictionary printer_states() {
  return {glb_clssdicStatusTbl, CLSS_DICNUM_STATUS};
}
Dictionary printer_state_details() {
  return {glb_clssdicStatusDetailTbl, CLSS_DICNUM_STATUSDETAIL};
}
Dictionary job_progresses() {
  return {glb_clssdicJobProgressTbl, CLSS_DICNUM_JOBPROGRESS};
}
Dictionary job_states() {
  return {glb_clssdicStateTbl, CLSS_DICNUM_STATE};
}
Dictionary host_environments() {
  return {glb_clssdicHostEnvironmentTbl, CLSS_DICNUM_HOST_ENVIRONMENT};
}
Dictionary print_preparations() {
  return {glb_clssdicPrintPreparationTbl, CLSS_DICNUM_PRINT_PREPARATION};
}
Dictionary operations() {
  return {glb_clssdicOperationTbl, CLSS_DICNUM_OPERATION};
}
Dictionary service_types() {
  return {glb_clssdicServiceTypeTbl, CLSS_NUM_SERVICETYPE_LIST};
}
Dictionary refusals() {
  return {glb_clssdicResponseDetailTbl, CLSS_DICNUM_RESDETAIL};
}

}  // namespace pxcl::client
