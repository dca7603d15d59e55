// The report of nights as a file: a page, a PDF file, or its table alone.
#pragma once

#include "sky/report/NightReport.h"

#include <string>

namespace tarn {

class Files;

enum class ReportKind { Page, Pdf, Table };

// Written beside its place and renamed into it; false, with the reason, when it could not be.
bool SaveReport(Files& files, const ReportDocument& document, ReportKind kind,
                const std::string& path, const std::string& paper, std::string* error);

} // namespace tarn
