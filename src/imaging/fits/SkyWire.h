// Headers and samples of telescopes' files on their way from the decoder process.
#pragma once

#include "decoder/DecoderPool.h"
#include "imaging/fits/FitsSamples.h"

#include <optional>
#include <string>

namespace tarn {

// What the process sends: of samples all but themselves, which are its memory, as many as the
// header says, each of 16 bits or a float.
std::string WireOf(const FitsHeader& header);
std::string WireOf(const FitsSamples& samples);

// Whether an answer is one that can be, and what it then says; none where it has but an error.
bool IsSkyHeader(const DecoderAnswer& answer);
bool AreSkySamples(const DecoderAnswer& answer);
std::optional<FitsHeader> SkyHeaderOf(const DecoderAnswer& answer);
std::optional<FitsSamples> TakeSkySamples(DecoderAnswer& answer);

// False where the file is to be read in this process.
bool AskForSkyHeader(DecoderFormat format, const std::string& path, int image,
                     std::optional<FitsHeader>& header, std::string& error);
bool AskForSkySamples(DecoderFormat format, const std::string& path, int image,
                      std::optional<FitsSamples>& samples, std::string& error);

} // namespace tarn
