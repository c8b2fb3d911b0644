/* Window templates (GetNewWindow, GetNewCWindow). */
#ifndef __KWE_MACWINDOWS_R__
#define __KWE_MACWINDOWS_R__

type 'WIND' {
	rect;                                       /* bounds, global coordinates */
	integer documentProc = 0, dBoxProc = 1, plainDBox = 2, altDBoxProc = 3,
		noGrowDocProc = 4, movableDBoxProc = 5, zoomDocProc = 8,
		zoomNoGrow = 12, rDocProc = 16;
	byte invisible = 0, visible = 1;
	fill byte;
	byte noGoAway = 0, goAway = 1;
	fill byte;
	unsigned hex longint;                       /* refCon */
	pstring untitled = "Untitled";              /* title */
};

#endif
