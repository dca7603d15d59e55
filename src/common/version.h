// The program's version text, as pages and sheets carry it; the number stands in CMakeLists.txt.
#pragma once

namespace tarn {

extern const char kProgramVersion[]; // "v" and the number

} // namespace tarn
