// The end of a program whose work is done and kept.
#pragma once

namespace tarn {

// Whatever still holds the end, as a thread that reads from a disk that does not answer, holds it
// no longer than so many seconds: then the process ends with this status, 0 to 255.
void EndWithin(unsigned seconds, int status);

} // namespace tarn
