// The published 68K layouts of the File Manager's records, which
// applications fill and read field by field. Checked where pointers are 32
// bits wide; on 64-bit hosts the pointer fields widen and the offsets move.
#include <cstddef>
#include <cstdint>

#include "Files.h"
#include "frame/layout_check.h"

static_assert(sizeof(FInfo) == 16 && sizeof(FXInfo) == 16, "file Finder information");
static_assert(sizeof(DInfo) == 16 && sizeof(DXInfo) == 16, "folder Finder information");
KWE_FIELD(FInfo, fdFlags, 8);
KWE_FIELD(FInfo, fdLocation, 10);
KWE_FIELD(FInfo, fdFldr, 14);

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(IOParam) == 50, "IOParam");
KWE_FIELD(IOParam, ioResult, 16);
KWE_FIELD(IOParam, ioNamePtr, 18);
KWE_FIELD(IOParam, ioVRefNum, 22);
KWE_FIELD(IOParam, ioRefNum, 24);
KWE_FIELD(IOParam, ioPermssn, 27);
KWE_FIELD(IOParam, ioMisc, 28);
KWE_FIELD(IOParam, ioBuffer, 32);
KWE_FIELD(IOParam, ioReqCount, 36);
KWE_FIELD(IOParam, ioActCount, 40);
KWE_FIELD(IOParam, ioPosMode, 44);
KWE_FIELD(IOParam, ioPosOffset, 46);

static_assert(sizeof(FileParam) == 80, "FileParam");
KWE_FIELD(FileParam, ioFDirIndex, 28);
KWE_FIELD(FileParam, ioFlAttrib, 30);
KWE_FIELD(FileParam, ioFlFndrInfo, 32);
KWE_FIELD(FileParam, ioFlNum, 48);
KWE_FIELD(FileParam, ioFlLgLen, 54);
KWE_FIELD(FileParam, ioFlRLgLen, 64);
KWE_FIELD(FileParam, ioFlCrDat, 72);
KWE_FIELD(FileParam, ioFlMdDat, 76);

static_assert(sizeof(VolumeParam) == 64, "VolumeParam");
KWE_FIELD(VolumeParam, ioVolIndex, 28);
KWE_FIELD(VolumeParam, ioVNmAlBlks, 46);
KWE_FIELD(VolumeParam, ioVAlBlkSiz, 48);
KWE_FIELD(VolumeParam, ioVFrBlk, 62);
static_assert(sizeof(CntrlParam) == 50, "CntrlParam");
static_assert(sizeof(ParamBlockRec) == 80, "ParamBlockRec");

static_assert(sizeof(HFileParam) == 80, "HFileParam");
KWE_FIELD(HFileParam, ioDirID, 48);
static_assert(sizeof(HVolumeParam) == 122, "HVolumeParam");
KWE_FIELD(HVolumeParam, ioVSigWord, 64);
KWE_FIELD(HVolumeParam, ioVDRefNum, 68);
KWE_FIELD(HVolumeParam, ioVFndrInfo, 90);
static_assert(sizeof(AccessParam) == 52, "AccessParam");
KWE_FIELD(AccessParam, ioDirID, 48);
static_assert(sizeof(ObjParam) == 36, "ObjParam");
static_assert(sizeof(CopyParam) == 52, "CopyParam");
KWE_FIELD(CopyParam, ioDirID, 48);
static_assert(sizeof(WDParam) == 52, "WDParam");
KWE_FIELD(WDParam, ioWDDirID, 48);
static_assert(sizeof(FIDParam) == 58, "FIDParam");
KWE_FIELD(FIDParam, ioFileID, 54);
static_assert(sizeof(HParamBlockRec) == 122, "HParamBlockRec");

static_assert(sizeof(HFileInfo) == 108, "HFileInfo");
KWE_FIELD(HFileInfo, ioDirID, 48);
KWE_FIELD(HFileInfo, ioFlXFndrInfo, 84);
KWE_FIELD(HFileInfo, ioFlParID, 100);
static_assert(sizeof(DirInfo) == 104, "DirInfo");
KWE_FIELD(DirInfo, ioDrDirID, 48);
KWE_FIELD(DirInfo, ioDrNmFls, 52);
KWE_FIELD(DirInfo, ioDrCrDat, 72);
KWE_FIELD(DirInfo, ioDrParID, 100);
static_assert(sizeof(CInfoPBRec) == 108, "CInfoPBRec");

static_assert(sizeof(WDPBRec) == 52, "WDPBRec");
KWE_FIELD(WDPBRec, ioWDIndex, 26);
KWE_FIELD(WDPBRec, ioWDProcID, 28);
KWE_FIELD(WDPBRec, ioWDVRefNum, 32);
KWE_FIELD(WDPBRec, ioWDDirID, 48);

static_assert(sizeof(FCBPBRec) == 62, "FCBPBRec");
KWE_FIELD(FCBPBRec, ioFCBEOF, 40);
KWE_FIELD(FCBPBRec, ioFCBCrPs, 48);
KWE_FIELD(FCBPBRec, ioFCBVRefNum, 52);
KWE_FIELD(FCBPBRec, ioFCBParID, 58);

static_assert(sizeof(GetVolParmsInfoBuffer) == 20, "GetVolParmsInfoBuffer");
#endif
