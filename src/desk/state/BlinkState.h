// Frames that stand still in a blink, what moves among them, and their sum.
#pragma once

namespace tarn {

struct BlinkState {
    int BlinkRate = 8; // frames a second, 1 to 25
    bool BlinkByScore = false;
    bool BlinkSkipRejected = true;
    int BlinkMemory = 0; // megabytes for frames made; 0: a sixth of the machine's
    int SumSigma = 30;   // tenths, beyond which a sample is left out; 0: none is
    bool SumByScore = false;
};

} // namespace tarn
