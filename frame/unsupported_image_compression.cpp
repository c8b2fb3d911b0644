// Image Compression Manager: QuickTime's codecs are not on Windows. Each call
// reports its own name (__func__ is the exported name) and answers noErr or
// nil; no pixels and no output parameters are written.
#include "ImageCompression.h"
#include "frame/unsupported.h"

KWE_API OSErr KWE_CALL GetMaxCompressionSize(PixMapHandle, const Rect*, SInt16, CodecQ, CodecType,
                                             CompressorComponent, SInt32*) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL FCompressImage(PixMapHandle, const Rect*, SInt16, CodecQ, CodecType,
                                      CompressorComponent, CTabHandle, CodecFlags, SInt32,
                                      ICMFlushProcRecordPtr, ICMProgressProcRecordPtr,
                                      ImageDescriptionHandle, Ptr) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL DecompressImage(Ptr, ImageDescriptionHandle, PixMapHandle, const Rect*,
                                       const Rect*, SInt16, RgnHandle) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL CompressSequenceBegin(ImageSequence*, PixMapHandle, PixMapHandle,
                                             const Rect*, const Rect*, SInt16, CodecType,
                                             CompressorComponent, CodecQ, CodecQ, SInt32,
                                             CTabHandle, CodecFlags, ImageDescriptionHandle) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL CompressSequenceFrame(ImageSequence, PixMapHandle, const Rect*, CodecFlags,
                                             Ptr, SInt32*, UInt8*, ICMCompletionProcRecordPtr) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL CDSequenceEnd(ImageSequence) { return kwe::Unsupported(__func__, noErr); }

KWE_API OSErr KWE_CALL GetCodecInfo(CodecInfo*, CodecType, CodecComponent) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL GetCodecNameList(CodecNameSpecListPtr*, SInt16) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL DisposeCodecNameList(CodecNameSpecListPtr) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API OSErr KWE_CALL MakeFilePreview(SInt16, ICMProgressProcRecordPtr) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API void KWE_CALL SFPGetFilePreview(Point, ConstStr255Param, FileFilterProcPtr, SInt16,
                                        ConstSFTypeListPtr, DlgHookProcPtr, SFReply*, SInt16,
                                        ModalFilterProcPtr) {
  kwe::Unsupported(__func__);
}

KWE_API ComponentInstance KWE_CALL OpenStdCompression(void) {
  return kwe::Unsupported(__func__, ComponentInstance{});
}
