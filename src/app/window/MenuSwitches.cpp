#include "app/window/MenuSwitches.h"

#include "common/numbers.h"
#include "desk/controls/Captions.h"
#include "widgets/Themes.h"

#include <QAction>

#include <cstdlib>
#include <vector>

namespace tarn {

namespace {

struct Switch {
    QAction* entry;
    bool& field;
};

std::vector<Switch> Switches(Context& m) {
    MainControls& c = m.controls;
    ProgramState& s = m.state;
    return {
        {c.HtmlShowOptions, s.HtmlOverwriteWarning},
        {c.VideoInWindowButton, s.VideoInWindow},
        {c.CreateNotesThumbButton, s.ThumbCreateNotes},
        {c.AutoClearThumbFolderButton, s.ThumbClear},
        {c.ConvertJpgAddFilename, s.ConvertJpgAddFN},
        {c.CameraSettingsButton, s.CameraSettings},
        {c.ShowNotesSlideButton, s.ShowNotesSlide},
        {c.Slides4MouseButton, s.Slides4Mouse},
        {c.SlideNavArrowKeys, s.SlideAltArrowKeys},
        {c.ClearSlideForm, s.SlideClear},
        {c.BeepAllSlideButton, s.BeepAllSlide},
        {c.BeepLastSlideButton, s.BeepLastSlide},
        {c.BeepCopyPictureButton, s.BeepCopyPicture},
        {c.AutoSetFileDatesButton, s.AutoSetFileDates},
        {c.CopyAutoButton, s.CopyAuto},
        {c.MarkAdvanceButton, s.MarkAdvance},
        {c.OneWindowTopButton, s.OneAlwaysTop},
        {c.DeleteKeyNotesButton, s.DeleteKeepNotes},
        {c.DeletePictureConfirmButton, s.DeleteConfirm},
        {c.Print1stTButton, s.PrintOnly1stPage},
        {c.PrintNotesOnThumbnailsButton, s.PrintNotesOnThumbnails},
        {c.PrintKeptButton, s.SheetsOfKept},
        {c.PrintPreviewButton, s.PrintPreview},
    };
}

// One row of several is checked; `chosen` holds its index.
struct Choice {
    std::vector<QAction*> rows; // by index; null where the array has none
    int& chosen;
    void (*apply)(ProgramState&, const QAction&);
};

template <typename Array> std::vector<QAction*> Rows(const Array& array) {
    return {array.begin(), array.end()};
}

void NoMore(ProgramState&, const QAction&) {}

// "25%": that much of white, as 0xRRGGBB.
int GreyOf(const std::string& caption) {
    constexpr int kEachChannel = 65793;                // 0x010101
    const double percent = std::atof(caption.c_str()); // stops at the sign
    return static_cast<int>(RoundHalfEven(percent / 100 * 255)) * kEachChannel;
}

std::vector<Choice> Choices(Context& m) {
    MainControls& c = m.controls;
    ProgramState& s = m.state;
    return {
        {Rows(c.ThumbSizeButton), s.ThumbSizeIndex,
         [](ProgramState& state, const QAction& row) { state.ThumbSize = CaptionOf(row).toInt(); }},
        {Rows(c.SlideTextButton), s.SlideFontIndex,
         [](ProgramState& state, const QAction& row) {
             state.SlideFont = CaptionOf(row).toStdString();
         }},
        {Rows(c.SlideTextSizeButton), s.SlideFontSizeIndex,
         [](ProgramState& state, const QAction& row) {
             state.SlideFontSize = CaptionOf(row).toStdString();
         }},
        {Rows(c.SlideTextColorButton), s.SlideTextColorIndex, NoMore},
        {Rows(c.SlideBackgroundButton), s.SlideBackgroundIndex,
         [](ProgramState& state, const QAction& row) {
             state.SlideBackground = GreyOf(CaptionOf(row).toStdString());
         }},
        {Rows(c.ThemeButton), s.Theme,
         [](ProgramState& state, const QAction&) { ApplyTheme(static_cast<Theme>(state.Theme)); }},
    };
}

// The switch also sets how a show begins.
void FollowSlideNotes(ProgramState& state) {
    state.SlideNotesOn = state.ShowNotesSlide;
    state.SlideNotesMode = state.ShowNotesSlide ? 1 : 0;
}

} // namespace

void ShowSwitches(Context& m) {
    FollowSlideNotes(m.state);
    for (const Switch& each : Switches(m)) each.entry->setChecked(each.field);
    for (const Choice& choice : Choices(m)) {
        QAction* row = choice.rows[static_cast<std::size_t>(choice.chosen)];
        row->setChecked(true);
        choice.apply(m.state, *row);
    }
}

void ConnectSwitches(Context& m) {
    for (const Switch& each : Switches(m))
        Connect(each.entry, [&state = m.state, &field = each.field, entry = each.entry] {
            field = entry->isChecked(); // a checkable entry has toggled before its command runs
            if (&field == &state.ShowNotesSlide) FollowSlideNotes(state);
            if (&field == &state.AutoSetFileDates) state.FileDatesAnswered = true;
        });
    for (const Choice& choice : Choices(m))
        for (std::size_t i = 0; i < choice.rows.size(); ++i) {
            QAction* row = choice.rows[i];
            if (!row) continue;
            Connect(row, [&state = m.state, &chosen = choice.chosen, apply = choice.apply, row, i] {
                chosen = static_cast<int>(i);
                apply(state, *row);
            });
        }
}

} // namespace tarn
