/* editor.RSR: the menus, the document window, the alerts and the Find
   dialog. */
#include "Types.r"

resource 'MBAR' (128) {
	{ 128; 129; 130; 131; 132; 133; }
};

resource 'MENU' (128) {
	128, textMenuProc, allEnabled, enabled, appleMenuTitle,
	{
		"About Editor\0xC9", noIcon, noKey, noMark, plain;
	}
};

resource 'MENU' (129) {
	129, textMenuProc, 0x7FFFFFDF, enabled, "File",
	{
		"New", noIcon, "N", noMark, plain;
		"Open\0xC9", noIcon, "O", noMark, plain;
		"Close", noIcon, "W", noMark, plain;
		"Save", noIcon, "S", noMark, plain;
		"Save As\0xC9", noIcon, noKey, noMark, plain;
		"-", noIcon, noKey, noMark, plain;
		"Quit", noIcon, "Q", noMark, plain;
	}
};

resource 'MENU' (130) {
	130, textMenuProc, 0x7FFFF6BC, enabled, "Edit",
	{
		"Undo", noIcon, "Z", noMark, plain;
		"-", noIcon, noKey, noMark, plain;
		"Cut", noIcon, "X", noMark, plain;
		"Copy", noIcon, "C", noMark, plain;
		"Paste", noIcon, "V", noMark, plain;
		"Clear", noIcon, noKey, noMark, plain;
		"-", noIcon, noKey, noMark, plain;
		"Select All", noIcon, "A", noMark, plain;
		"-", noIcon, noKey, noMark, plain;
		"Find\0xC9", noIcon, "F", noMark, plain;
		"Find Again", noIcon, "G", noMark, plain;
		"-", noIcon, noKey, noMark, plain;
		"Preferences\0xC9", noIcon, noKey, noMark, plain;
	}
};

resource 'MENU' (131) {
	131, textMenuProc, allEnabled, enabled, "Font",
	{
	}
};

resource 'MENU' (132) {
	132, textMenuProc, allEnabled, enabled, "Size",
	{
		"9 Point", noIcon, noKey, noMark, plain;
		"10 Point", noIcon, noKey, noMark, plain;
		"12 Point", noIcon, noKey, noMark, plain;
		"14 Point", noIcon, noKey, noMark, plain;
		"18 Point", noIcon, noKey, noMark, plain;
		"24 Point", noIcon, noKey, noMark, plain;
	}
};

resource 'MENU' (133) {
	133, textMenuProc, allEnabled, enabled, "Style",
	{
		"Plain Text", noIcon, "T", noMark, plain;
		"Bold", noIcon, "B", noMark, bold;
		"Italic", noIcon, "I", noMark, italic;
		"Underline", noIcon, "U", noMark, underline;
		"Outline", noIcon, noKey, noMark, outline;
		"Shadow", noIcon, noKey, noMark, shadow;
	}
};

resource 'WIND' (128) {
	{40, 40, 300, 440}, zoomDocProc, invisible, goAway, 0x0, "Untitled"
};

resource 'ALRT' (128) {
	{60, 80, 160, 400}, 128,
	{ OK, visible, silent; OK, visible, silent; OK, visible, silent; OK, visible, silent; }
};

resource 'DITL' (128) {
	{
		{64, 230, 84, 300}, Button { enabled, "OK" };
		{10, 60, 50, 300}, StaticText { disabled, "Editor: a TextEdit document editor." };
	}
};

resource 'ALRT' (129) {
	{60, 80, 160, 400}, 129,
	{ OK, visible, sound1; OK, visible, sound1; OK, visible, sound1; OK, visible, sound1; }
};

resource 'DITL' (129) {
	{
		{64, 230, 84, 300}, Button { enabled, "OK" };
		{10, 60, 50, 300}, StaticText { disabled, "^0^1^2" };
	}
};

resource 'ALRT' (130) {
	{60, 60, 170, 420}, 130,
	{ OK, visible, silent; OK, visible, silent; OK, visible, silent; OK, visible, silent; }
};

resource 'DITL' (130) {
	{
		{76, 280, 96, 350}, Button { enabled, "Save" };
		{76, 196, 96, 266}, Button { enabled, "Cancel" };
		{76, 12, 96, 112}, Button { enabled, "Don't Save" };
		{10, 60, 60, 350}, StaticText { disabled, "Save changes to \"^0\" before closing?" };
	}
};

resource 'DLOG' (200) {
	{60, 60, 190, 400}, dBoxProc, invisible, noGoAway, 0x0, 200, "Find"
};

resource 'DITL' (200) {
	{
		{98, 250, 118, 320}, Button { enabled, "Find" };
		{98, 166, 118, 236}, Button { enabled, "Cancel" };
		{12, 90, 28, 320}, EditText { enabled, "" };
		{12, 12, 28, 84}, StaticText { disabled, "Find what:" };
		{40, 12, 58, 200}, CheckBox { enabled, "Case Sensitive" };
		{64, 12, 82, 200}, CheckBox { enabled, "Wrap Around" };
	}
};

resource 'DLOG' (201) {
	{60, 60, 230, 330}, dBoxProc, invisible, noGoAway, 0x0, 201, "Preferences"
};

resource 'DITL' (201) {
	{
		{136, 180, 156, 250}, Button { enabled, "OK" };
		{136, 96, 156, 166}, Button { enabled, "Cancel" };
		{12, 12, 28, 250}, StaticText { disabled, "Text size for new windows:" };
		{36, 12, 124, 180}, UserItem { enabled };
	}
};

/* The error alert's sentences: a file's name or an error's number goes
   between two of them. */
resource 'STR#' (128, "Messages") {
	{
		"Editor could not do that (error ";
		").";
		"\"";
		"\" is no longer there. Save As can save the text elsewhere.";
		"\" is locked. Save As can save a copy of it.";
		"\" is empty: it has no text.";
		"\" is longer than the 32,000 characters a window of Editor holds.";
		"\" is not a text file.";
		"The clipboard holds no text to paste.";
	}
};
