// The one channel through which the Toolbox's debugging calls, unsupported
// calls and the library's own complaints reach the porting developer.
#pragma once

namespace kwe {

// Shows text in a message box titled with the host's string 1029, or sends
// it to the debugger output, as WIN.INI [kweport2] says; silent under session
// flag 0x00020000. Never changes MemErr, ResErr or QDError.
void Report(const char* text);

}  // namespace kwe
