// Marks a drag of files that began in a list of this program: a folder of the tree takes it, while
// the window leaves it alone.
#pragma once

namespace tarn {

inline constexpr char kOwnFiles[] = "application/x-tarn-view-files";

} // namespace tarn
