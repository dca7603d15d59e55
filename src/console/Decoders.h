// Picture sizes, conversions and sheets by way of the decoders, which stand in a module of their
// own: loading the toolkit takes as long as reading the dates of a thousand files, and what reads
// dates does without.
#pragma once

#include "console/DatesCommand.h"
#include "console/FramesCommand.h"
#include "console/HistoryCommands.h"
#include "console/MarkCommands.h"
#include "console/MoversCommand.h"
#include "console/NightCommand.h"
#include "console/PageCommands.h"
#include "console/SheetCommand.h"
#include "console/StackCommand.h"
#include "console/StarsCommand.h"
#include "console/Subcommand.h"

#include <string>
#include <vector>

namespace tarn {

// From the picture's header; nothing when the module is not installed.
PictureLook LookAtPicture(const std::string& path);

// A name that stands gets another behind it, as in the window: "M31-1.jpg" beside the picture,
// where that must be free, "M31-CM.jpg" in a folder, where what has it goes to the wastebasket.
ConvertedFile ConvertToJpeg(const std::string& path, const std::string& folder,
                            const ConvertOptions& options);

// A sheet as a PDF file.
SheetResult PrintSheet(const SheetRequest& request);

ThumbnailOutcome ThumbnailsOfFolder(const ThumbnailOrder& order);

// Of files that are there, in their order.
std::vector<FileMark> MarksOf(const std::vector<std::string>& paths);
std::vector<FileMark> SetMarksOf(const std::vector<std::string>& paths, const MarkChange& change);

// Pages and galleries.
PageResult MakePage(const PageRequest& request);
PageResult MakeGallery(const PageRequest& request);

// Stars of pictures: what was measured before comes from the store in the cache folder.
std::vector<FrameMeasures> MeasureStars(const std::vector<std::string>& paths);
std::vector<MeasuredStar> ListStars(const std::string& path, std::string& fault);

// Frames laid over each other, and their mean written.
StackResult SumOfFrames(const SumOrder& order);
// And what moves in them.
MoversResult MoversOfFrames(const MoversQuest& quest);

// Frames of a clip.
RatedClip RateFrames(const std::string& path);
std::vector<TakenFrame> TakeFramesOut(const TakeOrder& order);

// What window and console did.
std::vector<PastCommand> PastCommands(std::int64_t most);
TurnedCommand UndoCommand(std::optional<std::int64_t> id);
TurnedCommand RedoCommand(std::optional<std::int64_t> id);

// File times, as one command of the history.
NightResult ReportNights(const NightRequest& request);
std::vector<SetDate> SetDates(const std::vector<SetDate>& wanted);

} // namespace tarn
