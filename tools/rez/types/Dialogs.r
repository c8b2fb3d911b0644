/* Dialog and alert templates and their item lists (GetNewDialog, Alert). */
#ifndef __KWE_DIALOGS_R__
#define __KWE_DIALOGS_R__

#include "MacWindows.r"

type 'DLOG' {
	KWE_WINDOW_TEMPLATE_FIELDS
	integer;                                    /* 'DITL' ID of the items */
	pstring;                                    /* title */
};

/* Each item: a handle slot the Dialog Manager fills, the display
   rectangle, the type byte (bit 7 disables the item), then the item's data,
   counted by a length byte and padded to an even length. */
type 'DITL' {
	integer = $$Countof(Items) - 1;
	array Items {
		fill long;
		rect;
		switch {
		case Button:
			boolean enabled = 0, disabled = 1;
			key bitstring[7] = 4;
			pstring;                            /* title */
		case CheckBox:
			boolean enabled = 0, disabled = 1;
			key bitstring[7] = 5;
			pstring;
		case RadioButton:
			boolean enabled = 0, disabled = 1;
			key bitstring[7] = 6;
			pstring;
		case Control:
			boolean enabled = 0, disabled = 1;
			key bitstring[7] = 7;
			byte = 2;
			integer;                            /* 'CNTL' ID */
		case StaticText:
			boolean enabled = 0, disabled = 1;
			key bitstring[7] = 8;
			pstring;                            /* text; ^0 to ^3 take ParamText */
		case EditText:
			boolean enabled = 0, disabled = 1;
			key bitstring[7] = 16;
			pstring;                            /* initial text */
		case Icon:
			boolean enabled = 0, disabled = 1;
			key bitstring[7] = 32;
			byte = 2;
			integer;                            /* 'cicn' or 'ICON' ID */
		case Picture:
			boolean enabled = 0, disabled = 1;
			key bitstring[7] = 64;
			byte = 2;
			integer;                            /* 'PICT' ID */
		case UserItem:
			boolean enabled = 0, disabled = 1;
			key bitstring[7] = 0;
			byte = 0;
		case OtherItem:                         /* any other type, kept as it is */
			boolean enabled = 0, disabled = 1;
			unsigned bitstring[7];
			hex pstring;
		};
		align word;
	};
};

/* The stage word holds four stages of four bits, stage 4 first: whether
   item 2 (rather than item 1) is the default, whether the alert is shown,
   and how many times it beeps. */
type 'ALRT' {
	rect;                                       /* bounds, global coordinates */
	integer;                                    /* 'DITL' ID of the items */
	wide array [4] {
		boolean OK = 0, Cancel = 1;
		boolean invisible = 0, visible = 1;
		unsigned bitstring[2] silent = 0, sound1 = 1, sound2 = 2, sound3 = 3;
	};
};

#endif
