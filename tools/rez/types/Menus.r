/* Menus and menu bars (GetMenu, GetNewMBar). */
#ifndef __KWE_MENUS_R__
#define __KWE_MENUS_R__

type 'MENU' {
	integer;                                    /* menu ID */
	fill word[2];                               /* width and height: calculated */
	integer textMenuProc = 0;                   /* 'MDEF' ID of the definition */
	fill word;
	/* enableFlags: bit n enables item n, bit 0 the menu itself */
	unsigned hex bitstring[31] allEnabled = 0x7FFFFFFF, allDisabled = 0;
	boolean disabled = 0, enabled = 1;
	pstring appleMenuTitle = "\0x14";           /* title */
	wide array Items {
		pstring;                                /* item text; "-" is a divider */
		byte noIcon = 0;                        /* icon: 'ICON' ID minus 256 */
		char noKey = "\0x00", hierarchicalMenu = "\0x1B", smallIcon = "\0x1E";
		char noMark = "\0x00", check = "\0x12"; /* or the submenu's ID */
		unsigned hex byte plain = 0, bold = 1, italic = 2, underline = 4,
			outline = 8, shadow = 16, condense = 32, extend = 64;
	};
	byte = 0;
};

type 'MBAR' {
	integer = $$Countof(MenuIDs);
	array MenuIDs {
		integer;                                /* 'MENU' ID */
	};
};

#endif
