/* Image Compression Manager. QuickTime's codecs have no Windows counterpart:
   the calls report themselves and answer noErr (or nil) without writing their
   output parameters or any pixels. */
#ifndef KWE_IMAGECOMPRESSION_H
#define KWE_IMAGECOMPRESSION_H

#include "Dialogs.h"
#include "MacTypes.h"
#include "StandardFile.h"

typedef SInt32 ImageSequence;
typedef OSType CodecType;
typedef UInt32 CodecQ;
typedef UInt16 CodecFlags;
typedef struct ComponentRecord* Component;
typedef struct ComponentInstanceRecord* ComponentInstance;
typedef Component CompressorComponent;
typedef Component CodecComponent;

/* Records and procedure records the calls take only by address. */
typedef struct ImageDescription** ImageDescriptionHandle;
typedef struct CodecInfo CodecInfo;
typedef struct CodecNameSpecList* CodecNameSpecListPtr;
typedef struct ICMCompletionProcRecord* ICMCompletionProcRecordPtr;
typedef struct ICMFlushProcRecord* ICMFlushProcRecordPtr;
typedef struct ICMProgressProcRecord* ICMProgressProcRecordPtr;

KWE_API OSErr KWE_CALL GetMaxCompressionSize(PixMapHandle src, const Rect* srcRect,
                                             SInt16 colorDepth, CodecQ quality, CodecType cType,
                                             CompressorComponent codec, SInt32* size);
KWE_API OSErr KWE_CALL FCompressImage(PixMapHandle src, const Rect* srcRect, SInt16 colorDepth,
                                      CodecQ quality, CodecType cType, CompressorComponent codec,
                                      CTabHandle ctable, CodecFlags flags, SInt32 bufferSize,
                                      ICMFlushProcRecordPtr flushProc,
                                      ICMProgressProcRecordPtr progressProc,
                                      ImageDescriptionHandle desc, Ptr data);
KWE_API OSErr KWE_CALL DecompressImage(Ptr data, ImageDescriptionHandle desc, PixMapHandle dst,
                                       const Rect* srcRect, const Rect* dstRect, SInt16 mode,
                                       RgnHandle mask);
KWE_API OSErr KWE_CALL CompressSequenceBegin(ImageSequence* seqID, PixMapHandle src,
                                             PixMapHandle prev, const Rect* srcRect,
                                             const Rect* prevRect, SInt16 colorDepth,
                                             CodecType cType, CompressorComponent codec,
                                             CodecQ spatialQuality, CodecQ temporalQuality,
                                             SInt32 keyFrameRate, CTabHandle ctable,
                                             CodecFlags flags, ImageDescriptionHandle desc);
KWE_API OSErr KWE_CALL CompressSequenceFrame(ImageSequence seqID, PixMapHandle src,
                                             const Rect* srcRect, CodecFlags flags, Ptr data,
                                             SInt32* dataSize, UInt8* similarity,
                                             ICMCompletionProcRecordPtr asyncCompletionProc);
KWE_API OSErr KWE_CALL CDSequenceEnd(ImageSequence seqID);
KWE_API OSErr KWE_CALL GetCodecInfo(CodecInfo* info, CodecType cType, CodecComponent codec);
KWE_API OSErr KWE_CALL GetCodecNameList(CodecNameSpecListPtr* list, SInt16 showAll);
KWE_API OSErr KWE_CALL DisposeCodecNameList(CodecNameSpecListPtr list);
KWE_API OSErr KWE_CALL MakeFilePreview(SInt16 resRefNum, ICMProgressProcRecordPtr progress);
/* Reports itself and shows no dialog: reply is not written. */
KWE_API void KWE_CALL SFPGetFilePreview(Point where, ConstStr255Param prompt,
                                        FileFilterProcPtr fileFilter, SInt16 numTypes,
                                        ConstSFTypeListPtr typeList, DlgHookProcPtr dlgHook,
                                        SFReply* reply, SInt16 dlgID,
                                        ModalFilterProcPtr filterProc);
/* The standard image-compression dialog component: answers nil. */
KWE_API ComponentInstance KWE_CALL OpenStdCompression(void);

#endif
