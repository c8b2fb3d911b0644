/* Control templates (GetNewControl). */
#ifndef __KWE_CONTROLS_R__
#define __KWE_CONTROLS_R__

type 'CNTL' {
	rect;                                       /* bounds, local coordinates */
	integer;                                    /* value */
	byte invisible = 0, visible = 1;
	fill byte;
	integer;                                    /* maximum */
	integer;                                    /* minimum */
	integer pushButProc = 0, checkBoxProc = 1, radioButProc = 2,
		useWFont = 8, scrollBarProc = 16, popupMenuProc = 1008;
	unsigned hex longint;                       /* refCon */
	pstring;                                    /* title */
};

#endif
