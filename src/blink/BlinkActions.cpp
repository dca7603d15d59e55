// What is done in the window "Blink": play, steps, marks and keys.
#include "blink/BlinkWords.h"
#include "blink/SeenPane.h"
#include "blink/frmBlink.h"
#include "common/mark_text.h"
#include "common/paths.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QToolButton>

#include <algorithm>

namespace tarn {

void frmBlink::SetPlaying(bool playing) {
    m_plays = playing && m_order.Count() > 1;
    m_play->setText(m_plays ? QStringLiteral("Pause") : QStringLiteral("Play"));
    m_tick.stop();
    if (!m_plays) return;
    m_clock.start();
    m_due = 0;
    Expect();
}

void frmBlink::SetWay(BlinkWay way) {
    m_order.SetWay(way);
    m_ways[std::size_t(way)]->setChecked(true);
    m_maker->Prefer(m_order.Ahead());
}

void frmBlink::SetRate(int rate) {
    m.state.BlinkRate = rate;
    m_rateSaid->setText(QString::number(rate) + QStringLiteral(" a second"));
    if (m_plays) SetPlaying(true);
}

// The next frame is due a period after the last one was, however long that took; what is later than
// a whole period begins anew.
void frmBlink::Expect() {
    const double period = 1000.0 / m_rate->value();
    const auto now = double(m_clock.nsecsElapsed()) / 1e6;
    m_due = std::max(m_due + period, now - period);
    m_tick.start(std::max(0, int(m_due - now)));
}

void frmBlink::Tick() {
    if (!m_plays) return;
    const bool waits = !m_maker->Progress().fits;
    if (m_order.Advance([this](std::size_t frame) { return m_maker->IsMade(frame); }, waits))
        Moved();
    Expect();
}

void frmBlink::Moved() {
    if (m_isOld) return Arrange();
    m_maker->Prefer(m_order.Ahead());
    ShowCurrent();
}

void frmBlink::Step(int by) {
    if (m_order.IsEmpty()) return;
    SetPlaying(false);
    m_order.Step(by);
    Moved();
}

void frmBlink::GoToEnd(bool last) {
    if (m_order.IsEmpty()) return;
    m_order.GoTo(last ? m_order.Frames().back() : m_order.Frames().front());
    Step(0);
}

void frmBlink::Arrange() {
    if (m_frames.empty()) return;
    m_isOld = false;
    m_order.Arrange(m_frames, m.state.BlinkByScore, m.state.BlinkSkipRejected);
    m_maker->Prefer(m_order.Ahead());
    ShowCurrent();
    ShowProgress();
}

// A frame that is not made yet is not shown under its name: the pane is empty until it is.
void frmBlink::ShowCurrent() {
    if (m_order.IsEmpty()) return;
    const std::size_t number = m_order.Current();
    const BlinkFrame& frame = m_frames[number];
    m_pane->SetFrame(m_maker->Frame(number));
    m_pane->SetMedian(m_maker->Median());
    m_pane->SetCorner(ToQt(CornerText(frame)),
                      {frame.mark, m.marks.KeptAside(frame.path).has_value()});
    const auto faults = m_maker->Faults();
    const auto fault = faults.find(number);
    m_pane->SetHint(fault == faults.end() ? QStringLiteral("Being made") : ToQt(fault->second));
}

void frmBlink::SetDifference(bool shown) {
    m_maker->WantMedian(shown);
    m_pane->SetSplit(shown);
}

void frmBlink::MarksChanged() {
    bool changed = false;
    for (BlinkFrame& frame : m_frames) {
        // Of another folder only what is being written is known, and that not whole.
        if (FolderOf(frame.path) != m.controls.FileListBox->Path()) continue;
        const Mark mark = m.marks.MarkOf(frame.path).value_or(frame.mark);
        changed = changed || mark != frame.mark;
        frame.mark = mark;
    }
    if (changed || m_order.IsEmpty()) Arrange();
}

void frmBlink::MarkCurrent(const MarkChange& change) {
    if (m_order.IsEmpty()) return;
    BlinkFrame& frame = m_frames[m_order.Current()];
    frame.mark = Changed(frame.mark, change); // ahead of those who follow
    m_isOld = true;
    m.marks.MarkFiles(std::vector<std::string>{frame.path}, change);
    m.shell.ShowMessage(SaidOfChange(change) + " - " + frame.name);
    ShowCurrent();
}

struct frmBlink::Key {
    int key; // Qt::Key with its modifiers
    const char* name;
    const char* says;
    std::function<void(frmBlink&)> act;
    bool repeats = false; // while it is held
};

const std::vector<frmBlink::Key>& frmBlink::Keys() {
    static const std::vector<Key> kKeys = [] {
        std::vector<Key> keys{
            {Qt::Key_Space, "Space", "stops on the frame shown, and goes on",
             [](frmBlink& w) { w.m_play->click(); }},
            {Qt::Key_Right, "Right", "the next frame (also the wheel)",
             [](frmBlink& w) { w.Step(1); }, true},
            {Qt::Key_Left, "Left", "the frame before (also the wheel)",
             [](frmBlink& w) { w.Step(-1); }, true},
            {Qt::Key_Home, "Home", "the first frame", [](frmBlink& w) { w.GoToEnd(false); }},
            {Qt::Key_End, "End", "the last frame", [](frmBlink& w) { w.GoToEnd(true); }},
            {Qt::Key_Up, "Up", "faster",
             [](frmBlink& w) { w.m_rate->setValue(w.m_rate->value() + 1); }, true},
            {Qt::Key_Down, "Down", "slower",
             [](frmBlink& w) { w.m_rate->setValue(w.m_rate->value() - 1); }, true},
            {Qt::Key_F, "F", "plays forward", [](frmBlink& w) { w.SetWay(BlinkWay::Forward); }},
            {Qt::Key_B, "B", "plays back", [](frmBlink& w) { w.SetWay(BlinkWay::Back); }},
            {Qt::Key_T, "T", "plays to and fro", [](frmBlink& w) { w.SetWay(BlinkWay::ToAndFro); }},
            {Qt::Key_D, "D", "the difference from the series beside the frame",
             [](frmBlink& w) { w.m_differs->toggle(); }},
            {Qt::Key_Plus, "+", "closer (also Ctrl and the wheel)",
             [](frmBlink& w) { w.m_pane->Zoom(1); }, true},
            {Qt::Key_Minus, "-", "farther (also Ctrl and the wheel)",
             [](frmBlink& w) { w.m_pane->Zoom(-1); }, true},
            {Qt::Key_9, "9", "the whole frame", [](frmBlink& w) { w.m_pane->Fit(); }},
            {Qt::Key_1, "1", "full size", [](frmBlink& w) { w.m_pane->FullSize(); }},
            {Qt::Key_K, "K", "marks the frame shown to keep",
             [](frmBlink& w) { w.MarkCurrent(Decide(Decision::Keep)); }},
            {Qt::Key_J, "J", "marks the frame shown as rejected",
             [](frmBlink& w) { w.MarkCurrent(Decide(Decision::Reject)); }},
            {Qt::Key_H, "H", "takes mark and stars of the frame shown away",
             [](frmBlink& w) { w.MarkCurrent(ClearMark()); }},
            {(Qt::ControlModifier | Qt::Key_Z).toCombined(), "Ctrl+Z",
             "takes the last command back",
             [](frmBlink& w) { w.m.controls.UndoButton->trigger(); }},
        };
        for (int stars = 0; stars <= kMostStars; ++stars)
            keys.push_back({int(Qt::ControlModifier) | (Qt::Key_0 + stars),
                            stars == 0 ? "Ctrl+0 to Ctrl+5" : "", "stars for the frame shown",
                            [stars](frmBlink& w) { w.MarkCurrent(Rate(stars)); }});
        return keys;
    }();
    return kKeys;
}

std::vector<keys::KeyLine> frmBlink::KeyLines() {
    std::vector<keys::KeyLine> lines;
    for (const Key& key : Keys())
        if (*key.name) keys::AddLine(lines, key.name, key.says);
    keys::AddLine(lines, "Esc", "closes the window");
    return lines;
}

// A sign of the number pad, or one that takes Shift on some keyboards, is the same.
void frmBlink::keyPressEvent(QKeyEvent* event) {
    auto with = event->modifiers() & ~Qt::KeypadModifier;
    if (event->key() == Qt::Key_Plus) with &= ~Qt::ShiftModifier;
    const int pressed = int(with) | event->key();
    const auto& keys = Keys();
    const auto found =
        std::find_if(keys.begin(), keys.end(), [&](const Key& key) { return key.key == pressed; });
    if (found != keys.end() && event->isAutoRepeat() && !found->repeats) return;
    if (found != keys.end()) return found->act(*this);
    QDialog::keyPressEvent(event);
}

} // namespace tarn
