/* Help Manager. Balloon help has no Windows counterpart; the calls are
   silent, since applications call them routinely: the Help menu is nil,
   balloons are off and never showing, and no output parameter is written. */
#ifndef KWE_BALLOONS_H
#define KWE_BALLOONS_H

#include "MacTypes.h"

typedef struct HMMessageRecord HMMessageRecord, *HMMessageRecPtr;

KWE_API OSErr KWE_CALL HMGetHelpMenuHandle(MenuHandle* mh);
KWE_API OSErr KWE_CALL HMShowBalloon(const HMMessageRecord* aHelpMsg, Point tip,
                                     Rect* alternateRect, Ptr tipProc, SInt16 theProc,
                                     SInt16 balloonVariant, SInt16 method);
KWE_API OSErr KWE_CALL HMRemoveBalloon(void);
KWE_API OSErr KWE_CALL HMGetIndHelpMsg(ResType whichType, SInt16 whichResID, SInt16 whichMsg,
                                       SInt16 whichState, UInt32* options, Point* tip,
                                       Rect* altRect, SInt16* theProc, SInt16* variant,
                                       HMMessageRecord* aHelpMsg, SInt16* count);
KWE_API Boolean KWE_CALL HMGetBalloons(void);
KWE_API Boolean KWE_CALL HMIsBalloon(void);

#endif
