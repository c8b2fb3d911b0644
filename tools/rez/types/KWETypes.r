/* The library's own resources. */
#ifndef __KWE_KWETYPES_R__
#define __KWE_KWETYPES_R__

/* A dialog's Windows side, with the ID of its 'DITL': the caption band, the
   flags, and per item in tab order its mnemonic, combo-box and multi-line
   markings and radio group. */
type 'KWED' {
	unsigned byte;                              /* caption band height, 0 for none */
	boolean standardFont = 0, alternativeFont = 1;
	boolean tabByItems = 0, tabByTable = 1;
	boolean keepOKCancel = 0, swapOKCancel = 1;
	fill bit[5];
	integer = $$Countof(Entries);
	wide array Entries {
		unsigned byte;                          /* item number */
		unsigned byte;                          /* item a mnemonic activates */
		char noMnemonic = "\0x00";
		unsigned bitstring[4] noGroup = 0;      /* radio group 1 to 15 */
		fill bit[2];
		boolean singleLine = 0, multiLine = 1;
		boolean notCombo = 0, comboBox = 1;
	};
};

#endif
