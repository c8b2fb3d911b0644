/* Patterns, cursors and colour tables. */
#ifndef __KWE_QUICKDRAW_R__
#define __KWE_QUICKDRAW_R__

/* An 8 x 8 pattern, one byte per row. */
type 'PAT ' {
	hex string[8];
};

type 'PAT#' {
	integer = $$Countof(Patterns);
	array Patterns {
		hex string[8];
	};
};

/* A 16 x 16 cursor: image, mask, hot spot (v, h). */
type 'CURS' {
	hex string[32];
	hex string[32];
	point;
};

/* An animated cursor: the 'CURS' IDs of its frames. */
type 'acur' {
	integer = $$Countof(Frames);
	fill word;                                  /* frame in use: run time */
	array Frames {
		integer;                                /* 'CURS' ID */
		fill word;
	};
};

/* A colour table (GetCTable): seed, flags (0x8000 for a device's table),
   and entries of (value, red, green, blue). */
type 'clut' {
	unsigned hex longint;                       /* ctSeed */
	unsigned hex integer;                       /* ctFlags */
	integer = $$Countof(ColorSpecs) - 1;
	wide array ColorSpecs {
		integer;                                /* value */
		unsigned hex integer;                   /* red */
		unsigned hex integer;                   /* green */
		unsigned hex integer;                   /* blue */
	};
};

/* Window and dialog colour tables have the colour table's layout. */
type 'wctb' as 'clut';
type 'dctb' as 'clut';

#endif
