// Capitals of Latin, Greek and Cyrillic small letters (simple case mapping).
#pragma once

namespace tarn {

// The capital of a small letter; any other code point as it is.
char32_t CapitalOf(char32_t code);

} // namespace tarn
