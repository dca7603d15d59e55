// What the decoder process may not do any more once its readers are loaded. docs/SECURITY.md lists
// what is left.
#pragma once

#include <cstdint>

namespace tarn {

// For all threads to come. What the kernel does not know is left out; the answer says what holds,
// as the bits of Protocol.h.
std::uint32_t GiveUpRights();

} // namespace tarn
