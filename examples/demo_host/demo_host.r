/* demo_host.RSR, the demonstration host's application resource file: it sits
   beside demo_host.exe, where InitResources looks for the host module's name
   with ".RSR". Compiled by kwerez at build time. */
#include "Types.r"

resource 'STR ' (128, "Greeting") {
	"Hello from demo_host.RSR"
};

resource 'STR#' (128, "Tour") {
	{	/* array StringArray: 3 elements */
		/* [1] */
		"Strings come from a 'STR#' list";
		/* [2] */
		"converted to native order when loaded";
		/* [3] */
		"and kept by the Resource Manager";
	}
};

/* An 8 x 8 pattern of diagonal stripes. */
resource 'PAT ' (128, "Stripes", purgeable) {
	$"8040 2010 0804 0201"
};

resource 'PAT#' (128, "Tiles") {
	{	/* array Patterns: 3 elements */
		/* [1] */
		$"8142 2418 1824 4281";
		/* [2] */
		$"F0F0 F0F0 0F0F 0F0F";
		/* [3] */
		$"FF80 8080 FF08 0808";
	}
};

resource 'TEXT' (128) {
	"A Macintosh program keeps its strings, patterns and text in reso"
	"urces.\n"
};

/* The menu bar: an Apple menu, File and Edit with command keys, a Style menu
   with a checked item, styled items and a Size submenu (key 0x1B, mark 132). */
resource 'MENU' (128) {
	128,
	textMenuProc,
	allEnabled,
	enabled,
	appleMenuTitle,
	{	/* array Items: 1 elements */
		/* [1] */
		"About Toolbox Tour\0xC9",
		noIcon,
		noKey,
		noMark,
		plain;
	}
};

resource 'MENU' (129) {
	129,
	textMenuProc,
	0x7FFFFFFB,
	enabled,
	"File",
	{	/* array Items: 4 elements */
		/* [1] */
		"New",
		noIcon,
		"N",
		noMark,
		plain;
		/* [2] */
		"Open\0xC9",
		noIcon,
		"O",
		noMark,
		plain;
		/* [3] */
		"-",
		noIcon,
		noKey,
		noMark,
		plain;
		/* [4] */
		"Quit",
		noIcon,
		"Q",
		noMark,
		plain;
	}
};

resource 'MENU' (130) {
	130,
	textMenuProc,
	0x7FFFFFFD,
	enabled,
	"Edit",
	{	/* array Items: 5 elements */
		/* [1] */
		"Undo",
		noIcon,
		"Z",
		noMark,
		plain;
		/* [2] */
		"-",
		noIcon,
		noKey,
		noMark,
		plain;
		/* [3] */
		"Cut",
		noIcon,
		"X",
		noMark,
		plain;
		/* [4] */
		"Copy",
		noIcon,
		"C",
		noMark,
		plain;
		/* [5] */
		"Paste",
		noIcon,
		"V",
		noMark,
		plain;
	}
};

resource 'MENU' (131) {
	131,
	textMenuProc,
	allEnabled,
	enabled,
	"Style",
	{	/* array Items: 5 elements */
		/* [1] */
		"Plain Text",
		noIcon,
		"T",
		check,
		plain;
		/* [2] */
		"Bold",
		noIcon,
		"B",
		noMark,
		bold;
		/* [3] */
		"Italic",
		noIcon,
		"I",
		noMark,
		italic;
		/* [4] */
		"-",
		noIcon,
		noKey,
		noMark,
		plain;
		/* [5] */
		"Size",
		noIcon,
		hierarchicalMenu,
		"\0x84",
		plain;
	}
};

resource 'MENU' (132) {
	132,
	textMenuProc,
	allEnabled,
	enabled,
	"Size",
	{	/* array Items: 3 elements */
		/* [1] */
		"9 Point",
		noIcon,
		noKey,
		noMark,
		plain;
		/* [2] */
		"12 Point",
		noIcon,
		noKey,
		check,
		plain;
		/* [3] */
		"18 Point",
		noIcon,
		noKey,
		noMark,
		plain;
	}
};

resource 'MENU' (140) {
	140,
	textMenuProc,
	allEnabled,
	enabled,
	"Sizes",
	{	/* array Items: 3 elements */
		/* [1] */
		"A4",
		noIcon,
		noKey,
		noMark,
		plain;
		/* [2] */
		"Letter",
		noIcon,
		noKey,
		noMark,
		plain;
		/* [3] */
		"Legal",
		noIcon,
		noKey,
		noMark,
		plain;
	}
};

resource 'MBAR' (128) {
	{	/* array MenuIDs: 4 elements */
		/* [1] */
		128;
		/* [2] */
		129;
		/* [3] */
		130;
		/* [4] */
		131;
	}
};

/* The dialogs: the About alert (a note alert over 'DITL' 128, shown at every
   stage with one beep the first time) and the settings dialog, whose 'KWED'
   makes item 12 a pop-up list, gives mnemonics and groups the radio
   buttons. */
resource 'ALRT' (128) {
	{60, 80, 180, 420},
	128,
	{	/* array: 4 elements */
		/* [1] */
		OK,
		visible,
		silent;
		/* [2] */
		OK,
		visible,
		silent;
		/* [3] */
		OK,
		visible,
		silent;
		/* [4] */
		OK,
		visible,
		sound1;
	}
};

resource 'DITL' (128) {
	{	/* array Items: 2 elements */
		/* [1] */
		{84, 250, 104, 330},
		Button {
			enabled,
			"OK"
		};
		/* [2] */
		{16, 60, 70, 330},
		StaticText {
			enabled,
			"^0: a Macintosh program on Windows, through KWEJMP."
		};
	}
};

resource 'DITL' (300) {
	{	/* array Items: 12 elements */
		/* [1] */
		{194, 250, 214, 330},
		Button {
			enabled,
			"OK"
		};
		/* [2] */
		{194, 150, 214, 230},
		Button {
			enabled,
			"Cancel"
		};
		/* [3] */
		{14, 16, 30, 80},
		StaticText {
			enabled,
			"Name:"
		};
		/* [4] */
		{12, 86, 28, 320},
		EditText {
			enabled,
			"Untitled"
		};
		/* [5] */
		{44, 16, 60, 200},
		CheckBox {
			enabled,
			"Wrap lines"
		};
		/* [6] */
		{64, 16, 80, 200},
		CheckBox {
			enabled,
			"Save every minute"
		};
		/* [7] */
		{92, 16, 108, 120},
		StaticText {
			enabled,
			"Type size:"
		};
		/* [8] */
		{112, 26, 128, 120},
		RadioButton {
			enabled,
			"Small"
		};
		/* [9] */
		{132, 26, 148, 120},
		RadioButton {
			enabled,
			"Medium"
		};
		/* [10] */
		{152, 26, 168, 120},
		RadioButton {
			enabled,
			"Large"
		};
		/* [11] */
		{92, 180, 108, 260},
		StaticText {
			enabled,
			"Page size:"
		};
		/* [12] */
		{112, 180, 132, 320},
		UserItem {
			enabled
		};
	}
};

resource 'DLOG' (300) {
	{50, 60, 280, 400},
	dBoxProc,
	invisible,
	noGoAway,
	0x00000000,
	300,
	"Settings"
};

resource 'KWED' (300) {
	0,
	standardFont,
	tabByItems,
	keepOKCancel,
	{	/* array Entries: 7 elements */
		/* [1] */
		3,
		4,
		"N",
		noGroup,
		singleLine,
		notCombo;
		/* [2] */
		5,
		5,
		"W",
		noGroup,
		singleLine,
		notCombo;
		/* [3] */
		6,
		6,
		"S",
		noGroup,
		singleLine,
		notCombo;
		/* [4] */
		8,
		8,
		noMnemonic,
		1,
		singleLine,
		notCombo;
		/* [5] */
		9,
		9,
		noMnemonic,
		1,
		singleLine,
		notCombo;
		/* [6] */
		10,
		10,
		noMnemonic,
		1,
		singleLine,
		notCombo;
		/* [7] */
		12,
		12,
		noMnemonic,
		noGroup,
		singleLine,
		comboBox;
	}
};
