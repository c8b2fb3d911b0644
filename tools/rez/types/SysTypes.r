/* Version resources. */
#ifndef __KWE_SYSTYPES_R__
#define __KWE_SYSTYPES_R__

/* 'vers' 1 is the file's version, 'vers' 2 the version of the package it
   belongs to. The first two bytes are binary-coded decimal: major version,
   then minor and bug-fix digits. */
type 'vers' {
	hex byte;                                   /* major version */
	hex byte;                                   /* minor and bug-fix */
	hex byte development = 0x20, alpha = 0x40, beta = 0x60, final = 0x80,
		release = 0x80;
	hex byte;                                   /* pre-release number */
	integer;                                    /* region code */
	pstring;                                    /* short version string */
	pstring;                                    /* long version string */
};

#endif
