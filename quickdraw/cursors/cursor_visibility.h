// The Toolbox's cursor level on Windows' cursor display count.
#pragma once

namespace kwe::quickdraw {

// Level 0 again: every HideCursor not yet balanced is undone and an
// obscured cursor shown.
void ResetCursorLevel();

}  // namespace kwe::quickdraw
