// Check marks of the menus and the fields of the program state that they stand for.
#pragma once

#include "desk/Context.h"

namespace tarn {

// Shows the state in every check mark; connects each so that a click changes the state.
void ShowSwitches(Context& context);
void ConnectSwitches(Context& context);

} // namespace tarn
