// Picture sizes, conversions and sheets by way of the decoders, which stand in a module of their
// own: loading the toolkit takes as long as reading the dates of a thousand files, and what reads
// dates does without.
#pragma once

#include "console/PageCommands.h"
#include "console/SheetCommand.h"
#include "console/Subcommand.h"

#include <string>
#include <vector>

namespace tarn {

// Size in pixels from the picture's header; false, and 0 x 0, when no reader knows the file or the
// module is not installed.
bool SizeFromHeader(const std::string& path, int& width, int& height);

// Rows of the panel that only pictures of telescopes have; none of any other file.
std::vector<std::string> LinesOfFits(const std::string& path);

// A name that stands gets another behind it, as in the window: "M31-1.jpg" beside the picture,
// where that must be free, "M31-CM.jpg" in a folder, where what has it goes to the wastebasket.
ConvertedFile ConvertToJpeg(const std::string& path, const std::string& folder,
                            const ConvertOptions& options);

// A sheet as a PDF file.
SheetResult PrintSheet(const SheetRequest& request);

ThumbnailOutcome ThumbnailsOfFolder(const ThumbnailOrder& order);

// Pages and galleries.
PageResult MakePage(const PageRequest& request);
PageResult MakeGallery(const PageRequest& request);

} // namespace tarn
