/* Strings and text. */
#ifndef __KWE_MACTYPES_R__
#define __KWE_MACTYPES_R__

/* One Pascal string (GetString). */
type 'STR ' {
	pstring;
};

/* A list of Pascal strings, counted (GetIndString). */
type 'STR#' {
	integer = $$Countof(StringArray);
	array StringArray {
		pstring;
	};
};

/* Plain text, as many bytes as the resource holds. */
type 'TEXT' {
	string;
};

/* TextEdit style runs (StScrpRec): one ScrpSTElement per run. */
type 'styl' {
	integer = $$Countof(StyleRuns);
	array StyleRuns {
		longint;                                /* first character of the run */
		integer;                                /* line height */
		integer;                                /* font ascent */
		integer;                                /* font family */
		unsigned hex byte plain = 0, bold = 1, italic = 2, underline = 4,
			outline = 8, shadow = 16, condense = 32, extend = 64;
		fill byte;
		integer;                                /* point size */
		unsigned hex integer;                   /* red */
		unsigned hex integer;                   /* green */
		unsigned hex integer;                   /* blue */
	};
};

#endif
