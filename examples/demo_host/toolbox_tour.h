// The Macintosh side of the demonstration: plain Toolbox calls, as the
// application made them on the Macintosh.
#pragma once
#include <string>
#include <vector>

#include "MacTypes.h"

struct TourResult {
  std::vector<std::string> lines;  // what it found, one line each
  std::vector<Pattern> patterns;   // patterns read from the resource files
};

TourResult RunToolboxTour();

// A WaitNextEvent loop, as the application's main loop runs, until Escape
// (or five seconds without it): the document windows' events go to them.
// Lines telling the events it saw.
std::vector<std::string> RunEventLoop();

// The same loop for ticks more, telling nothing: the windows keep being
// drawn while the host repaints its own window.
void KeepRunning(UInt32 ticks);
