// The demonstration's dialogs: the About alert of the Apple menu and a
// modal settings dialog (edit text, check boxes, a radio group and a pop-up
// list) whose values are read back. A timer plays the user: it presses the
// alert's button, types, clicks and finally presses OK, and the settings
// dialog is saved as a screenshot while it is up.
#pragma once
#include <string>
#include <vector>

// NoteAlert of 'ALRT' 128; the item that answered it.
int ShowAboutAlert();
// The lines telling what the settings dialog answered.
std::vector<std::string> RunSettingsDialog(const std::string& screenshot);
