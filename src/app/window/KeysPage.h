// The page of all keys, made from the tables by which they act.
#pragma once

#include "desk/Context.h"

#include <QString>

namespace tarn {

QString KeysPage(const Context& context); // as HTML

} // namespace tarn
