// The menu choices Windows has delivered and MenuSelect has not yet handed
// back. Each stands behind a mouseDown in the menu bar posted for the
// application's event loop; whoever takes that mouseDown without asking
// MenuSelect must drop the choice too, or every later MenuSelect answers the
// choice made one step before.
#pragma once
#include <cstddef>

namespace kwe::menus {

size_t WaitingChoices();
void DropOldestChoice();

}  // namespace kwe::menus
