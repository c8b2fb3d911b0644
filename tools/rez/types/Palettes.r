/* Palettes (GetNewPalette). */
#ifndef __KWE_PALETTES_R__
#define __KWE_PALETTES_R__

type 'pltt' {
	integer = $$Countof(ColorInfo);
	fill byte[14];                              /* kept by the Palette Manager */
	wide array ColorInfo {
		unsigned hex integer;                   /* red */
		unsigned hex integer;                   /* green */
		unsigned hex integer;                   /* blue */
		unsigned hex integer pmCourteous = 0, pmTolerant = 2, pmAnimated = 4,
			pmExplicit = 8;                     /* usage */
		unsigned hex integer;                   /* tolerance */
		fill byte[6];                           /* private */
	};
};

#endif
