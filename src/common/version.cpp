#include "common/version.h"

namespace tarn {

const char kProgramVersion[] = "v" TARN_VERSION;

} // namespace tarn
