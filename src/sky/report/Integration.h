// How long was exposed: hours a target and filter, over all folders.
#pragma once

#include "sky/report/ReportFrame.h"

#include <span>

namespace tarn {

struct IntegrationRow {
    FrameKind kind = FrameKind::Light;
    std::string target; // "Dark", "Flat", "Bias" of those
    std::string filter;
    std::string camera;
    std::string exposure; // seconds
    int frames = 0;
    double seconds = 0;
    int keptFrames = 0; // marked as kept
    double keptSeconds = 0;
    int rejectedFrames = 0;
    double rejectedSeconds = 0;
    std::optional<double> first; // middles of exposures, seconds since 1970, UTC
    std::optional<double> last;
    std::string error; // what is missing or contradicts, with how many frames
};

// A row for each target, filter, camera and exposure: lights by their names, then flats, darks and
// bias frames. "M 31" and "m31" are one target, as the first frame has it. Behind them a row with
// the reason for each file that could not be read.
std::vector<IntegrationRow> IntegrationOf(std::span<const ReportFrame> frames);

// The table's columns and a row's cells in their order, for other programs.
std::span<const char* const> IntegrationColumns();
std::vector<std::string> IntegrationCells(const IntegrationRow& row);
std::string IntegrationTable(std::span<const IntegrationRow> rows); // as CSV, with its head

// Of all rows of a kind.
IntegrationRow TotalOf(std::span<const IntegrationRow> rows, bool lights);

// Of each target and filter, whatever camera and exposure; lights alone.
std::vector<IntegrationRow> ByTargetAndFilter(std::span<const IntegrationRow> rows);

// By which targets and filters are one, however they are spelled.
std::string NameKey(std::string_view name);

std::string HoursText(double seconds); // "3 h 25 min", "50 s"

} // namespace tarn
