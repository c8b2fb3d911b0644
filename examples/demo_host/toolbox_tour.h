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
