// Which sources are stars.
#pragma once

#include "sky/stars/Sources.h"

namespace tarn {

// Sets the kinds, the typical width and the plateau. What is judged by comparison (width, length)
// is compared with the bright ones of this plane, so that trailed or defocused stars stay stars.
void TellApart(const ValuePlane& plane, const SkyMesh& sky, SourceList& list);

} // namespace tarn
