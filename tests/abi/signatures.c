/* SPDX-FileCopyrightText: 2026 The pxcl developers
 * SPDX-License-Identifier: Apache-2.0
 */

/* Every exported name once more, as compiled callers and bindings know it: a header that changes a
 * type does not compile with it.
 */

#include "pxcl.h"

/* util */
int32_t KWVSGetSystemInfo(int32_t, uint32_t*);
void* KWVSNewHNDL(int32_t);
void KWVSDisposeHNDL(void**);
void* KWVSLockHNDL(void*);
void* KWVSUnlockHNDL(void*);
void* KWVSNewPTR(int32_t);
void KWVSDisposePTR(void*);
void* KWVSNewPTRX(uint64_t);
void KWVSDisposePTRX(void*);
int32_t KWVSCheckEndian(int32_t, int32_t);
void KWVSSwapData(void*, int32_t, int32_t);
void KWVSCopyData(const void*, void*, int32_t);
void KWVSSetData(void*, uint8_t, int32_t);
int32_t KWVSCompData(const void*, const void*, int32_t);
void KWVSCopyDataX(const void*, void*, uint64_t);
void KWVSSetDataX(void*, uint8_t, uint64_t);
int32_t KWVSCompDataX(const void*, const void*, uint64_t);
const void* KWVSForwardSearchByte(const void*, uint64_t, uint8_t);
const void* KWVSReverseSearchByte(const void*, uint64_t, uint8_t);
const void* KWVSForwardSearchData(const void*, uint64_t, const void*, uint64_t);
const void* KWVSReverseSearchData(const void*, uint64_t, const void*, uint64_t);
int32_t KWVSCompString(const char*, const char*);
int32_t KWVSGetLenOfString(const char*);
int32_t KWVSCopyString(const char*, char*);
int32_t KWVSCatString(const char*, char*);
int32_t KWVS4sToString(int32_t, char*, uint64_t, uint32_t);
int32_t KWVSStringTo4s(const char*, uint64_t, uint64_t*, int32_t);

/* xml */
void* ClXmlMemAlloc(uint64_t);
void ClXmlMemFree(void*);
int32_t ClXmlInitializeNameSpaceTable(ClXmlNameSpaceEntry**);
void ClXmlUnInitializeNameSpaceTable(ClXmlNameSpaceEntry*);
int32_t ClXmlInitializeParserData(ClXmlParserData**, uint32_t, const ClXmlRequest*,
                                  const ClXmlRequest*);
void ClXmlUnInitializeParserData(ClXmlParserData*);
int32_t ClXmlStoreParserData(ClXmlParserData*, ClXmlRequest*, ClXmlRequest*);
int32_t ClXmlRequestParameterListFree(ClXmlRequest*);
int32_t ClComXmlRequestParameterListFree(ClXmlRequest*);
int32_t ClXmlParse(ClXmlParserData*);
int32_t ClXmlSearchStartPoint(ClXmlParserData*);
int32_t ClXmlCheckElement(ClXmlParserData*, uint64_t*);
int32_t ClXmlPrsStartElement(ClXmlParserData*, const uint64_t*, uint64_t);
int32_t ClXmlPrsEndElement(ClXmlParserData*, const uint64_t*, uint64_t);
int32_t ClXmlPrsParameter(ClXmlParserData*, uint64_t*);
int32_t ClXmlSplit_Element(const char*, uint64_t, ClXmlElement*);
int32_t ClXmlSplit_QName(const char*, uint64_t, const char**, uint64_t*, const char**, uint64_t*);
int32_t ClXmlPare_AttValue(const char*, uint64_t, const char**, uint64_t*);
int32_t ClXmlExtractAttribute(ClXmlParserData*, ClXmlAttribute*, int32_t*);
int32_t ClXmlPickupNamespace(ClXmlParserData*, const char*, uint64_t, const char*, uint64_t);
int32_t ClXmlCompare_Uri(const char*, uint64_t, const char*, uint64_t);
int32_t ClXmlAddPath(ClXmlParserData*, const char*, const char*, uint64_t);
int32_t ClXmlRemovePath(ClXmlParserData*, const char*, uint64_t);
void ClXmlClearPath(char*);
int32_t ClXmlFirstElementLengthOfPath(const char*, uint64_t, uint64_t*);
int32_t ClXmlIsKnownNicknameNs(const ClXmlParserData*, const char*, uint64_t, uint32_t*);
int32_t ClXmlChkTargetPathRequestAttValue(const ClXmlTarget*, const char**, uint64_t*);
int32_t ClXmlStoreValuePathCompare(const ClXmlParserData*, uint32_t);
int32_t ClXmlCompare_Tag(const ClXmlParserData*, const ClXmlElement*, const ClXmlElement*);
int32_t ClXmlCompare_Attribute(const ClXmlParserData*, const ClXmlElement*, const ClXmlElement*);
int32_t ClXmlCompare_AttValue(const ClXmlParserData*, const ClXmlAttribute*, const ClXmlAttribute*,
                              int32_t*);
int32_t ClXmlStoreValue(ClXmlParserData*, uint64_t, uint64_t);
int32_t ClXmlStoreAttValue(ClXmlParserData*, const ClXmlAttribute*, uint32_t);
int32_t ClXmlChkTargetPathOnly(ClXmlParserData*, uint64_t, int32_t);
int32_t ClXmlRequestParameter(ClXmlRequest*);
int32_t ClComXmlRequestParameter(ClXmlRequest*);
int32_t ClXmlRequestParameterList(ClXmlRequest*);
int32_t ClComXmlRequestParameterList(ClXmlRequest*);
int32_t ClXmlReplaceParameter(ClXmlRequest*);
int32_t ClXmlWrite(ClXmlRequest*);
int32_t ClXmlCheckEmptyTagSpec(const char*, const ClXmlParameter*, uint64_t*, uint64_t*);
int32_t ClXmlExpandEmptyElement(char*, ClXmlParameter*, uint64_t*, uint64_t*);

/* keyed */
uint64_t Get_NeedBufferSize(uint64_t, const ClssKeyValue*, uint32_t);
int32_t SetCL_XML(const char*, uint64_t, const ClssKeyValue*, uint32_t, ClXmlRequest**);
int32_t SetCL_XML2(const char*, uint64_t, const ClssKeyValue*, uint32_t, ClXmlRequest**);
int32_t GetXmlDataByKey(const char*, uint64_t, const ClssKeyValue*, uint32_t, ClXmlRequest**);
int32_t GetXmlDataByKeyList(const char*, uint64_t, const ClssKeyValue*, uint32_t, ClXmlRequest**);
int32_t ReplaceXmlDataByKey(const char*, uint64_t, const ClssKeyValue*, uint32_t, ClXmlRequest**);
int32_t ClearCL_XML(ClXmlRequest*);
int32_t ClearCL_XML2(ClXmlRequest*);
int32_t GetVasloID(const ClssDicRow*, uint32_t, const char*, uint64_t, uint16_t*, uint16_t*);
int32_t GetValue(const char*, uint64_t, uint32_t*);
int32_t SetStringValue(const char*, uint64_t, char*, int32_t);
int32_t CheckJobID(const char*, const char*, uint64_t);
int32_t GetIdOrValue(const ClssDicRow*, uint32_t, const char*, uint64_t, uint32_t*, uint16_t*);
char* CopyValueText(const char*, uint64_t);
int32_t Get_NeedBufferSize2(const char*, const char* const*, int32_t);
int32_t clss_Sprintf(char*, int32_t, const char* const*, int32_t);
int32_t CheckOpeAndRes(const char*, uint64_t, uint16_t);
int32_t Get_ItemSet(const char*, uint64_t, ItemSet*);
int32_t Get_ItemSetList(const char*, uint64_t, uint16_t, ItemSet*, int32_t);
int32_t Get_ItemSetByReq(const char*, uint64_t, ItemSet*, uint16_t, const char*, uint16_t,
                         uint32_t);
void ReleaseItemSetList(ItemSet*, int32_t);
int32_t checkSuport(const char*, uint64_t, uint16_t, const ItemSet*, uint16_t);
const char* getToken(const char*, int32_t, const char*, const char*, int32_t, uint32_t*);
uint32_t getTokenTotal(const char*, uint64_t, const char*);
int32_t searchString(const char*, int32_t, const char* const*);

/* commands */
int32_t CLSS_MakeCommand_GetCapability(char*, uint64_t, uint64_t*, int32_t);
int32_t CLSS_MakeCommand_GetConfiguration(char*, uint64_t, uint64_t*, int32_t);
int32_t CLSS_MakeCommand_PowerOff(char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_FRomUpMode(char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_Handoveroff(char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_GetStatusDevice(char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_GetJobIDList(char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_GetStatusPrint(const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_GetStatusMaintenance(const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_StartJob3(uint16_t, uint16_t, const char*, int16_t, const char*,
                                   const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_StartJob2(int16_t, const char*, const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_StartJob(const char*, const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_EndJob(uint16_t, const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_CancelJob(uint16_t, const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_ModeShift(uint16_t, const char*, const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_SendDataJPEG(const char*, uint32_t, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_SendDataJPEGPAGE(const char*, uint32_t, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_SendDataPWGRaster(const char*, uint32_t, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_SendDataRAW(const char*, uint16_t, uint16_t, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_SetPageConfiguration2(const char*, uint16_t, uint16_t, char*, uint64_t,
                                               uint64_t*);
int32_t CLSS_MakeCommand_SetPageConfiguration(const char*, uint16_t, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_SetJobConfiguration(const char*, const char*, uint16_t, char*, uint64_t,
                                             uint64_t*);
int32_t CLSS_MakeCommand_SetTime(const char*, const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_SetConfigurationNS(ClssConfigurationPaper, ClssConfigurationMode,
                                            const char*, const char*, uint64_t, char*, uint64_t,
                                            uint64_t*);
int32_t CLSS_MakeCommand_SetConfigurationDevice(ClssDeviceSettings, const char*, char*, uint64_t,
                                                uint64_t*);
int32_t CLSS_MakeCommand_SetJobConfiguration_Maintenance(const char*, const char*, char*, uint64_t,
                                                         uint64_t*);
int32_t CLSS_MakeCommand_TestPrint(const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_AutoRegistration(const char*, char*, uint64_t, uint64_t*);
int32_t CLSS_MakeCommand_Cleaning(const char*, char*, uint64_t, uint64_t*);
int32_t PXCL_MakeGetCapabilityCommand(char*, uint32_t, uint32_t*, uint32_t);
int32_t PXCL_MakeCommand_GetStatusPrint(char*, uint32_t, uint32_t*);
int32_t PXCL_MakeCommand_GetStatusMaintenance(char*, uint32_t, uint32_t*);
int32_t PXCL_MakeCommand_StartJob3(uint32_t, const char*, const char*, char*, int32_t, uint32_t*);
int32_t PXCL_MakeCommand_StartJob3_Maintenance(uint32_t, const char*, const char*, char*, uint64_t,
                                               uint64_t*);
int32_t PXCL_MakeCommand_CancelJob(const char*, char*, uint32_t, uint32_t*);
int32_t PXCL_MakeCommand_CancelJob_Maintenance(const char*, char*, uint32_t, uint32_t*);
int32_t PXCL_MakeCommand_EndJob_Maintenance(const char*, char*, uint32_t, uint64_t*);
int32_t PXCL_GetSendDataPWGRasterCommand(const char*, uint32_t, int64_t, char*, uint64_t*);
int32_t PXCL_GetSetPageConfigurationCommand(const char*, uint16_t, char*, uint64_t, uint64_t*);
int32_t PXCL_MakeCommand_SetJobConfiguration(const char*, const char*, char*, int32_t, uint32_t*);
int32_t PXCL_GetSetConfigurationCommand(const uint16_t*, const char*, uint64_t, const char*,
                                        uint64_t, char*, uint64_t*);
int32_t PXCL_MakeCommand_SetJobConfiguration_Maintenance(const char*, const char*, char*, int32_t,
                                                         uint64_t*);
int32_t PXCL_MakeCommand_TestPrint(const char*, char*, int32_t, uint64_t*);
int32_t PXCL_MakeCommand_AutoAlignment(const char*, char*, int32_t, uint64_t*);
int32_t PXCL_MakeCommand_Cleaning(const char*, char*, int32_t, uint64_t*);

/* responses */
int32_t CLSS_GetCommandOperationPair(uint16_t);
int32_t CLSS_GetOperationPair(uint16_t);
int32_t getOperation_ServiceType(const char*, uint64_t, uint16_t*, uint16_t*);
int32_t CLSS_ParseResponseCommon(const char*, uint64_t, uint64_t*, ClssResponseCommon*);
int32_t parseCommonStatusResponse(const char*, uint64_t, const ClssKeyValue*, uint32_t,
                                  ClssStatusCommon*);
int32_t CLSS_ParseStatusResponsePrint(const char*, uint64_t, ClssStatus*);
int32_t CLSS_ParseStatusResponsePrint2(const char*, uint64_t, const char*, ClssStatus*);
int32_t CLSS_ParseStatusResponseMaintenance(const char*, uint64_t, const char*, ClssStatus*);
int32_t CLSS_ParseJobIDListResponse(const char*, uint64_t, char (*)[9], int32_t*);
int32_t CLSS_ParseCapabilityResponsePrint_PaperSize(const char*, uint64_t, int32_t*,
                                                    ClssPaperSize*);
int32_t CLSS_ParseCapabilityResponsePrint_MediaType(const char*, uint64_t, int32_t*,
                                                    ClssMediaType*);
int32_t CLSS_ParseCapabilityResponsePrint_Pixels(const char*, uint64_t, uint16_t*, uint16_t*,
                                                 uint16_t*, uint16_t*);
int32_t CLSS_ParseCapabilityResponsePrint_MediaMap(const char*, uint64_t, uint16_t, ClssMediaMap*);
int32_t CLSS_ParseCapabilityResponsePrint_FormatType(const char*, uint64_t, uint16_t);
int32_t CLSS_ParseCapabilityResponsePrint_NextPage(const char*, uint64_t, uint16_t);
int32_t CLSS_ParseCapabilityResponsePrint_PrintPreparation(const char*, uint64_t, uint16_t);
int32_t CLSS_ParseCapabilityResponsePrint_DVD_DeviceSideGuide(const char*, uint64_t, uint16_t);
int32_t CLSS_ParseCapabilityResponsePrint_HostEnvironment(const char*, uint64_t, uint16_t);
int32_t CLSS_ParseCapabilityResponsePrint_MismatchMode(const char*, uint64_t, uint16_t);
int32_t CLSS_ParseCapabilityResponsePrint_JobQueue(const char*, uint64_t);
int32_t CLSS_ParseCapabilityResponsePrint_DateTime(const char*, uint64_t);
int32_t CLSS_ParseCapabilityResponsePrint_IsDiscLabelPrint(const char*, uint64_t);
int32_t CLSS_ParseCapabilityResponseMaintenance_DateTime(const char*, uint64_t);
int32_t CLSS_ParseCapabilityResponseMaintenance_HostEnvironment(const char*, uint64_t, uint16_t);
const uint16_t* CLSS_GetParsePossibleSize(void);
int32_t CLSS_GetParsePossibleSizeNum(void);
const uint16_t* CLSS_GetParsePossibleMedia(void);
int32_t CLSS_GetParsePossibleMediaNum(void);
int32_t PXCL_GetInfoResponse(const char*, int32_t, uint16_t*, char*, uint16_t**);
int32_t PXCL_GetStatus(const char*, int32_t, uint32_t*, uint32_t*, char*);
int32_t PXCL_GetStatus2(const char*, int32_t, const char*, uint32_t*, uint32_t*, char*, char*);
int32_t PXCL_GetStatus_Maintenance(const char*, int32_t, const char*, uint32_t*, uint32_t*, char*,
                                   char*);
int32_t PXCL_ParseCapabilityResponsePrint_HostEnv(const char*, uint32_t);
int32_t PXCL_ParseCapabilityResponseMaintenance_HostEnv(const char*, uint32_t);
int32_t PXCL_ParseCapabilityResponsePrint_MismatchMode(const char*, uint32_t, uint16_t);
int32_t PXCL_ParseCapabilityResponsePrint_DateTime(const char*, int32_t);
int32_t PXCL_ParseCapabilityResponseMaintenance_DateTime(const char*, int32_t);

/* device */
int32_t CLSS_GetProtocol(const char*, int64_t);
int32_t PXCL_GetProtocol(const char*, int64_t);
int32_t CLSS_HasZIRK(const char*, int64_t);
int32_t CLSS_HasPLI(const char*, int64_t);
int32_t CLSS_IsSupportMinP(const char*, int64_t);
int32_t CLSS_IsSupportKWNP_From14Autumn(const char*, int64_t);
int32_t CLSS_IsSupportCorvel(const char*, int64_t, int16_t);
int32_t CLSS_GetCorvelRequestVersionInfo(const char*, int64_t, int16_t);
int32_t CLSS_initPrintSettings(ClssPrintSettings*);
int32_t CLSS_AutoMakeOtherPrintSettings(int16_t, const char*, uint64_t, ClssPrintSettings*);
int32_t CLSS_AutoMakePrintSettings(uint16_t, const char*, uint64_t, const ClssStatus*,
                                   ClssPrintSettings*);
int32_t CLSS_IsDiscLabelPrintSettings(void);
uint64_t CLSS_GetPaperOutwardSize(uint16_t);

/* api */
int32_t PXCL_GetPrintCommand(char*, uint64_t, uint64_t*, const char*, uint64_t);
int32_t PXCL_EncodeToString(const uint8_t*, uint64_t, char*, uint64_t);
int32_t PXCL_DecodeFromString(const char*, uint64_t, uint8_t*, uint64_t);
int32_t PXCL_GetStringWithTagFromFile(const char*, const char*, int32_t, char**);
int32_t PXCL_MakeKWLSetTimeJob(uint8_t*, uint64_t, uint64_t*);
int32_t PXCL_ParseCapabilityResponsePrint_PaperSizes(const char*, uint64_t, ClssPaperSize*,
                                                     int32_t*);
int32_t PXCL_ParseCapabilityResponsePrint_MediaTypes(const char*, uint64_t, ClssMediaType*,
                                                     int32_t*);

/* tables */
extern const char kwvs_version[20];
extern const ClXmlNameSpaceEntry clNsTable[5];
extern const char* const glb_NameSpacePrefix[3];
extern const char* const glb_NameSpace[3];
extern const uint16_t CLSS_NUM_PAPERTYPE;
extern const uint16_t CLSS_NUM_PAPERSIZE;
extern const uint16_t CLSS_NUM_PAPERSIZE2;
#define DICTIONARY(rows, count)   \
  extern const ClssDicRow rows[]; \
  extern const uint16_t count
DICTIONARY(glb_clssdicServiceTypeTbl, CLSS_NUM_SERVICETYPE_LIST);
DICTIONARY(glb_clssdicInkgroupTbl, CLSS_DICNUM_INKGROUP);
DICTIONARY(glb_clssdicInputbinTbl, CLSS_DICNUM_INPUTBIN);
DICTIONARY(glb_clssdicPaperTypeDiscLabelPrintTbl, CLSS_NUM_PAPERTYPE_DISC_LABEL_PRINT);
DICTIONARY(glb_clssdicPaperTypeTbl, CLSS_DICNUM_PAPERTYPE);
DICTIONARY(glb_clssdicPaperSizeTbl, CLSS_DICNUM_PAPERSIZE);
DICTIONARY(glb_clssdicMismatchModeTbl, CLSS_DICNUM_MISMATCH_MODE);
DICTIONARY(glb_clssdicHostEnvironmentTbl, CLSS_DICNUM_HOST_ENVIRONMENT);
DICTIONARY(glb_clssdicMacAddressSortTbl, CLSS_DICNUM_MACADDRESS_SORT);
DICTIONARY(glb_clssdicDeviceSideGuideTbl, CLSS_DICNUM_DEVICE_SIDE_GUIDE);
DICTIONARY(glb_clssdicPrintPreparationTbl, CLSS_DICNUM_PRINT_PREPARATION);
DICTIONARY(glb_clssdicTCATbl, CLSS_DICNUM_TCA);
DICTIONARY(glb_clssdicSubModel, CLSS_DICNUM_SUBMODEL);
DICTIONARY(glb_clssdicPanelMedia, CLSS_DICNUM_PANEL_PAPERTYPE);
DICTIONARY(glb_clssdicRemoteUIGuideTbl, CLSS_DICNUM_REMOTEUI_GUIDE);
DICTIONARY(glb_clssdicRemoteUIpagelinkTypeATbl, CLSS_DICNUM_REMOTEUI_PAGELINK_TYPEA);
DICTIONARY(glb_clssdicRemoteUIpagelinkTbl, CLSS_DICNUM_REMOTEUI_PAGELINK);
DICTIONARY(glb_clssdicNextpageTbl, CLSS_DICNUM_NEXTPAGE);
DICTIONARY(glb_clssdicPLIagreementTbl, CLSS_DICNUM_PLI_AGR);
DICTIONARY(glb_clssdicStapleSideTbl, CLSS_DICNUM_STAPLESIDE);
DICTIONARY(glb_clssdicDuplexPrintTbl, CLSS_DICNUM_DUPLEXPRINT);
DICTIONARY(glb_clssdicColormodeTbl, CLSS_DICNUM_COLORMODE);
DICTIONARY(glb_clssdicBorderlessTbl, CLSS_DICNUM_BORDERLESS);
DICTIONARY(glb_clssdicDataFormatTbl, CLSS_DICNUM_DATAFORMAT);
DICTIONARY(glb_clssdicJobProgressTbl, CLSS_DICNUM_JOBPROGRESS);
DICTIONARY(glb_clssdicStatusDetailTbl, CLSS_DICNUM_STATUSDETAIL);
DICTIONARY(glb_clssdicStateTbl, CLSS_DICNUM_STATE);
DICTIONARY(glb_clssdicStatusTbl, CLSS_DICNUM_STATUS);
DICTIONARY(glb_clssdicResponseDetailTbl, CLSS_DICNUM_RESDETAIL);
DICTIONARY(glb_clssdicResponseTbl, CLSS_DICNUM_RESPONSE);
DICTIONARY(glb_clssdicIJOperationTbl, CLSS_DICNUM_IJOPERATION);
DICTIONARY(glb_clssdicOperationTbl, CLSS_DICNUM_OPERATION);
extern const ClssOperationInfo glb_OperationInfoTbl[27];
extern const ClssOperationInfo glb_IJOperationInfoTbl[5];
extern const uint16_t glb_supportedPaperSizeTbl[81];
extern const uint16_t glb_supportedPaperTypeTbl[23];
extern const ClssPaperOutwardSize glb_PaperOutwardSizeTbl[83];
extern const uint32_t CORVEL_REQUEST_VERSION_INFO_LIST[16];
extern const char* const PROTOCOL_DEVICEID_OLD[];
extern const char* const PROTOCOL_DEVICEID_NEW[];
extern const char* const ZIRK_DEVICEID[];
extern const char* const PLI_DEVICEID[];
extern const char* const MINP_PRINTER_LIST[];
extern const char* const CORVEL_PRINTER_LIST[];
extern const char* const KWNP_PRINTER_LIST_14AUTUMN[];
extern const char* const supportNetworkSetting[];
extern const char* const noSupportWebManual[];
extern const char* const UnnecessaryCertification[];
