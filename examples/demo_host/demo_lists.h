// The settings dialog's paper list: a Toolbox list made with LNew in the
// dialog's port, the classic way, beside the dialog's own items.
#pragma once
#include <string>

#include "Dialogs.h"
#include "Lists.h"

// The list of paper sizes, "A4" selected; null when no list can be made.
ListHandle AddPaperList(DialogPtr d);
// The selected paper's name ("none" without a selection), then the list
// disposed of.
std::string TakePaperChoice(ListHandle paper);
