/* Black-and-white icons. */
#ifndef __KWE_ICONS_R__
#define __KWE_ICONS_R__

/* 32 x 32, four bytes per row. */
type 'ICON' {
	hex string[128];
};

/* An icon list: the icon, then its mask. */
type 'ICN#' {
	array {
		hex string[128];
	};
};

/* 16 x 16 small icons, two bytes per row, as many as the resource holds. */
type 'SICN' {
	array {
		hex string[32];
	};
};

#endif
