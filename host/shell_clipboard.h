// The clipboard procedure's formats, one file each: 'TEXT' against CF_TEXT,
// 'PICT' against CF_ENHMETAFILE. The Put functions answer whether the data
// went onto the clipboard; the Get functions the length written into
// destination (only measured when it is null), or an error.
#pragma once
#include <windows.h>

#include "MacTypes.h"
#include "Scrap.h"

namespace kwe::host {

bool PutText(const UInt8* source, SInt32 length);
SInt32 GetText(Handle destination);

// dc is the current port's, the metafile's reference device.
bool PutPicture(HDC dc, const UInt8* source, SInt32 length);
// noTypeErr when the metafile on the clipboard holds no picture of ours.
SInt32 GetPicture(Handle destination);

}  // namespace kwe::host
