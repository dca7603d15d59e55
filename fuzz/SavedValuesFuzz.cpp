// Takes the input for a page with the options of an earlier run, and makes pages with what was
// read.
#include "Demand.h"
#include "Input.h"

#include "web/Gallery.h"
#include "web/HtmlColor.h"
#include "web/PageEntry.h"
#include "web/PageHead.h"
#include "web/SavedValues.h"

using namespace tarn;
using namespace tarn::fuzz;

namespace {

constexpr char kNow[] = "11/25/2026 9:30:00 AM";

// What was read is written so that it is read again the same.
template <class Settings> void TryAgain(const Settings& settings, std::string_view marker) {
    PageText page;
    page.Line(marker);
    AddSavedValues(page, InPageBytes(settings));
    page.Line("-->");
    Settings read;
    Demand(ReadSavedValues(page.Bytes(), read));
    PageText again;
    again.Line(marker);
    AddSavedValues(again, InPageBytes(read));
    again.Line("-->");
    Demand(again.Bytes() == page.Bytes());
}

void MakePage(const HtmlSettings& settings) {
    PageHead(settings, "1.0", kNow);
    PageTitleTable(settings, kNow);
    EntryFacts facts;
    facts.name = "M31.jpg";
    facts.type = ".JPG";
    facts.width = facts.previewWidth = 300;
    facts.height = facts.previewHeight = 200;
    facts.note = "Telescope: 80 mm\r\n\r\nA night";
    facts.panel = {"a", "b", "c"};
    PageRun run;
    run.Begin();
    for (int i = 0; i < 3; ++i) PageEntry(settings, i == 1, facts, run);
}

void MakeGallery(const GallerySettings& settings) {
    GalleryRunFacts run;
    run.count = 3;
    run.thumbnailSize = 160;
    run.indexName = "index.html";
    run.now = kNow;
    GalleryStyle(settings);
    for (const bool frames : {false, true}) {
        run.frames = frames;
        GalleryIndexHead(settings, run);
        GalleryFrameTop(settings, run);
        GalleryFrameThumbsHead(settings, run);
        GalleryCells cells(settings, run);
        for (int k = 1; k <= run.count; ++k) {
            const GalleryPicture picture{
                "M31.jpg", "t.jpg", 3000, 2000, 1500000, "a\r\nTelescope: b\r\nc\r\nd\r\ne\r\nf",
                {"x", "y"}};
            cells.Next(picture);
            GalleryPicturePage(settings, run, picture, k);
        }
        GalleryIndexFoot(settings, run);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = Input(data, size).Rest();
    HtmlSettings page;
    GallerySettings gallery;
    const bool isPage = ReadSavedValues(bytes, page);
    const bool isGallery = ReadSavedValues(bytes, gallery);
    Demand(!isPage || !isGallery);
    if (isPage) {
        TryAgain(page, "<!--TarnView saved settings");
        MakePage(InPageBytes(page));
        NumberOfHtmlColor(page.HtmlTextColor);
    }
    if (isGallery) {
        TryAgain(gallery, "<!--TarnView");
        MakeGallery(InPageBytes(gallery));
    }
    HtmlColorOf(NumberOfHtmlColor(bytes));
    return 0;
}
