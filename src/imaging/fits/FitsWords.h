// What the words of a header say, whatever kind of file carries them.
#pragma once

#include "imaging/fits/FitsHeader.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace tarn {

// The value of the first of these words that the header has, without quotes; empty for none.
using WordOf = std::function<std::string(std::initializer_list<const char*>)>;

// All texts of the header and the order of its rows.
void TakeWords(FitsHeader& header, const WordOf& word);

// The colours under the filter, of a picture that is no mosaic yet: letters as "RGGB", moved by so
// many pixels. Letters of another kind leave it none.
void TakePattern(FitsHeader& header, std::string_view letters, int right, int down);

} // namespace tarn
