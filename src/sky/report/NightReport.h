// The report of one or more nights as it is read: texts and tables, whatever they are drawn on.
#pragma once

#include "sky/report/Integration.h"
#include "sky/report/Nights.h"

#include <string>
#include <utility>
#include <vector>

namespace tarn {

// What is in it beside the tables of exposures.
struct ReportChoice {
    bool graphs = true;
    bool pictures = true; // best and worst frame
    bool rejected = true;
    bool gaps = true;
    bool equipment = true;
    bool notes = true;

    bool operator==(const ReportChoice&) const = default;
};

struct ReportTable {
    std::string title;
    std::vector<std::string> heads;
    std::size_t texts = 1; // columns of texts from the left; the others are numbers
    std::vector<std::vector<std::string>> rows;
    bool hasTotal = false; // the last row
};

using ReportFacts = std::vector<std::pair<std::string, std::string>>; // label and what it says

struct ReportPicture {
    std::string caption;
    std::string jpeg;
};

struct ReportPart {
    std::string title; // "Night of 2024-11-05"
    ReportFacts facts;
    std::size_t night = 0; // of which the graph is
    std::vector<ReportPicture> pictures;
    std::vector<ReportTable> tables;
};

struct NightReport {
    std::string title;
    std::vector<std::string> lines; // below it
    std::vector<ReportTable> tables;
    std::vector<ReportPart> parts; // a night each
    ReportFacts equipment;
    ReportFacts notes;                // names of files and their notes
    std::vector<std::string> remarks; // what is missing or contradicts
    bool graphs = true;
    std::string foot; // "Tarn View 61.14, 11/06/2024 8:15:30 AM"
};

// All that a report is made of and drawn from.
struct ReportDocument {
    std::vector<ReportFrame> frames;
    std::vector<ReportNight> nights;
    std::vector<IntegrationRow> rows;
    std::vector<std::string> longitudes; // how those of a folder are counted
    NightReport report;
};

NightReport ReportOf(std::span<const ReportFrame> frames, std::span<const ReportNight> nights,
                     std::span<const IntegrationRow> rows, const ReportChoice& choice,
                     const std::string& foot);

// As a page by itself.
std::string ReportPage(const NightReport& report, std::span<const ReportFrame> frames,
                       std::span<const ReportNight> nights);

} // namespace tarn
