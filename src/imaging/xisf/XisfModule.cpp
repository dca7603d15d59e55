#include "imaging/xisf/XisfModule.h"

namespace tarn {

extern "C" const XisfModule TarnModule{ReadXisfHeader, ReadXisfSamples, XisfLibrariesRun};

} // namespace tarn
