// The program's version text, as pages and sheets carry it.
#pragma once

namespace tarn {

inline constexpr char kProgramVersion[] = "v61.14";

} // namespace tarn
