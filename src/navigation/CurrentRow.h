// The rows of the list are others, its files the same.
#pragma once

#include "desk/Context.h"

namespace tarn {

// The current file's row is another one now, and so are those of the views. Where it is not listed
// any more, no row is current.
void TakeCurrentRow(Context& context);

} // namespace tarn
