// The report of nights on paper.
#pragma once

#include "sky/report/NightReport.h"
#include "widgets/printing/Printer.h"

namespace tarn {

// As many pages as it takes; they are not sent yet.
void PrintReport(Printer& printer, const NightReport& report, std::span<const ReportFrame> frames,
                 std::span<const ReportNight> nights);

} // namespace tarn
