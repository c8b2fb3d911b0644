/* Window templates (GetNewWindow, GetNewCWindow). */
#ifndef __KWE_MACWINDOWS_R__
#define __KWE_MACWINDOWS_R__

/* What a 'WIND' and a 'DLOG' both begin with: bounds in global
   coordinates, the window definition's procID, visible, goAway, refCon. */
#define KWE_WINDOW_TEMPLATE_FIELDS \
	rect; \
	integer documentProc = 0, dBoxProc = 1, plainDBox = 2, altDBoxProc = 3, \
		noGrowDocProc = 4, movableDBoxProc = 5, zoomDocProc = 8, \
		zoomNoGrow = 12, rDocProc = 16; \
	byte invisible = 0, visible = 1; \
	fill byte; \
	byte noGoAway = 0, goAway = 1; \
	fill byte; \
	unsigned hex longint;

type 'WIND' {
	KWE_WINDOW_TEMPLATE_FIELDS
	pstring untitled = "Untitled";              /* title */
};

#endif
