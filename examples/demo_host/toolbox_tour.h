// The Macintosh side of the demonstration: plain Toolbox calls, as the
// application made them on the Macintosh.
#pragma once
#include <string>
#include <vector>

// Runs the tour and returns what it found, one line each.
std::vector<std::string> RunToolboxTour();
