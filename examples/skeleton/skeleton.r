/* skeleton.RSR: the menu bar, the document window and the alerts. */
#include "Types.r"

resource 'MBAR' (128) {
	{ 128; 129; 130; }
};

resource 'MENU' (128) {
	128, textMenuProc, allEnabled, enabled, appleMenuTitle,
	{
		"About Skeleton\0xC9", noIcon, noKey, noMark, plain;
	}
};

resource 'MENU' (129) {
	129, textMenuProc, 0x7FFFFFFB, enabled, "File",
	{
		"New", noIcon, "N", noMark, plain;
		"Close", noIcon, "W", noMark, plain;
		"-", noIcon, noKey, noMark, plain;
		"Quit", noIcon, "Q", noMark, plain;
	}
};

resource 'MENU' (130) {
	130, textMenuProc, 0x7FFFFFFD, enabled, "Edit",
	{
		"Undo", noIcon, "Z", noMark, plain;
		"-", noIcon, noKey, noMark, plain;
		"Cut", noIcon, "X", noMark, plain;
		"Copy", noIcon, "C", noMark, plain;
		"Paste", noIcon, "V", noMark, plain;
		"Clear", noIcon, noKey, noMark, plain;
	}
};

resource 'WIND' (128) {
	{40, 40, 240, 340}, zoomDocProc, invisible, goAway, 0x0, "Untitled"
};

resource 'ALRT' (128) {
	{60, 80, 160, 400}, 128,
	{ OK, visible, silent; OK, visible, silent; OK, visible, silent; OK, visible, silent; }
};

resource 'DITL' (128) {
	{
		{64, 230, 84, 300}, Button { enabled, "OK" };
		{10, 60, 50, 300}, StaticText { disabled, "Skeleton: a Macintosh application on Windows." };
	}
};

resource 'ALRT' (129) {
	{60, 80, 160, 400}, 129,
	{ OK, visible, sound1; OK, visible, sound1; OK, visible, sound1; OK, visible, sound1; }
};

resource 'DITL' (129) {
	{
		{64, 230, 84, 300}, Button { enabled, "OK" };
		{10, 60, 50, 300}, StaticText { disabled, "Skeleton cannot go on (error ^0)." };
	}
};
