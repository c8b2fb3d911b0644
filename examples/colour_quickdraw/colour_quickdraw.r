/* colour_quickdraw.RSR: the menu bar and the alerts. */
#include "Types.r"

resource 'MBAR' (128) {
	{ 128; 129; 130; }
};

resource 'MENU' (128) {
	128, textMenuProc, allEnabled, enabled, appleMenuTitle,
	{
		"About Colour QuickDraw\0xC9", noIcon, noKey, noMark, plain;
	}
};

resource 'MENU' (129) {
	129, textMenuProc, allEnabled, enabled, "File",
	{
		"Quit", noIcon, "Q", noMark, plain;
	}
};

resource 'MENU' (130) {
	130, textMenuProc, allEnabled, enabled, "Colour",
	{
		"Spectrum", noIcon, "1", noMark, plain;
		"Greys", noIcon, "2", noMark, plain;
	}
};

resource 'ALRT' (128) {
	{60, 80, 160, 400}, 128,
	{ OK, visible, silent; OK, visible, silent; OK, visible, silent; OK, visible, silent; }
};

resource 'DITL' (128) {
	{
		{64, 230, 84, 300}, Button { enabled, "OK" };
		{10, 60, 50, 300}, StaticText { disabled, "Colour QuickDraw on Windows." };
	}
};

resource 'ALRT' (129) {
	{60, 80, 160, 400}, 129,
	{ OK, visible, sound1; OK, visible, sound1; OK, visible, sound1; OK, visible, sound1; }
};

resource 'DITL' (129) {
	{
		{64, 230, 84, 300}, Button { enabled, "OK" };
		{10, 60, 50, 300}, StaticText { disabled, "This program needs Colour QuickDraw." };
	}
};
