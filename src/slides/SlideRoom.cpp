#include "slides/SlideRoom.h"

#include "platform/EventPump.h"
#include "slides/FullSlides.h"
#include "slides/ManySlides.h"
#include "slides/ShowTime.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QPushButton>
#include <QScopedValueRollback>

namespace tarn {

void SlideRoom::ConnectControls() {
    const MainControls& c = m.controls;
    Connect(c.SlideButton, [this] { SlideButton_Click(); });
    Connect(c.SlidesFullButton, [this] { SlideButton_Click(); });
    Connect(c.Slides4Button, [this] { Slides4Button_Click(); });
    Connect(c.Slides4LButton, [this] { Slides4LButton_Click(); });
    Connect(c.Slides2Button, [this] { Slides2Button_Click(); });
    Connect(c.Slides2VButton, [this] { Slides2VButton_Click(); });
    Connect(c.SlidesC2Button, [this] { SlidesC2Button_Click(); });
    Connect(c.SlidesC2VButton, [this] { SlidesC2VButton_Click(); });
    Connect(c.SetSlideShowAutoUpdateButton, [this] { SetSlideShowAutoUpdateButton_Click(); });
    Connect(c.ResetSlideShowAutoUpdateButton, [this] { ResetSlideShowAutoUpdateButton_Click(); });
}

bool SlideRoom::MayStart() const {
    const ProgramState& s = m.state;
    return !m_time && !s.VideoImage() && !s.BatchRuns && !s.Closing &&
           m.controls.FileListBox->Count() > 0;
}

void SlideRoom::SlideButton_Click() {
    if (!MayStart() || m.state.WebImage()) return;
    ShowTime time(m, SlideLayout::One, m_titleOn);
    const QScopedValueRollback<ShowTime*> running(m_time, &time);
    FullSlides show(m, time);
    show.Run();
    time.Close();
    if (!m.state.Closing) show.ShowEnd();
}

// With the file `beside`, where one is named, in the second place.
void SlideRoom::ShowMany(SlideLayout layout, const std::string& beside) {
    if (!MayStart()) return;
    ShowTime time(m, layout, m_titleOn);
    const QScopedValueRollback<ShowTime*> running(m_time, &time);
    ManySlides show(m, time, m_landscape);
    show.PutBeside(beside);
    show.Run();
    time.Close();
    if (!m.state.Closing) show.ShowEnd();
}

void SlideRoom::Slides4Button_Click() {
    ShowMany(SlideLayout::Four);
}

void SlideRoom::Slides4LButton_Click() {
    const QScopedValueRollback<bool> landscape(m_landscape, true);
    Slides4Button_Click();
}

void SlideRoom::Slides2Button_Click() {
    ShowMany(m_vertical ? SlideLayout::TwoVertical : SlideLayout::TwoHorizontal);
}

void SlideRoom::Slides2VButton_Click() {
    const QScopedValueRollback<bool> vertical(m_vertical, true);
    Slides2Button_Click();
}

void SlideRoom::SlidesC2Button_Click() {
    const QScopedValueRollback<bool> compare(m.state.SlideCompare, true);
    Slides2Button_Click();
}

void SlideRoom::SlidesC2VButton_Click() {
    const QScopedValueRollback<bool> vertical(m_vertical, true);
    SlidesC2Button_Click();
}

void SlideRoom::CompareRows(int stays, int other) {
    const FileListBox& list = *m.controls.FileListBox;
    const int count = list.Count();
    if (!MayStart() || stays < 0 || stays >= count || other < 0 || other >= count) return;
    const std::string beside = list.Text(other);
    const QScopedValueRollback<bool> compare(m.state.SlideCompare, true);
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(stays, InPassing()); // a show begins with the current row
    ShowMany(SlideLayout::TwoHorizontal, beside);
    const int row = list.RowOf(beside);
    if (m.state.Closing || row < 0) return;
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(row, KeepingKeyboard());
}

void SlideRoom::SlideDone() {
    if (m_time) m_time->End();
}

void SlideRoom::SlideKeyUp(int keycode) {
    if (m_time) m_time->KeyUp(keycode);
}

void SlideRoom::ShowSlideAgain() {
    if (m_time) m_time->ShowAgain();
}

frmSlideShow* SlideRoom::Window() const {
    return m_time ? &m_time->Window() : nullptr;
}

ShowSignals* SlideRoom::Signals() const {
    return m_time ? &m_time->Signals() : nullptr;
}

frmSlideDelay& SlideRoom::DelayWindow() {
    if (!m_delay) m_delay = std::make_unique<frmSlideDelay>(m);
    return *m_delay;
}

void SlideRoom::SetSlideShowAutoUpdateButton_Click() {
    DelayWindow().ShowDelay();
}

void SlideRoom::ResetSlideShowAutoUpdateButton_Click() {
    DelayWindow().DelayResetButton_Click();
}

} // namespace tarn
