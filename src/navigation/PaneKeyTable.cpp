#include "navigation/PaneKeyTable.h"

#include <QAction>
#include <QPlainTextEdit>
#include <QPushButton>

namespace tarn {

namespace {

constexpr int kPicture = int(KeyPane::Picture);
constexpr int kClip = int(KeyPane::Clip);
constexpr int kText = int(KeyPane::Text);
constexpr int kFiles = int(KeyPane::Files);
constexpr int kLists = int(KeyPane::Lists) | kFiles;
constexpr int kPanes = kPicture | kClip | kText;
constexpr int kMarked = kPicture | kClip | kFiles;

constexpr int kPage = 5; // rows of a page key

enum class Needs { Nothing, Picture }; // one that is loaded

struct PaneKeyRow {
    int keycode;
    int panes;
    Needs needs;
    const char* says;
    PaneAction act;
};

template <QPushButton* MainControls::*button> void Click(Context& m) {
    (m.controls.*button)->click();
}
template <QAction* MainControls::*entry> void Choose(Context& m) {
    (m.controls.*entry)->trigger();
}
template <void (DisplayCommands::*command)()> void Ring(Context& m) {
    (m.display.*command)();
}

void ReadAgain(Context& m) {
    m.navigation.ReadAgain();
}
void Next(Context& m) {
    m.navigation.StepBy(1, Stepping());
}
void Previous(Context& m) {
    m.navigation.StepBy(-1, Stepping());
}
void PageBack(Context& m) {
    m.navigation.StepBy(-kPage, Stepping());
}
void PageOn(Context& m) {
    m.navigation.StepBy(kPage, Stepping());
}
void First(Context& m) {
    m.navigation.StepFrom(1, -1, Stepping());
}
void Last(Context& m) {
    m.navigation.StepFrom(0, -1, Stepping());
}
void ToNote(Context& m) {
    m.controls.NotesBox->setFocus(Qt::ShortcutFocusReason);
}

using C = MainControls;
using D = DisplayCommands;

// clang-format off
constexpr PaneKeyRow kRows[] = {
    {'N', kPanes, Needs::Nothing, "next file", Next},
    {keys::kSpace, kPanes, Needs::Nothing, "next file", Next},
    {keys::kDown, kPanes, Needs::Nothing, "next file", Next},
    {'P', kPanes, Needs::Nothing, "previous file", Previous},
    {keys::kUp, kPanes, Needs::Nothing, "previous file", Previous},
    {keys::kPageDown, kPanes, Needs::Nothing, "five files on", PageOn},
    {keys::kPageUp, kPanes, Needs::Nothing, "five files back", PageBack},
    {keys::kHome, kPanes, Needs::Nothing, "first file", First},
    {keys::kEnd, kPanes, Needs::Nothing, "last file", Last},
    {keys::kComma, kPicture | kText, Needs::Nothing, "back through the files viewed", Click<&C::FileBackButton>},
    {keys::kPeriod, kPicture | kText, Needs::Nothing, "forward through the files viewed", Click<&C::FileFwdButton>},
    {keys::kF5, kPanes | kLists, Needs::Nothing, "reads the folder again", ReadAgain},
    {'K', kMarked, Needs::Nothing, "marks to keep", Choose<&C::MarkKeepButton>},
    {'J', kMarked, Needs::Nothing, "marks as rejected", Choose<&C::MarkRejectButton>},
    {'H', kMarked, Needs::Nothing, "takes mark and stars away", Choose<&C::MarkClearButton>},
    {'G', kPanes, Needs::Nothing, "the night's frames, measured", Choose<&C::NightButton>},
    {'Q', kPanes, Needs::Nothing, "blinks the frames, laid over each other", Choose<&C::BlinkButton>},
    {'0', kPicture, Needs::Picture, "circles on the stars, on and off", Choose<&C::StarCirclesButton>},
    {'X', kPicture, Needs::Picture, "corners at full size", Choose<&C::CornersButton>},
    {'W', kPicture, Needs::Picture, "what stood in the sky, on and off", Choose<&C::SkyPanelButton>},
    {'R', kPicture, Needs::Picture, "turns right", Ring<&D::RotateRightButton_Click>},
    {keys::kRight, kPicture, Needs::Picture, "turns right", Ring<&D::RotateRightButton_Click>},
    {'L', kPicture, Needs::Picture, "turns left", Ring<&D::RotateLeftButton_Click>},
    {keys::kLeft, kPicture, Needs::Picture, "turns left", Ring<&D::RotateLeftButton_Click>},
    {'M', kPicture, Needs::Picture, "mirrors left to right", Ring<&D::MirrorButton_Click>},
    {'I', kPicture, Needs::Picture, "mirrors top to bottom", Ring<&D::FlipButton_Click>},
    {'O', kPicture, Needs::Picture, "loads the picture again, without turns", Ring<&D::Redraw>},
    {'B', kPicture, Needs::Picture, "brightness", Choose<&C::AdjustButton>},
    {'V', kPicture, Needs::Picture, "picture in a window of its own", Click<&C::ViewButton>},
    {'F', kPicture, Needs::Picture, "picture at full size", Click<&C::OneToOneButton>},
    {'1', kPicture, Needs::Picture, "picture at full size", Click<&C::OneToOneButton>},
    {keys::kPlus, kPicture, Needs::Picture, "closer, through 1:1 to 8:1", Choose<&C::ZoomInButton>},
    {keys::kMinus, kPicture, Needs::Picture, "farther", Choose<&C::ZoomOutButton>},
    {'9', kPicture, Needs::Picture, "as the picture fits", Choose<&C::FitToPaneButton>},
    {'S', kPicture, Needs::Picture, "full-screen slides", Click<&C::SlideButton>},
    {'2', kPicture, Needs::Picture, "two pictures on the screen", Click<&C::Slides2Button>},
    {'4', kPicture, Needs::Picture, "four pictures on the screen", Click<&C::Slides4Button>},
    {'C', kPicture, Needs::Picture, "two pictures, of which one stays", Click<&C::SlidesC2Button>},
    {'T', kPicture, Needs::Picture, "goes to the note", ToNote},
    {'Y', kPicture, Needs::Picture, "copies the file to the \"Copy to\" folder", Click<&C::CopyImageButton3>},
    {'U', kPicture, Needs::Picture, "writes a JPEG copy to that folder", Click<&C::CJMButton>},
    {'Z', kPicture, Needs::Picture, "writes a JPEG copy to that folder", Click<&C::CJMButton>},
    {'A', kPicture, Needs::Picture, "renames the picture and its note", Choose<&C::RenameButton>},
    {keys::kF2, kPicture, Needs::Picture, "renames the picture and its note", Choose<&C::RenameButton>},
    {keys::kInsert, kPicture, Needs::Picture, "duplicates the picture and its note", Choose<&C::DuplicateButton>},
    {keys::kDelete, kPicture, Needs::Picture, "picture and note to the wastebasket", Choose<&C::DeleteButton>},
    {'D', kPicture, Needs::Picture, "changes the date inside the picture", Choose<&C::FixPictureDateButton>},
    {keys::kF6, kPicture, Needs::Picture, "sets the file's date to the picture's", Choose<&C::SetFileDatesButton>},
    {'E', kPicture, Needs::Picture, "opens the file in its program", Choose<&C::PopupOpenButton>},
    {keys::kPrint, kPicture, Needs::Picture, "prints the data sheet", Choose<&C::PrintButton>},
    {keys::kPrintScreen, kPicture, Needs::Picture, "prints the data sheet", Choose<&C::PrintButton>},
    {keys::kF1, kPicture, Needs::Picture, "help", Choose<&C::HelpPicNavButton>},
    {keys::kF10, kPicture, Needs::Picture, "leaves the program", Choose<&C::Exit>},
    {keys::kDelete, kClip, Needs::Nothing, "clip and note to the wastebasket", Choose<&C::DeleteButton>},
    {keys::kInsert, kClip, Needs::Nothing, "renames the clip and its note", Choose<&C::RenameButton>},
    {keys::kF2, kText, Needs::Nothing, "renames the file and its note", Choose<&C::RenameButton>},
};
// clang-format on

} // namespace

PaneAction PaneActionOf(KeyPane pane, int keycode, bool pictureLoaded) {
    for (const PaneKeyRow& row : kRows)
        if (row.keycode == keycode && (row.panes & int(pane)) &&
            (pictureLoaded || row.needs == Needs::Nothing))
            return row.act;
    return nullptr;
}

std::vector<keys::KeyLine> PaneKeyLines(KeyPane pane) {
    std::vector<keys::KeyLine> lines;
    for (const PaneKeyRow& row : kRows)
        if ((row.panes & int(pane)) && row.keycode != keys::kPrintScreen)
            keys::AddLine(lines, keys::NameOf(row.keycode), row.says);
    return lines;
}

} // namespace tarn
