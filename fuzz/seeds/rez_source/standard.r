#define ID 128
resource 'MENU' (ID, "File", purgeable) { ID, textMenuProc, allEnabled, enabled, "File",
	{ "New", noIcon, "N", noMark, plain; "-", noIcon, noKey, noMark, plain } };
resource 'DITL' (ID) { { {10, 10, 30, 70}, Button { enabled, "OK" };
	{40, 10, 56, 200}, StaticText { disabled, "Hello" }; {60, 10, 76, 200}, Control { enabled, 130 } } };
resource 'ALRT' (ID) { {100, 100, 200, 400}, ID, { OK, visible, sound1; OK, visible, sound1;
	Cancel, visible, silent; Cancel, invisible, sound3 } };
resource 'BNDL' (ID) { 'KWEA', 0, { 'ICN#', { 0, 128; 1, 129 }; 'FREF', { 0, 128 } } };
resource 'clut' (ID) { 0, 0x8000, { 0, 0xFFFF, 0xFFFF, 0xFFFF; 1, 0, 0, 0 } };
data 'XYZW' (1, "raw", locked, 0x81) { $"0102 0304" "text" };
