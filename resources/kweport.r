/* KWEPORT.RSR, the library's system resource file (slot 0 of the resource
   chain): InitResources opens it beside the host module before the
   application's own ".RSR" file, so these resources are found when the
   application's file does not hold them. Compiled by kwerez. */
#include "Types.r"

/* Version: 1.0 final, region 0 (United States). */
resource 'vers' (1) {
	0x01,
	0x00,
	final,
	0x00,
	0,
	"1.0",
	"1.0, KWEJMP system resources"
};

/* The standard patterns of QuickDraw's globals, in the order white, black,
   gray, light gray, dark gray. */
resource 'PAT#' (0) {
	{
		$"0000 0000 0000 0000";
		$"FFFF FFFF FFFF FFFF";
		$"AA55 AA55 AA55 AA55";
		$"8822 8822 8822 8822";
		$"77DD 77DD 77DD 77DD"
	}
};
