/* Printing Manager over Windows printing. The printer is Windows' default
   printer; the style dialog is the common page-setup dialog and the job
   dialog the common print dialog (each through the host's dialog hook when
   it set one). A document is a Windows print job (StartDoc/EndDoc), a page a
   Windows page (StartPage/EndPage), and the printing port a QuickDraw port
   drawing into the printer's DC at the record's resolution (72 dots per
   inch unless PrGeneral set another), scaled to the printer's own.
   PrintDefault chooses bDraftLoop: pages print as they are drawn and
   PrPicFile has nothing to do. With bSpoolLoop the pages are recorded into
   a spool file and PrPicFile prints them. */
#ifndef KWE_PRINTING_H
#define KWE_PRINTING_H

#include "Dialogs.h"
#include "MacTypes.h"
#include "Quickdraw.h"

enum {
  iPrPgFract = 120, /* prStl.iPageV/iPageH count 1/120 inch */
  iPrPgFst = 1,
  iPrPgMax = 9999,
  iPrRelease = 3, /* iPrVersion of the records this library fills */
  iPfMaxPgs = 128,
  iPrBitsCtl = 4,
  iPrIOCtl = 5,
  iPrEvtCtl = 6,
  iPrDevCtl = 7,
  lPrReset = 0x00010000,
  lPrPageEnd = 0x00020000,
  lPrLineFeed = 0x00030000,
  lPrDocOpen = 0x00010000,
  lPrDocClose = 0x00050000,
  lPrPageOpen = 0x00040000,
  lPrPageClose = 0x00020000,
  iPrAbort = 0x0080, /* PrError after the user cancelled */
  iPrSavPFil = -1,
  iIOAbort = -27,
  iMemFullErr = -108
};

/* bJDocLoop */
enum { bDraftLoop = 0, bSpoolLoop = 1, bUser1Loop = 2, bUser2Loop = 3 };
/* TFeed and TScan */
enum { feedCut = 0, feedFanfold = 1, feedMechCut = 2, feedOther = 3 };
enum { scanTB = 0, scanBT = 1, scanLR = 2, scanRL = 3 };

/* PrGeneral opcodes and their iError answers. */
enum {
  getRslDataOp = 4,
  setRslOp = 5,
  draftBitsOp = 6,
  noDraftBitsOp = 7,
  getRotnOp = 8,
  NoSuchRsl = 1,
  OpNotImpl = 2,
  RgType1 = 1
};

typedef SInt8 TFeed;
typedef SInt8 TScan;
typedef void(KWE_CALL* PrIdleProcPtr)(void);
typedef PrIdleProcPtr PrIdleUPP;
typedef void(KWE_CALL* PItemProcPtr)(DialogPtr theDialog, SInt16 item);
typedef PItemProcPtr PItemUPP;

#pragma pack(push, 2)
/* 14 bytes: a resolution and the printable page at it. */
typedef struct TPrInfo {
  SInt16 iDev;
  SInt16 iVRes;
  SInt16 iHRes;
  Rect rPage;
} TPrInfo, *TPPrInfo;

/* 8 bytes: the paper in 1/120 inch. */
typedef struct TPrStl {
  SInt16 wDev;
  SInt16 iPageV;
  SInt16 iPageH;
  SInt8 bPort;
  TFeed feed;
} TPrStl, *TPPrStl;

/* 16 bytes: how the driver bands the page. */
typedef struct TPrXInfo {
  SInt16 iRowBytes;
  SInt16 iBandV;
  SInt16 iBandH;
  SInt16 iDevBytes;
  SInt16 iBands;
  SInt8 bPatScale;
  SInt8 bUlThick;
  SInt8 bUlOffset;
  SInt8 bUlShadow;
  TScan scan;
  SInt8 bXInfoX;
} TPrXInfo, *TPPrXInfo;

/* 20 bytes in the 32-bit build. pIdleProc and pFileName are real pointers,
   so the 64-bit build's record is wider (28 bytes) rather than cutting a
   pointer into a 32-bit slot; records saved by a 32-bit program read back
   in a 32-bit program. */
typedef struct TPrJob {
  SInt16 iFstPage;
  SInt16 iLstPage;
  SInt16 iCopies;
  SInt8 bJDocLoop;
  Boolean fFromUsr;
  PrIdleUPP pIdleProc;
  StringPtr pFileName;
  SInt16 iFileVol;
  SInt8 bFileVers;
  SInt8 bJobX;
} TPrJob, *TPPrJob;

/* 120 bytes in the 32-bit build. printX is the driver's own: this library
   keeps there the Windows paper size and orientation chosen in the style
   dialog, so that a record saved with a document prints the same way. */
typedef struct TPrint {
  SInt16 iPrVersion;
  TPrInfo prInfo;
  Rect rPaper;
  TPrStl prStl;
  TPrInfo prInfoPT;
  TPrXInfo prXInfo;
  TPrJob prJob;
  SInt16 printX[19];
} TPrint, *TPPrint, **THPrint;

/* The printing port: a QuickDraw port whose DC is the printer's. */
typedef struct TPrPort {
  GrafPort gPort;
  QDProcs saveProcs;
  SInt32 lGParam1;
  SInt32 lGParam2;
  SInt32 lGParam3;
  SInt32 lGParam4;
  Boolean fOurPtr; /* PrOpenDoc allocated it and PrCloseDoc frees it */
  Boolean fOurBits;
} TPrPort, *TPPrPort;

typedef struct TPrStatus {
  SInt16 iTotPages;
  SInt16 iCurPage;
  SInt16 iTotCopies;
  SInt16 iCurCopy;
  SInt16 iTotBands;
  SInt16 iCurBand;
  Boolean fPgDirty;
  Boolean fImaging;
  THPrint hPrint;
  TPPrPort pPrPort;
  PicHandle hPic;
} TPrStatus, *TPPrStatus;

/* The dialog record the Macintosh dialogs' init procedures hand around. */
typedef struct TPrDlg {
  DialogRecord dlg;
  ModalFilterProcPtr pFltrProc;
  PItemUPP pItemProc;
  THPrint hPrintUsr;
  Boolean fDoIt;
  Boolean fDone;
  SInt32 lUser1;
  SInt32 lUser2;
  SInt32 lUser3;
  SInt32 lUser4;
} TPrDlg, *TPPrDlg;

/* PrGeneral's parameter blocks: each starts with the opcode and an error. */
typedef struct TGnlData {
  SInt16 iOpCode;
  SInt16 iError;
  SInt32 lReserved;
} TGnlData;

typedef struct TRslRg {
  SInt16 iMin;
  SInt16 iMax;
} TRslRg;

typedef struct TRslRec {
  SInt16 iXRsl;
  SInt16 iYRsl;
} TRslRec;

typedef struct TGetRslBlk {
  SInt16 iOpCode;
  SInt16 iError;
  SInt32 lReserved;
  SInt16 iRgType;
  TRslRg xRslRg;
  TRslRg yRslRg;
  SInt16 iRslRecCnt;
  TRslRec rgRslRec[27];
} TGetRslBlk;

typedef struct TSetRslBlk {
  SInt16 iOpCode;
  SInt16 iError;
  SInt32 lReserved;
  THPrint hPrint;
  SInt16 iXRsl;
  SInt16 iYRsl;
} TSetRslBlk;

typedef struct TDftBitsBlk {
  SInt16 iOpCode;
  SInt16 iError;
  SInt32 lReserved;
  THPrint hPrint;
} TDftBitsBlk;

typedef struct TGetRotnBlk {
  SInt16 iOpCode;
  SInt16 iError;
  SInt32 lReserved;
  THPrint hPrint;
  Boolean fLandscape;
  SInt8 bXtra;
} TGetRotnBlk;
#pragma pack(pop)

/* PrOpen finds Windows' default printer; without one PrError is fnfErr and
   every later call does nothing. */
KWE_API void KWE_CALL PrOpen(void);
KWE_API void KWE_CALL PrClose(void);
KWE_API SInt16 KWE_CALL PrError(void);
KWE_API void KWE_CALL PrSetError(SInt16 iErr);

/* The record at the default printer's page at 72 dots per inch. PrValidate
   makes a damaged or foreign record whole again and answers whether it
   changed anything. */
KWE_API void KWE_CALL PrintDefault(THPrint hPrint);
KWE_API Boolean KWE_CALL PrValidate(THPrint hPrint);
/* The common page-setup and print dialogs; true when the user confirmed. */
KWE_API Boolean KWE_CALL PrStlDialog(THPrint hPrint);
KWE_API Boolean KWE_CALL PrJobDialog(THPrint hPrint);
/* The Macintosh dialogs' items cannot be added to the common dialogs: the
   init procedures answer nil, and PrDlgMain with an application's own init
   procedure reports that and runs the plain job dialog. */
KWE_API TPPrDlg KWE_CALL PrStlInit(THPrint hPrint);
KWE_API TPPrDlg KWE_CALL PrJobInit(THPrint hPrint);
typedef TPPrDlg(KWE_CALL* PDlgInitProcPtr)(THPrint hPrint);
KWE_API Boolean KWE_CALL PrDlgMain(THPrint hPrint, PDlgInitProcPtr pDlgInit);
KWE_API void KWE_CALL PrJobMerge(THPrint hPrintSrc, THPrint hPrintDst);

/* A document is a print job, a page a Windows page; pPrPort may be nil
   (the port is then allocated, and freed by PrCloseDoc). */
KWE_API TPPrPort KWE_CALL PrOpenDoc(THPrint hPrint, TPPrPort pPrPort, Ptr pIOBuf);
KWE_API void KWE_CALL PrCloseDoc(TPPrPort pPrPort);
KWE_API void KWE_CALL PrOpenPage(TPPrPort pPrPort, Rect* pPageFrame);
KWE_API void KWE_CALL PrClosePage(TPPrPort pPrPort);
KWE_API void KWE_CALL PrPicFile(THPrint hPrint, TPPrPort pPrPort, Ptr pIOBuf, Ptr pDevBuf,
                                TPPrStatus prStatus);
KWE_API void KWE_CALL PrGeneral(Ptr pData);

/* The printer driver's low-level calls: the driver is always open. */
KWE_API void KWE_CALL PrDrvrOpen(void);
KWE_API void KWE_CALL PrDrvrClose(void);
KWE_API void KWE_CALL PrCtlCall(SInt16 iWhichCtl, SInt32 lParam1, SInt32 lParam2, SInt32 lParam3);
KWE_API Handle KWE_CALL PrDrvrDCE(void);
KWE_API SInt16 KWE_CALL PrDrvrVers(void);
KWE_API void KWE_CALL PrPurge(void);
KWE_API void KWE_CALL PrNoPurge(void);

#endif
