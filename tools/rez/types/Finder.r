/* The Finder's bundle and file references. */
#ifndef __KWE_FINDER_R__
#define __KWE_FINDER_R__

/* The owner's signature, then per resource type ('ICN#', 'FREF') the
   mapping of local IDs to resource IDs. */
type 'BNDL' {
	literal longint;                            /* signature */
	integer;                                    /* ID of the owner resource */
	integer = $$Countof(Types) - 1;
	array Types {
		literal longint;                        /* resource type */
		integer = $$Countof(IDs) - 1;
		wide array IDs {
			integer;                            /* local ID */
			integer;                            /* resource ID */
		};
	};
};

type 'FREF' {
	literal longint;                            /* file type */
	integer;                                    /* local ID of its icon */
	pstring;                                    /* file name */
};

#endif
