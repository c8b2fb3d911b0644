// Volume information, flushing, and what the table knows of an open file.
#include <windows.h>

#include <cstring>

#include "Files.h"
#include "KWESession.h"
#include "files/call_support.h"
#include "files/dos_path.h"
#include "files/file_slots.h"
#include "files/name_conversion.h"
#include "files/transfer_rules.h"
#include "files/volume_table.h"
#include "files/working_directories.h"
#include "frame/session.h"

using namespace kwe::files;

namespace {

struct VolumeFigures {
  int position = 0;
  std::string root;
  uint32_t blocks = 256;  // what a volume that is not asked reports
  uint32_t blockSize = 128 * 64;
  uint32_t freeBlocks = 0;
};

int CurrentDrive() {
  PathVolume v = VolumeOfDosPath(ProcessCurrentDirectory());
  return v.kind == PathVolume::kDrive ? v.drive : -1;
}

// ioVolIndex > 0: by position; 0: the volume of ioVRefNum (a working
// directory's, the current directory's for 0); < 0: the volume of the path
// in ioNamePtr.
OSErr FindVolume(SInt16 volIndex, SInt16 vRefNum, ConstStr255Param name, VolumeFigures* out) {
  SInt16 volume;
  if (volIndex > 0) {
    volume = static_cast<SInt16>(-volIndex);
  } else if (volIndex == 0) {
    DirectoryRef ref;
    volume = ResolveVRefNum(vRefNum, &ref) ? VolumeOfDirectory(ref) : kNoVolume;
  } else {
    volume = VolumeRefNumOfPath(MacNameToAnsi(name));
  }
  const Volume* v = IsVolumeRefNum(volume) ? VolumeAt(-volume) : nullptr;
  if (!v) return nsvErr;
  out->position = -volume;
  out->root = v->root;
  // Floppy and CD drives are only asked when the host wants it: asking an
  // empty one is slow, and on old systems it asked the user for a disk.
  bool drive = v->code < 26;
  bool ask = drive && (kwe::SessionFlag(kweFlagAllDrivesInfo) || v->driveType == DRIVE_FIXED ||
                       v->driveType == DRIVE_REMOTE || v->code == CurrentDrive());
  if (!ask) return noErr;
  DWORD sectorsPerCluster, bytesPerSector, freeClusters, clusters;
  UINT previous = SetErrorMode(SEM_FAILCRITICALERRORS);
  BOOL ready = GetDiskFreeSpaceA(v->root.c_str(), &sectorsPerCluster, &bytesPerSector,
                                 &freeClusters, &clusters);
  SetErrorMode(previous);
  if (!ready) return nsvErr;
  out->blocks = clusters;
  out->freeBlocks = freeClusters;
  out->blockSize = bytesPerSector * sectorsPerCluster;
  FitBlockCounts(&out->blocks, &out->freeBlocks, &out->blockSize);
  return noErr;
}

template <class Fields>
void FillVolumeFields(Fields& p, const VolumeFigures& v, bool nameIsInput) {
  p.ioVRefNum = static_cast<SInt16>(-v.position);
  if (p.ioNamePtr && !nameIsInput) AnsiNameToMac(v.root, p.ioNamePtr, 27);
  p.ioVCrDate = 0;
  p.ioVAtrb = 0;
  p.ioVNmFls = 0;
  p.ioVNmAlBlks = static_cast<UInt16>(v.blocks);
  p.ioVAlBlkSiz = static_cast<SInt32>(v.blockSize);
  p.ioVClpSiz = static_cast<SInt32>(v.blockSize);
  p.ioAlBlSt = 0;
  p.ioVFrBlk = static_cast<UInt16>(v.freeBlocks);
}

OSErr FlushVolume(ConstStr255Param volName, SInt16 vRefNum) {
  SInt16 volume;
  if (volName && volName[0]) {
    volume = VolumeRefNumOfPath(MacNameToAnsi(volName));
  } else {
    DirectoryRef ref;
    volume = ResolveVRefNum(vRefNum, &ref) ? VolumeOfDirectory(ref) : kNoVolume;
  }
  std::string root;
  if (!VolumeRoot(volume, &root)) return nsvErr;
  std::string prefix = FoldedForCompare(root);
  OSErr err = noErr;
  for (SInt16 slot = kFirstSlot; slot < kSlotCount; ++slot) {
    const std::string* path = SlotPath(slot);
    if (!path || !SlotMayWrite(slot) || FoldedForCompare(*path).compare(0, prefix.size(), prefix))
      continue;
    if (!FlushSlot(slot)) err = ioErr;
  }
  return err;
}

}  // namespace

KWE_API OSErr KWE_CALL PBGetVInfo(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  VolumeParam& p = pb->volumeParam;
  VolumeFigures v;
  OSErr err = FindVolume(p.ioVolIndex, p.ioVRefNum, p.ioNamePtr, &v);
  if (err == noErr) FillVolumeFields(p, v, p.ioVolIndex < 0);
  return Finish(&p, err);
}

KWE_API OSErr KWE_CALL PBHGetVInfo(HParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  HVolumeParam& p = pb->volumeParam;
  VolumeFigures v;
  OSErr err = FindVolume(p.ioVolIndex, p.ioVRefNum, p.ioNamePtr, &v);
  if (err == noErr) {
    FillVolumeFields(p, v, p.ioVolIndex < 0);
    p.ioVLsMod = 0;
    p.ioVSigWord = 0x4244;  // 'BD', an HFS volume
    p.ioVDrvInfo = static_cast<SInt16>(v.position);
    p.ioVDRefNum = static_cast<SInt16>(-v.position);
    p.ioVFSID = 0;
  }
  return Finish(&p, err);
}

KWE_API OSErr KWE_CALL GetVInfo(SInt16 drvNum, StringPtr volName, SInt16* vRefNum,
                                SInt32* freeBytes) {
  ParamBlockRec pb{};
  VolumeParam& p = pb.volumeParam;
  p.ioVolIndex = static_cast<SInt16>(drvNum < 0 ? -drvNum : drvNum);
  p.ioNamePtr = volName;
  if (drvNum == 0) {
    SInt16 current = MakeCurrentDirectory(std::string());
    if (vRefNum) *vRefNum = current;
  }
  p.ioVRefNum = vRefNum ? *vRefNum : 0;
  OSErr err = PBGetVInfo(&pb, false);
  if (err != noErr) return err;
  if (vRefNum) *vRefNum = p.ioVRefNum;
  if (freeBytes) {
    uint64_t bytes = uint64_t(p.ioVFrBlk) * uint32_t(p.ioVAlBlkSiz);
    *freeBytes = bytes > 0x7FFFFFFF ? 0x7FFFFFFF : static_cast<SInt32>(bytes);
  }
  return noErr;
}

KWE_API OSErr KWE_CALL GetVRefNum(SInt16 refNum, SInt16* vRefNum) {
  const std::string* path = SlotPath(refNum);
  if (!path) return rfNumErr;
  if (vRefNum) *vRefNum = VolumeRefNumOfPath(*path);
  return noErr;
}

KWE_API SInt16 KWE_CALL DIBadMount(Point, SInt32) { return 0; }

// A version-1 buffer with no attribute set: no volume offers any of the
// optional HFS services.
KWE_API OSErr KWE_CALL PBHGetVolParms(HParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  HIOParam& io = pb->ioParam;
  if (!io.ioBuffer || io.ioReqCount < 6) return Finish(&io, -1);
  // 20 bytes in the 32-bit build; the handle field widens on 64-bit hosts.
  SInt32 count = io.ioReqCount < SInt32(sizeof(GetVolParmsInfoBuffer))
                     ? io.ioReqCount
                     : SInt32(sizeof(GetVolParmsInfoBuffer));
  std::memset(io.ioBuffer, 0, static_cast<size_t>(count));
  const SInt16 version = 1;
  std::memcpy(io.ioBuffer, &version, sizeof version);
  io.ioActCount = count;
  return Finish(&io, noErr);
}

KWE_API OSErr KWE_CALL PBFlushVol(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  return Finish(&pb->ioParam, FlushVolume(pb->ioParam.ioNamePtr, pb->ioParam.ioVRefNum));
}

KWE_API OSErr KWE_CALL FlushVol(ConstStr255Param volName, SInt16 vRefNum) {
  return FlushVolume(volName, vRefNum);
}

KWE_API OSErr KWE_CALL PBGetFCBInfo(FCBPBPtr pb, Boolean) {
  if (!pb) return paramErr;
  SInt16 refNum = pb->ioRefNum;
  if (!IsSlotOpenNow(refNum)) return Finish(pb, fnOpnErr);
  SplitPath parts = SplitAtLastSeparator(*SlotPath(refNum));
  SInt16 volume, number;
  SInt32 dirID = DirectoryIDForPath(parts.directory, &volume, &number);
  pb->ioFCBVRefNum = dirID == kRootDirID ? volume : number;
  pb->ioFCBParID = dirID;
  pb->ioVRefNum = volume;
  if (pb->ioNamePtr) AnsiNameToMac(parts.name, pb->ioNamePtr, 63);
  SInt32 mark = SeekSlot(refNum, 0, 1);
  SInt32 end = SeekSlot(refNum, 0, 2);
  SeekSlot(refNum, mark, 0);
  pb->ioFCBEOF = end;
  pb->ioFCBPLen = end;
  pb->ioFCBCrPs = mark;
  pb->ioFCBFlags = SlotMayWrite(refNum) ? 0x0100 : 0;  // bit 8: the file can be written
  pb->ioFCBStBlk = 0;
  pb->ioFCBClpSiz = 0;
  pb->ioFCBFlNm = 0;
  return Finish(pb, noErr);
}
