// What the module does for Decoders.h.
#pragma once

#include "console/Decoders.h"

namespace tarn {

struct DecodersModule {
    static constexpr char kModule[] = "decoders";
    PictureLook (*look)(const std::string& path);
    ConvertedFile (*convert)(const std::string& path, const std::string& folder,
                             const ConvertOptions& options);
    PageResult (*page)(const PageRequest& request);
    PageResult (*gallery)(const PageRequest& request);
    SheetResult (*sheet)(const SheetRequest& request);
    ThumbnailOutcome (*thumbnails)(const ThumbnailOrder& order);
    std::vector<FileMark> (*marks)(const std::vector<std::string>& paths);
    std::vector<FileMark> (*setMarks)(const std::vector<std::string>& paths,
                                      const MarkChange& change);
    std::vector<FrameMeasures> (*stars)(const std::vector<std::string>& paths);
    std::vector<MeasuredStar> (*sources)(const std::string& path, std::string& fault);
    StackResult (*sum)(const SumOrder& order);
    MoversResult (*movers)(const MoversQuest& quest);
    std::vector<PastCommand> (*past)(std::int64_t most);
    TurnedCommand (*undo)(std::optional<std::int64_t> id);
    TurnedCommand (*redo)(std::optional<std::int64_t> id);
    NightResult (*night)(const NightRequest& request);
    RatedClip (*rateClip)(const std::string& path);
    std::vector<TakenFrame> (*takeFrames)(const TakeOrder& order);
    std::vector<SetDate> (*dates)(const std::vector<SetDate>& wanted);
};

} // namespace tarn
