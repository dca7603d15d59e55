#include "sky/paper/SaveReport.h"

#include "common/paths.h"
#include "platform/Files.h"
#include "sky/paper/ReportSheet.h"

namespace tarn {

namespace {

// What stands there goes to the wastebasket.
bool Replace(Files& files, const std::string& path, const std::string& bytes, std::string* error) {
    const auto staged = files.Stage(FolderOf(path), error);
    std::string failed;
    return staged && staged->Write(LastPart(path), bytes, error) && staged->Place(error, &failed);
}

} // namespace

bool SaveReport(Files& files, const ReportDocument& document, ReportKind kind,
                const std::string& path, const std::string& paper, std::string* error) {
    if (kind == ReportKind::Table)
        return Replace(files, path, IntegrationTable(document.rows), error);
    if (kind == ReportKind::Page)
        return Replace(files, path, ReportPage(document.report, document.frames, document.nights),
                       error);
    PrinterChoice choice;
    choice.toFile = true;
    choice.pdf = path;
    choice.paper = paper;
    const auto printer = MakePdfPrinter(files, choice);
    PrintReport(*printer, document.report, document.frames, document.nights);
    return printer->End(error);
}

} // namespace tarn
