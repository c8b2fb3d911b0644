// The demonstration's documents, as a Macintosh program keeps them: the
// notes saved through the save dialog (StandardPutFile) into a 'TEXT' file,
// read back through the open dialog (StandardGetFile), and printed as a page
// of text and shapes through the Printing Manager (PrJobDialog, PrOpenDoc,
// PrOpenPage). A timer plays the user of the common dialogs: it types the
// name, presses Save, Open and Print, and saves the save dialog as a
// screenshot while it is up.
#pragma once
#include <string>
#include <vector>

// The lines telling what each step answered.
std::vector<std::string> RunDocumentsDemo(const std::string& dialogScreenshot);
