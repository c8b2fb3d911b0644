// The Macintosh side's dates and desk scrap: today in the short and long
// forms WIN.INI's [intl] settings picture, and its greeting copied to the
// clipboard for other programs.
#pragma once
#include <string>
#include <vector>

// Lines for the main window; call after InitResources, which reads [intl].
std::vector<std::string> TodayAndScrapLines();
