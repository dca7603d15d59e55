#include "marks/XmpModule.h"

#include "marks/Sidecar.h"

namespace tarn {

extern "C" const XmpModule TarnModule{MarkOfXmp, XmpWithMark};

} // namespace tarn
