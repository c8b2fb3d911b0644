/* The 'SIZE' resource: how the application takes part in the process
   switching of the Process Manager, and the memory it asks for. */
#ifndef __KWE_PROCESSES_R__
#define __KWE_PROCESSES_R__

type 'SIZE' {
	fill bit;                                   /* reserved */
	boolean ignoreSuspendResumeEvents = 0, acceptSuspendResumeEvents = 1;
	fill bit;                                   /* reserved */
	boolean cannotBackground = 0, canBackground = 1;
	boolean needsActivateOnFGSwitch = 0, doesActivateOnFGSwitch = 1;
	boolean backgroundAndForeground = 0, onlyBackground = 1;
	boolean dontGetFrontClicks = 0, getFrontClicks = 1;
	boolean ignoreAppDiedEvents = 0, acceptAppDiedEvents = 1;
	boolean not32BitCompatible = 0, is32BitCompatible = 1;
	boolean notHighLevelEventAware = 0, isHighLevelEventAware = 1;
	boolean onlyLocalHLEvents = 0, localAndRemoteHLEvents = 1;
	boolean notStationeryAware = 0, isStationeryAware = 1;
	boolean dontUseTextEditServices = 0, useTextEditServices = 1;
	fill bit;                                   /* reserved */
	fill bit;                                   /* reserved */
	fill bit;                                   /* reserved */
	unsigned longint;                           /* preferred memory size */
	unsigned longint;                           /* minimum memory size */
};

#endif
