/* File Manager: files, directories and volumes on DOS paths.

   Volumes are the Windows drives (A: to Z:) and the network shares met so
   far; a volume reference number is minus the volume's position in that
   table (A: is -1, B: -2, C: -3 whether or not A: and B: exist). Directory
   IDs name directories the library has seen (2 is a volume's root);
   working-directory reference numbers are 0x8000 | n. File names are DOS
   names: no ':'-separated Macintosh paths are converted, and a name that is
   a full DOS path ("C:\DIR\F.TXT", "\\SERVER\SHARE\F") overrides the volume
   and directory it comes with.

   Files have only a data fork. A file's type comes from its extension through
   the host's file-type table (KWE_Set_Tovel); its creator is always '????';
   nothing of the Finder information is stored with the file.

   The parameter-block calls also store their result in ioResult; the
   asynchronous forms complete before they return and never call
   ioCompletion. */
#ifndef KWE_FILES_H
#define KWE_FILES_H

#include "MacTypes.h"

/* Result codes of the File Manager (fnfErr, eofErr and paramErr are in
   MacTypes.h). */
enum {
  dirFulErr = -33,
  dskFulErr = -34,
  nsvErr = -35,
  ioErr = -36,
  bdNamErr = -37,
  fnOpnErr = -38,
  posErr = -40,
  tmfoErr = -42,
  wPrErr = -44,
  fLckdErr = -45,
  fBsyErr = -47,
  dupFNErr = -48,
  opWrErr = -49,
  rfNumErr = -51,
  permErr = -54,
  extFSErr = -58,
  wrPermErr = -61,
  dirNFErr = -120,
  diffVolErr = -1303
};

/* Permissions (ioPermssn). fsRdWrPerm denies writing to every other opener;
   fsCurPerm falls back to reading when writing is refused. */
enum { fsCurPerm = 0, fsRdPerm = 1, fsWrPerm = 2, fsRdWrPerm = 3, fsRdWrShPerm = 4 };

/* Positioning modes (ioPosMode, SetFPos). In PBRead, bit 0x80 turns on
   newline mode with the newline character in the high byte. */
enum { fsAtMark = 0, fsFromStart = 1, fsFromLEOF = 2, fsFromMark = 3, newLineBit = 0x80 };

/* ioFlAttrib bits the library reports. */
enum { kioFlAttribLockedMask = 0x01, kioFlAttribDirMask = 0x10, kioFlAttribFileOpenMask = 0x80 };

/* The root directory of every volume. */
enum { fsRtDirID = 2, fsRtParID = 1 };

typedef SInt16 ScriptCode;

#pragma pack(push, 2)

typedef struct FSSpec {
  SInt16 vRefNum;
  SInt32 parID;
  Str63 name;
} FSSpec, *FSSpecPtr;

/* 16 bytes. fdFlags, fdLocation and fdFldr are always reported as 0. */
typedef struct FInfo {
  OSType fdType;
  OSType fdCreator;
  UInt16 fdFlags;
  Point fdLocation;
  SInt16 fdFldr;
} FInfo;

typedef struct FXInfo {
  SInt16 fdIconID;
  SInt16 fdUnused[3];
  SInt8 fdScript;
  SInt8 fdXFlags;
  SInt16 fdComment;
  SInt32 fdPutAway;
} FXInfo;

typedef struct DInfo {
  Rect frRect;
  UInt16 frFlags;
  Point frLocation;
  SInt16 frView;
} DInfo;

typedef struct DXInfo {
  Point frScroll;
  SInt32 frOpenChain;
  SInt8 frScript;
  SInt8 frXFlags;
  SInt16 frComment;
  SInt32 frPutAway;
} DXInfo;

union ParamBlockRec;
typedef void(KWE_CALL* IOCompletionProcPtr)(union ParamBlockRec* paramBlock);
typedef IOCompletionProcPtr IOCompletionUPP;

/* The 24-byte header every parameter block starts with (32-bit layout). */
#define KWE_PARAM_BLOCK_HEADER  \
  QElemPtr qLink;               \
  SInt16 qType;                 \
  SInt16 ioTrap;                \
  Ptr ioCmdAddr;                \
  IOCompletionUPP ioCompletion; \
  OSErr ioResult;               \
  StringPtr ioNamePtr;          \
  SInt16 ioVRefNum

typedef struct IOParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 ioRefNum;
  SInt8 ioVersNum;
  SInt8 ioPermssn;
  Ptr ioMisc;
  Ptr ioBuffer;
  SInt32 ioReqCount;
  SInt32 ioActCount;
  SInt16 ioPosMode;
  SInt32 ioPosOffset;
} IOParam;

typedef struct FileParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 ioFRefNum;
  SInt8 ioFVersNum;
  SInt8 filler1;
  SInt16 ioFDirIndex;
  SInt8 ioFlAttrib;
  SInt8 ioFlVersNum;
  FInfo ioFlFndrInfo;
  UInt32 ioFlNum;
  UInt16 ioFlStBlk;
  SInt32 ioFlLgLen;
  SInt32 ioFlPyLen;
  UInt16 ioFlRStBlk;
  SInt32 ioFlRLgLen;
  SInt32 ioFlRPyLen;
  UInt32 ioFlCrDat;
  UInt32 ioFlMdDat;
} FileParam;

typedef struct VolumeParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt32 filler2;
  SInt16 ioVolIndex;
  UInt32 ioVCrDate;
  UInt32 ioVLsBkUp;
  UInt16 ioVAtrb;
  UInt16 ioVNmFls;
  UInt16 ioVDirSt;
  SInt16 ioVBlLn;
  UInt16 ioVNmAlBlks;
  SInt32 ioVAlBlkSiz;
  SInt32 ioVClpSiz;
  UInt16 ioAlBlSt;
  UInt32 ioVNxtFNum;
  UInt16 ioVFrBlk;
} VolumeParam;

typedef struct CntrlParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 ioCRefNum;
  SInt16 csCode;
  SInt16 csParam[11];
} CntrlParam;

typedef union ParamBlockRec {
  IOParam ioParam;
  FileParam fileParam;
  VolumeParam volumeParam;
  CntrlParam cntrlParam;
} ParamBlockRec;
typedef ParamBlockRec* ParmBlkPtr;

typedef IOParam HIOParam;

typedef struct HFileParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 ioFRefNum;
  SInt8 ioFVersNum;
  SInt8 filler1;
  SInt16 ioFDirIndex;
  SInt8 ioFlAttrib;
  SInt8 ioFlVersNum;
  FInfo ioFlFndrInfo;
  SInt32 ioDirID;
  UInt16 ioFlStBlk;
  SInt32 ioFlLgLen;
  SInt32 ioFlPyLen;
  UInt16 ioFlRStBlk;
  SInt32 ioFlRLgLen;
  SInt32 ioFlRPyLen;
  UInt32 ioFlCrDat;
  UInt32 ioFlMdDat;
} HFileParam;

typedef struct HVolumeParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt32 filler2;
  SInt16 ioVolIndex;
  UInt32 ioVCrDate;
  UInt32 ioVLsMod;
  SInt16 ioVAtrb;
  UInt16 ioVNmFls;
  UInt16 ioVBitMap;
  UInt16 ioAllocPtr;
  UInt16 ioVNmAlBlks;
  SInt32 ioVAlBlkSiz;
  SInt32 ioVClpSiz;
  UInt16 ioAlBlSt;
  SInt32 ioVNxtCNID;
  UInt16 ioVFrBlk;
  UInt16 ioVSigWord;
  SInt16 ioVDrvInfo;
  SInt16 ioVDRefNum;
  SInt16 ioVFSID;
  UInt32 ioVBkUp;
  UInt16 ioVSeqNum;
  SInt32 ioVWrCnt;
  SInt32 ioVFilCnt;
  SInt32 ioVDirCnt;
  SInt32 ioVFndrInfo[8];
} HVolumeParam;

typedef struct AccessParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 filler3;
  SInt16 ioDenyModes;
  SInt16 filler4;
  SInt8 filler5;
  SInt8 ioACUser;
  SInt32 filler6;
  SInt32 ioACOwnerID;
  SInt32 ioACGroupID;
  SInt32 ioACAccess;
  SInt32 ioDirID;
} AccessParam;

typedef struct ObjParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 filler7;
  SInt16 ioObjType;
  StringPtr ioObjNamePtr;
  SInt32 ioObjID;
} ObjParam;

typedef struct CopyParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 ioDstVRefNum;
  SInt16 filler8;
  StringPtr ioNewName;
  StringPtr ioCopyName;
  SInt32 ioNewDirID;
  SInt32 filler14;
  SInt32 filler15;
  SInt32 ioDirID;
} CopyParam;

typedef struct WDParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 filler9;
  SInt16 ioWDIndex;
  SInt32 ioWDProcID;
  SInt16 ioWDVRefNum;
  SInt16 filler10;
  SInt32 filler11;
  SInt32 filler12;
  SInt32 filler13;
  SInt32 ioWDDirID;
} WDParam;

typedef struct FIDParam {
  KWE_PARAM_BLOCK_HEADER;
  SInt32 filler14;
  StringPtr ioDestNamePtr;
  SInt32 filler15;
  SInt32 ioDestDirID;
  SInt32 filler16;
  SInt32 filler17;
  SInt32 ioSrcDirID;
  SInt16 filler18;
  SInt32 ioFileID;
} FIDParam;

typedef union HParamBlockRec {
  HIOParam ioParam;
  HFileParam fileParam;
  HVolumeParam volumeParam;
  AccessParam accessParam;
  ObjParam objParam;
  CopyParam copyParam;
  WDParam wdParam;
  FIDParam fidParam;
} HParamBlockRec;
typedef HParamBlockRec* HParmBlkPtr;

typedef struct HFileInfo {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 ioFRefNum;
  SInt8 ioFVersNum;
  SInt8 filler1;
  SInt16 ioFDirIndex;
  SInt8 ioFlAttrib;
  SInt8 ioACUser;
  FInfo ioFlFndrInfo;
  SInt32 ioDirID;
  UInt16 ioFlStBlk;
  SInt32 ioFlLgLen;
  SInt32 ioFlPyLen;
  UInt16 ioFlRStBlk;
  SInt32 ioFlRLgLen;
  SInt32 ioFlRPyLen;
  UInt32 ioFlCrDat;
  UInt32 ioFlMdDat;
  UInt32 ioFlBkDat;
  FXInfo ioFlXFndrInfo;
  SInt32 ioFlParID;
  SInt32 ioFlClpSiz;
} HFileInfo;

typedef struct DirInfo {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 ioFRefNum;
  SInt8 ioFVersNum;
  SInt8 filler1;
  SInt16 ioFDirIndex;
  SInt8 ioFlAttrib;
  SInt8 ioACUser;
  DInfo ioDrUsrWds;
  SInt32 ioDrDirID;
  UInt16 ioDrNmFls;
  SInt16 filler3[9];
  UInt32 ioDrCrDat;
  UInt32 ioDrMdDat;
  UInt32 ioDrBkDat;
  DXInfo ioDrFndrInfo;
  SInt32 ioDrParID;
} DirInfo;

typedef union CInfoPBRec {
  HFileInfo hFileInfo;
  DirInfo dirInfo;
} CInfoPBRec;
typedef CInfoPBRec* CInfoPBPtr;

typedef struct WDPBRec {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 filler1;
  SInt16 ioWDIndex;
  SInt32 ioWDProcID;
  SInt16 ioWDVRefNum;
  SInt16 filler2[7];
  SInt32 ioWDDirID;
} WDPBRec;
typedef WDPBRec* WDPBPtr;

typedef struct FCBPBRec {
  KWE_PARAM_BLOCK_HEADER;
  SInt16 ioRefNum;
  SInt16 filler;
  SInt16 ioFCBIndx;
  SInt16 filler1;
  SInt32 ioFCBFlNm;
  SInt16 ioFCBFlags;
  UInt16 ioFCBStBlk;
  SInt32 ioFCBEOF;
  SInt32 ioFCBPLen;
  SInt32 ioFCBCrPs;
  SInt16 ioFCBVRefNum;
  SInt32 ioFCBClpSiz;
  SInt32 ioFCBParID;
} FCBPBRec;
typedef FCBPBRec* FCBPBPtr;

/* What PBHGetVolParms fills: the version word and clear attributes. */
typedef struct GetVolParmsInfoBuffer {
  SInt16 vMVersion;
  SInt32 vMAttrib;
  Handle vMLocalHand;
  SInt32 vMServerAdr;
  SInt32 vMVolumeGrade;
  SInt16 vMForeignPrivID;
} GetVolParmsInfoBuffer;

#pragma pack(pop)

#undef KWE_PARAM_BLOCK_HEADER

/* --- Naming: volumes, directories and DOS paths --- */

/* The full DOS path of (dirID, vRefNum, name) into path, which must hold
   MAX_PATH (260) bytes. dirID 0 takes the directory from vRefNum (0: the
   process's current directory). fnfErr without a directory, nsvErr for an
   unknown volume, bdNamErr when the path does not fit; path is then empty. */
KWE_API OSErr KWE_CALL KWE_HFSpec(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name, char* path);
KWE_API OSErr KWE_CALL KWE_FSpec(SInt16 vRefNum, ConstStr255Param name, char* path);
/* The directory ID of a directory path, its record made when new; vRefNum
   (optional) = the path's volume; wdRefNum (optional) = the working
   directory's number, 0 for a volume root, 0xEEEE when none (result 0). */
KWE_API SInt32 KWE_CALL KWE_DirIDFromPath(const char* path, SInt16* vRefNum, SInt16* wdRefNum);
/* Makes the directory (null or "": the process's current directory) the
   current one in CurDirStore; answers its working-directory number, the
   volume reference number for a root, 0xEEEE when it has none. */
KWE_API SInt16 KWE_CALL KWE_CurDirvRefNum(const char* path);
/* The FSSpec is filled even when the file does not exist (fnfErr). An empty
   name gives the directory itself as parID and an empty name. */
KWE_API OSErr KWE_CALL FSMakeFSSpec(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                                    FSSpec* spec);

/* A path from a common dialog as a Standard File reply (SFReply, in
   StandardFile.h). With addExtension the name takes the extension of the
   dialog's filter filterIndex (a name that has one keeps it unless
   replaceExtension). The directory becomes the current one and vRefNum its
   working-directory number; setSaveDisk also sets SFSaveDisk and the current
   volume; remember keeps the name and filter type for the Finder
   information of later calls. An empty name leaves good false. */
struct SFReply;
KWE_API void KWE_CALL KWE_DosFSpec2MacSFReply(Boolean addExtension, Boolean replaceExtension,
                                              SInt16 filterIndex, Boolean setSaveDisk,
                                              Boolean remember, const char* path,
                                              struct SFReply* reply);

/* Working directories. CloseWD never removes one: numbers stay valid for the
   session. */
KWE_API OSErr KWE_CALL OpenWD(SInt16 vRefNum, SInt32 dirID, SInt32 procID, SInt16* wdRefNum);
KWE_API OSErr KWE_CALL PBOpenWD(WDPBPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL CloseWD(SInt16 wdRefNum);
KWE_API OSErr KWE_CALL PBCloseWD(WDPBPtr paramBlock, Boolean async);
/* ioNamePtr (when given) receives the directory's full DOS path, so it must
   hold a Str255. ioWDProcID is always 'KWE '; ioWDIndex is not used. */
KWE_API OSErr KWE_CALL PBGetWDInfo(WDPBPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL GetWDInfo(SInt16 wdRefNum, SInt16* vRefNum, SInt32* dirID, SInt32* procID);

/* The default volume is the process's current directory. GetVol's name is
   the drive root ("C:\"); SetVol takes "X:" or "X:\" names or a directory
   path and changes the process's current directory. */
KWE_API OSErr KWE_CALL PBGetVol(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL GetVol(StringPtr volName, SInt16* vRefNum);
KWE_API OSErr KWE_CALL PBHGetVol(WDPBPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL HGetVol(StringPtr volName, SInt16* vRefNum, SInt32* dirID);
KWE_API OSErr KWE_CALL PBSetVol(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL SetVol(ConstStr255Param volName, SInt16 vRefNum);
KWE_API OSErr KWE_CALL PBHSetVol(WDPBPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL HSetVol(ConstStr255Param volName, SInt16 vRefNum, SInt32 dirID);

/* --- The open-file table: reference numbers are its slots 2 to 63 --- */

/* mode: the Win32 OpenFile mode bits (OF_READ 0, OF_WRITE 1, OF_READWRITE 2,
   the OF_SHARE_ bits, OF_CREATE). Answers the slot, or -1 with err set. */
KWE_API SInt16 KWE_CALL KWE_FHOpen(const char* path, UInt16 mode, OSErr* err);
/* Creates (or empties) the file with the DOS attributes given and opens it
   for reading and writing, or reading only with attribute bit 0. */
KWE_API SInt16 KWE_CALL KWE_FHCreate(const char* path, SInt16 attributes);
KWE_API SInt16 KWE_CALL KWE_FHClose(SInt16 slot);
KWE_API SInt32 KWE_CALL KWE_FHRead(SInt16 slot, void* buffer, SInt32 count);
/* A count of 0 cuts the file at the current position. */
KWE_API SInt32 KWE_CALL KWE_FHWrite(SInt16 slot, const void* buffer, SInt32 count);
KWE_API SInt32 KWE_CALL KWE_FHLSeek(SInt16 slot, SInt32 offset, UInt16 origin);
/* false parks an open file (closes it, keeping its place); true reopens a
   parked one. A parked file also reopens by itself on its next read, write
   or seek; one that cannot be reopened loses its slot. */
KWE_API Boolean KWE_CALL KWE_FHReOpen(Boolean reopen, SInt16 slot);
KWE_API void KWE_CALL KWE_FHReOpenAll(Boolean reopen);
/* The slot's Win32 file handle as a 32-bit value (-1 when not open), and
   back. Kernel handles are 32-bit significant on 64-bit Windows too, so the
   value is widened from the 16 bits a Win16 file handle had rather than
   cut. */
KWE_API SInt32 KWE_CALL KWE_FHMap(SInt16 slot);
KWE_API SInt16 KWE_CALL KWE_FHUnMap(SInt32 handle);
/* The DOS attributes of the slot's file (bit 0 read-only); 0xFFFF on failure. */
KWE_API SInt16 KWE_CALL KWE_FHGetAttr(SInt16 slot);
KWE_API OSErr KWE_CALL KWE_FHSetEOF0(SInt16 slot);

/* --- Opening, reading, writing, positioning --- */

/* ioRefNum is 0 after a failed open. FSOpen opens with fsRdWrPerm. */
KWE_API OSErr KWE_CALL PBOpen(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBHOpen(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL FSOpen(ConstStr255Param fileName, SInt16 vRefNum, SInt16* refNum);
KWE_API OSErr KWE_CALL HOpen(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                             SInt8 permission, SInt16* refNum);
KWE_API OSErr KWE_CALL HOpenDF(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                               SInt8 permission, SInt16* refNum);
KWE_API OSErr KWE_CALL FSpOpenDF(const FSSpec* spec, SInt8 permission, SInt16* refNum);
/* fnOpnErr for reference number 0, ioErr for one that is not open. */
KWE_API OSErr KWE_CALL PBClose(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL FSClose(SInt16 refNum);

/* eofErr when fewer bytes than asked were there (they are delivered and
   counted); ioErr for a reference number that is not open. */
KWE_API OSErr KWE_CALL FSRead(SInt16 refNum, SInt32* count, void* buffPtr);
/* wrPermErr when the file was opened without write access or is read-only. */
KWE_API OSErr KWE_CALL FSWrite(SInt16 refNum, SInt32* count, const void* buffPtr);
/* Positions by ioPosMode/ioPosOffset first; ioPosOffset then grows by
   ioActCount (so it is the new mark for fsFromStart). */
KWE_API OSErr KWE_CALL PBRead(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBWrite(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL GetFPos(SInt16 refNum, SInt32* filePos);
KWE_API OSErr KWE_CALL PBGetFPos(ParmBlkPtr paramBlock, Boolean async);
/* Windows lets the mark pass the end of file: only fsFromLEOF with a
   positive offset answers eofErr (after moving). */
KWE_API OSErr KWE_CALL SetFPos(SInt16 refNum, SInt16 posMode, SInt32 posOff);
KWE_API OSErr KWE_CALL PBSetFPos(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL GetEOF(SInt16 refNum, SInt32* logEOF);
KWE_API OSErr KWE_CALL PBGetEOF(ParmBlkPtr paramBlock, Boolean async);
/* A longer file is filled with zeros. The mark stays where it was, or at the
   new end when that is before it. */
KWE_API OSErr KWE_CALL SetEOF(SInt16 refNum, SInt32 logEOF);
KWE_API OSErr KWE_CALL PBSetEOF(ParmBlkPtr paramBlock, Boolean async);
/* Lengthens the file itself by *count zero bytes (there is no physical
   allocation apart from the logical length). */
KWE_API OSErr KWE_CALL Allocate(SInt16 refNum, SInt32* count);
KWE_API OSErr KWE_CALL PBFlushFile(ParmBlkPtr paramBlock, Boolean async);

/* --- Creating, deleting, renaming --- */

/* creator and fileType are not stored. dupFNErr when the name exists. */
KWE_API OSErr KWE_CALL PBCreate(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBHCreate(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL Create(ConstStr255Param fileName, SInt16 vRefNum, OSType creator,
                              OSType fileType);
KWE_API OSErr KWE_CALL HCreate(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                               OSType creator, OSType fileType);
KWE_API OSErr KWE_CALL FSpCreate(const FSSpec* spec, OSType creator, OSType fileType,
                                 ScriptCode scriptTag);
/* fBsyErr while the file is open in the table; fLckdErr when Windows
   refuses (read-only files, directories). */
KWE_API OSErr KWE_CALL PBDelete(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBHDelete(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL FSDelete(ConstStr255Param fileName, SInt16 vRefNum);
KWE_API OSErr KWE_CALL HDelete(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName);
KWE_API OSErr KWE_CALL FSpDelete(const FSSpec* spec);
/* The new name stays in the old name's directory (ioMisc holds it in
   PBHRename). bdNamErr when the old name does not exist, dupFNErr when the
   new one does. */
KWE_API OSErr KWE_CALL PBHRename(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL Rename(ConstStr255Param oldName, SInt16 vRefNum, ConstStr255Param newName);
KWE_API OSErr KWE_CALL HRename(SInt16 vRefNum, SInt32 dirID, ConstStr255Param oldName,
                               ConstStr255Param newName);
KWE_API OSErr KWE_CALL FSpRename(const FSSpec* spec, ConstStr255Param newName);
/* ioDirID: the parent directory in, the new directory's ID out. */
KWE_API OSErr KWE_CALL PBDirCreate(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL DirCreate(SInt16 vRefNum, SInt32 parentDirID, ConstStr255Param directoryName,
                                 SInt32* createdDirID);
/* Swaps the two files' contents by renaming through a temporary name (the
   first file's name with the extension .aaa, .aab, ...); files open in the
   table follow their data. */
KWE_API OSErr KWE_CALL FSpExchangeFiles(const FSSpec* source, const FSSpec* dest);

/* --- Finder and catalog information --- */

KWE_API OSErr KWE_CALL GetFInfo(ConstStr255Param fileName, SInt16 vRefNum, FInfo* fndrInfo);
KWE_API OSErr KWE_CALL HGetFInfo(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                                 FInfo* fndrInfo);
KWE_API OSErr KWE_CALL FSpGetFInfo(const FSSpec* spec, FInfo* fndrInfo);
/* Creation and modification dates both give the last-write time; resource
   fork lengths are 0. With session flag 0x00010000 a directory's ioDirID is
   set to its own directory ID. */
KWE_API OSErr KWE_CALL PBHGetFInfo(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBGetFInfo(ParmBlkPtr paramBlock, Boolean async);
/* ioFDirIndex > 0 enumerates the directory (never "." or ".."); one
   enumeration is kept for all callers. With session flag 0x00010000 a
   directory entry's ioDrDirID is its own ID, so set ioDirID again before
   the next index. */
KWE_API OSErr KWE_CALL PBGetCatInfo(CInfoPBPtr paramBlock, Boolean async);
/* Only the modification date (ioFlMdDat) is written, as the last-write time. */
KWE_API OSErr KWE_CALL PBHSetFInfo(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBSetFInfo(ParmBlkPtr paramBlock, Boolean async);
/* Nothing of the Finder information is stored: no effect, noErr. */
KWE_API OSErr KWE_CALL HSetFInfo(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                                 const FInfo* fndrInfo);

/* --- Volumes --- */

/* ioVolIndex > 0 names the volume by position, 0 by ioVRefNum, < 0 by the
   path in ioNamePtr. Only fixed, network and current drives are asked for
   their free space unless session flag 0x00004000 is set; the others report
   256 blocks of 8,192 bytes, none free. Block counts are kept below 32,768
   by doubling the block size. */
KWE_API OSErr KWE_CALL PBGetVInfo(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBHGetVInfo(HParmBlkPtr paramBlock, Boolean async);
/* *freeBytes stops at 0x7FFFFFFF on larger disks. */
KWE_API OSErr KWE_CALL GetVInfo(SInt16 drvNum, StringPtr volName, SInt16* vRefNum,
                                SInt32* freeBytes);
KWE_API OSErr KWE_CALL GetVRefNum(SInt16 refNum, SInt16* vRefNum);
KWE_API SInt16 KWE_CALL DIBadMount(Point where, SInt32 evtMessage);
KWE_API OSErr KWE_CALL PBHGetVolParms(HParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL PBFlushVol(ParmBlkPtr paramBlock, Boolean async);
KWE_API OSErr KWE_CALL FlushVol(ConstStr255Param volName, SInt16 vRefNum);
/* fnOpnErr unless the file is open at this moment (a parked file is not). */
KWE_API OSErr KWE_CALL PBGetFCBInfo(FCBPBPtr paramBlock, Boolean async);

/* The synchronous and asynchronous forms are the same calls. */
#define PBOpenSync(pb) PBOpen((pb), 0)
#define PBOpenAsync(pb) PBOpen((pb), 1)
#define PBHOpenSync(pb) PBHOpen((pb), 0)
#define PBHOpenAsync(pb) PBHOpen((pb), 1)
#define PBHOpenDFSync(pb) PBHOpen((pb), 0)
#define PBHOpenDFAsync(pb) PBHOpen((pb), 1)
#define PBCloseSync(pb) PBClose((pb), 0)
#define PBCloseAsync(pb) PBClose((pb), 1)
#define PBReadSync(pb) PBRead((pb), 0)
#define PBReadAsync(pb) PBRead((pb), 1)
#define PBWriteSync(pb) PBWrite((pb), 0)
#define PBWriteAsync(pb) PBWrite((pb), 1)
#define PBGetFPosSync(pb) PBGetFPos((pb), 0)
#define PBGetFPosAsync(pb) PBGetFPos((pb), 1)
#define PBSetFPosSync(pb) PBSetFPos((pb), 0)
#define PBSetFPosAsync(pb) PBSetFPos((pb), 1)
#define PBGetEOFSync(pb) PBGetEOF((pb), 0)
#define PBGetEOFAsync(pb) PBGetEOF((pb), 1)
#define PBSetEOFSync(pb) PBSetEOF((pb), 0)
#define PBSetEOFAsync(pb) PBSetEOF((pb), 1)
#define PBFlushFileSync(pb) PBFlushFile((pb), 0)
#define PBFlushFileAsync(pb) PBFlushFile((pb), 1)
#define PBCreateSync(pb) PBCreate((pb), 0)
#define PBCreateAsync(pb) PBCreate((pb), 1)
#define PBHCreateSync(pb) PBHCreate((pb), 0)
#define PBHCreateAsync(pb) PBHCreate((pb), 1)
#define PBDeleteSync(pb) PBDelete((pb), 0)
#define PBDeleteAsync(pb) PBDelete((pb), 1)
#define PBHDeleteSync(pb) PBHDelete((pb), 0)
#define PBHDeleteAsync(pb) PBHDelete((pb), 1)
#define PBHRenameSync(pb) PBHRename((pb), 0)
#define PBHRenameAsync(pb) PBHRename((pb), 1)
#define PBDirCreateSync(pb) PBDirCreate((pb), 0)
#define PBDirCreateAsync(pb) PBDirCreate((pb), 1)
#define PBGetFInfoSync(pb) PBGetFInfo((pb), 0)
#define PBGetFInfoAsync(pb) PBGetFInfo((pb), 1)
#define PBHGetFInfoSync(pb) PBHGetFInfo((pb), 0)
#define PBHGetFInfoAsync(pb) PBHGetFInfo((pb), 1)
#define PBSetFInfoSync(pb) PBSetFInfo((pb), 0)
#define PBSetFInfoAsync(pb) PBSetFInfo((pb), 1)
#define PBHSetFInfoSync(pb) PBHSetFInfo((pb), 0)
#define PBHSetFInfoAsync(pb) PBHSetFInfo((pb), 1)
#define PBGetCatInfoSync(pb) PBGetCatInfo((pb), 0)
#define PBGetCatInfoAsync(pb) PBGetCatInfo((pb), 1)
#define PBGetVInfoSync(pb) PBGetVInfo((pb), 0)
#define PBGetVInfoAsync(pb) PBGetVInfo((pb), 1)
#define PBHGetVInfoSync(pb) PBHGetVInfo((pb), 0)
#define PBHGetVInfoAsync(pb) PBHGetVInfo((pb), 1)
#define PBHGetVolParmsSync(pb) PBHGetVolParms((pb), 0)
#define PBHGetVolParmsAsync(pb) PBHGetVolParms((pb), 1)
#define PBFlushVolSync(pb) PBFlushVol((pb), 0)
#define PBFlushVolAsync(pb) PBFlushVol((pb), 1)
#define PBGetFCBInfoSync(pb) PBGetFCBInfo((pb), 0)
#define PBGetFCBInfoAsync(pb) PBGetFCBInfo((pb), 1)
#define PBOpenWDSync(pb) PBOpenWD((pb), 0)
#define PBOpenWDAsync(pb) PBOpenWD((pb), 1)
#define PBCloseWDSync(pb) PBCloseWD((pb), 0)
#define PBCloseWDAsync(pb) PBCloseWD((pb), 1)
#define PBGetWDInfoSync(pb) PBGetWDInfo((pb), 0)
#define PBGetWDInfoAsync(pb) PBGetWDInfo((pb), 1)
#define PBGetVolSync(pb) PBGetVol((pb), 0)
#define PBGetVolAsync(pb) PBGetVol((pb), 1)
#define PBHGetVolSync(pb) PBHGetVol((pb), 0)
#define PBHGetVolAsync(pb) PBHGetVol((pb), 1)
#define PBSetVolSync(pb) PBSetVol((pb), 0)
#define PBSetVolAsync(pb) PBSetVol((pb), 1)
#define PBHSetVolSync(pb) PBHSetVol((pb), 0)
#define PBHSetVolAsync(pb) PBHSetVol((pb), 1)

#endif
