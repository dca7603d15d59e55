#include "Acts.h"

#include "desk/controls/SlideButtons.h"
#include "platform/QtText.h"
#include "slides/ShowSignals.h"
#include "slides/frmSlideShow.h"
#include "widgets/FolderTreeview.h"
#include "widgets/webpane/PageBrowser.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>
#include <QSpinBox>

#include <algorithm>
#include <fstream>

namespace tarn::testing {

namespace {

constexpr int kPumpsOfAnAct = 300; // then it is ended
constexpr int kKeyActs = 7;        // milliseconds from the release of a key to its effect

constexpr Qt::Key kKeys[] = {
    Qt::Key_Space, Qt::Key_Down,  Qt::Key_Up,        Qt::Key_N,      Qt::Key_P,    Qt::Key_PageUp,
    Qt::Key_Home,  Qt::Key_End,   Qt::Key_Comma,     Qt::Key_Period, Qt::Key_Left, Qt::Key_Right,
    Qt::Key_R,     Qt::Key_L,     Qt::Key_M,         Qt::Key_I,      Qt::Key_O,    Qt::Key_PageDown,
    Qt::Key_V,     Qt::Key_S,     Qt::Key_F,         Qt::Key_1,      Qt::Key_2,    Qt::Key_4,
    Qt::Key_C,     Qt::Key_D,     Qt::Key_Y,         Qt::Key_U,      Qt::Key_Z,    Qt::Key_A,
    Qt::Key_F1,    Qt::Key_F2,    Qt::Key_F3,        Qt::Key_F4,     Qt::Key_F5,   Qt::Key_F6,
    Qt::Key_F7,    Qt::Key_Print, Qt::Key_Delete,    Qt::Key_Insert, Qt::Key_B,    Qt::Key_E,
    Qt::Key_T,     Qt::Key_X,     Qt::Key_Escape,    Qt::Key_Tab,    Qt::Key_G,    Qt::Key_Return,
    Qt::Key_Plus,  Qt::Key_Minus, Qt::Key_Backspace, Qt::Key_K,      Qt::Key_J,    Qt::Key_H,
    Qt::Key_3,     Qt::Key_Q};

const char* const kTexts[] = {"clear",       "\xC3\xA9toile 12 x 300 s", "x",   "120",     "-5",
                              "*.jpg;*.png", "M 31 \xE2\x98\x85",        "a/b", "new name"};

} // namespace

Acts::Acts(World& world, Dice& dice, Inventory& inventory, OneFile& oneFile, std::uint64_t seed)
    : m(world), m_dice(dice), m_inventory(inventory), m_oneFile(oneFile), m_seed(seed) {
    constexpr int kSoon = 3;
    QObject::connect(&m_modal, &QTimer::timeout, &m_modal, [this] { AnswerModal(); });
    m_modal.start(kSoon);
}

void Acts::Do(int number) {
    struct Row {
        const char* kind;
        int weight;
        Act act;
    };
    static const Row rows[] = {
        {"key", 30, &Acts::PressKey},      {"control", 20, &Acts::ClickControl},
        {"menu", 12, &Acts::UseMenu},      {"row", 14, &Acts::SelectRow},
        {"folder", 4, &Acts::EnterFolder}, {"write", 6, &Acts::Write},
        {"window", 25, &Acts::UseWindow},  {"open", 5, &Acts::OpenWindow},
        {"close", 6, &Acts::CloseWindow},  {"show", 4, &Acts::RunShow},
        {"other", 6, &Acts::OtherProgram}, {"picture", 6, &Acts::UsePicture},
        {"image", 3, &Acts::StepImage},    {"wait", 3, &Acts::Wait},
        {"quit", 2, &Acts::Quit}};
    m_number = number;
    m_dice.Begin(m_seed, std::uint64_t(number));
    m_pumps = 0;
    carries = false;
    m.events->onPump = [this] { OnPump(); };
    int throwOf = 0;
    for (const Row& row : rows) throwOf += row.weight;
    throwOf = m_dice.Below(throwOf);
    const Row* row = rows;
    for (; throwOf >= row->weight; ++row) throwOf -= row->weight;
    ++counts[row->kind];
    m_acting = true;
    AnswerPopup();
    (this->*row->act)();
    m_acting = false;
    QTest::qWait(kKeyActs);
    m.calls.clear();
}

bool Acts::MayUse(const QWidget& widget) const {
    const House& house = m.house();
    if (!widget.isVisible() || !widget.isEnabled()) return false;
    if (&widget == house.controls.FolderTreeview1) return false; // it shows the whole disk
    return &widget != house.controls.FolderUpButton ||
           house.controls.FileListBox->Path().starts_with(m.Folder("pictures/"));
}

bool Acts::MayTrigger(const QAction& entry) const {
    const MainControls& c = m.house().controls;
    return entry.isEnabled() && entry.isVisible() && !entry.menu() && !entry.isSeparator() &&
           &entry != c.Exit && &entry != c.QuitButton;
}

std::vector<QWidget*> Acts::Windows() const {
    std::vector<QWidget*> windows;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->isEnabled() && window->isWindow() &&
            window->windowType() != Qt::Popup && window->windowType() != Qt::ToolTip &&
            window != &m.house().window)
            windows.push_back(window);
    std::sort(windows.begin(), windows.end(),
              [](const QWidget* a, const QWidget* b) { return a->objectName() < b->objectName(); });
    return windows;
}

void Acts::KeyInto(QWidget& widget) {
    const Qt::Key key = m_dice.Of(kKeys);
    const Qt::KeyboardModifiers with = m_dice.OneIn(8)    ? Qt::ControlModifier
                                       : m_dice.OneIn(12) ? Qt::ShiftModifier
                                                          : Qt::NoModifier;
    Say("key " + FromQt(QKeySequence(key | with).toString()) + " into " +
        FromQt(widget.objectName()));
    QTest::keyClick(&widget, key, with);
}

void Acts::PressKey() {
    const MainControls& c = m.house().controls;
    // By their kind: picture, clip, log, page, text.
    QWidget* const panes[] = {c.Picture1, c.Picture2, c.LogText, c.WebBrowser1, c.LogText};
    QWidget* pane = panes[std::size_t(m.house().state.Kind)];
    QWidget* focused = QApplication::focusWidget();
    const int choice = m_dice.Below(6);
    QWidget* widget = choice == 0 ? c.FileListBox : choice == 1 && focused ? focused : pane;
    if (MayUse(*widget)) KeyInto(*widget);
}

void Acts::ClickControl() {
    const ControlRow& row = m_dice.Of(ControlRows());
    auto* widget = m.house().window.findChild<QWidget*>(QString::fromLatin1(row.name));
    if (!widget || !MayUse(*widget)) return Say("nothing, " + std::string(row.name) + " is off");
    Use(*widget);
}

void Acts::UseMenu() {
    std::vector<QAction*> entries;
    for (QAction* entry : m.house().window.findChildren<QAction*>())
        if (!entry->menu() && !entry->objectName().isEmpty()) entries.push_back(entry);
    QAction* entry = m_dice.Of(entries);
    if (!MayTrigger(*entry)) return Say("nothing, " + FromQt(entry->objectName()) + " is off");
    Say("menu " + FromQt(entry->objectName()));
    entry->trigger();
}

void Acts::SelectRow() {
    FileListBox& list = *m.house().controls.FileListBox;
    if (list.Count() == 0) {
        QCheckBox* pictures = m.house().controls.PCheck;
        return pictures->isChecked() ? EnterFolder() : Use(*pictures);
    }
    const int row = m_dice.Below(list.Count());
    const auto with = m_dice.OneIn(5)   ? Qt::ControlModifier
                      : m_dice.OneIn(8) ? Qt::ShiftModifier
                                        : Qt::NoModifier;
    const QModelIndex index = list.model()->index(row, 0);
    list.scrollTo(index);
    const QPoint place = list.visualRect(index).center();
    const bool twice = m_dice.OneIn(10);
    Say("row " + list.Text(row) + (twice ? " twice" : ""));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, with, place);
    if (twice) QTest::mouseDClick(list.viewport(), Qt::LeftButton, with, place);
}

void Acts::EnterFolder() {
    const std::string folder = m_dice.Of(m.PictureFolders());
    const bool tree = m_dice.OneIn(2);
    Say((tree ? "tree " : "open ") + folder);
    if (tree)
        m.house().controls.FolderTreeview1->SetSelectedPath(folder);
    else
        m.house().Open(folder);
}

void Acts::TypeInto(QWidget& widget) {
    const QString text = QString::fromUtf8(m_dice.Of(kTexts));
    Say("type " + FromQt(text) + " into " + FromQt(widget.objectName()));
    if (m_dice.OneIn(4)) QTest::keySequence(&widget, QKeySequence::SelectAll);
    for (const QChar letter : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
        QApplication::sendEvent(&widget, &press);
    }
    if (m_dice.OneIn(6)) QTest::keySequence(&widget, QKeySequence::Undo);
    if (m_dice.OneIn(6)) QTest::keyClick(&widget, Qt::Key_Return);
}

void Acts::Write() {
    TypeInto(*m.house().controls.NotesBox);
}

void Acts::Use(QWidget& widget) {
    const std::string name = FromQt(widget.window()->objectName() + "/" + widget.objectName());
    if (name.find("Save") != std::string::npos || name.find("Restore") != std::string::npos)
        carries = true;
    if (auto* button = qobject_cast<QAbstractButton*>(&widget)) {
        Say("click " + name + " " + FromQt(button->text()));
        return QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
    }
    if (auto* combo = qobject_cast<QComboBox*>(&widget)) {
        const int choice = m_dice.Below(combo->count());
        Say("choose " + name + " " + std::to_string(choice));
        combo->setCurrentIndex(choice);
        emit combo->activated(choice);
        return;
    }
    if (auto* slider = qobject_cast<QAbstractSlider*>(&widget)) {
        Say("slide " + name);
        const int width = slider->width();
        QTest::mousePress(slider, Qt::LeftButton, {}, QPoint(width / 2, slider->height() / 2));
        QTest::mouseMove(slider, QPoint(m_dice.Below(width), slider->height() / 2));
        return QTest::mouseRelease(slider, Qt::LeftButton, {},
                                   QPoint(m_dice.Below(width), slider->height() / 2));
    }
    if (qobject_cast<QLineEdit*>(&widget) || qobject_cast<QPlainTextEdit*>(&widget) ||
        qobject_cast<QAbstractSpinBox*>(&widget))
        return TypeInto(widget);
    if (auto* view = qobject_cast<QAbstractItemView*>(&widget)) {
        Say("click into " + name);
        const QPoint place(m_dice.Below(view->viewport()->width()),
                           m_dice.Below(view->viewport()->height()));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
        return;
    }
    KeyInto(widget);
}

void Acts::UseWindow() {
    const auto windows = Windows();
    if (windows.empty()) return ClickControl();
    QWidget* window = m_dice.Of(windows);
    std::vector<QWidget*> widgets;
    for (QWidget* each : window->findChildren<QWidget*>())
        if (MayUse(*each) && !each->objectName().isEmpty() &&
            !each->objectName().startsWith("qt_") && each->focusPolicy() != Qt::NoFocus)
            widgets.push_back(each);
    if (widgets.empty() || m_dice.OneIn(6)) return KeyInto(*window);
    Use(*m_dice.Of(widgets));
}

void Acts::OpenWindow() {
    const MainControls& c = m.house().controls;
    QPushButton* const buttons[] = {c.ViewButton, c.OneToOneButton, c.FilesFilterButton2,
                                    c.CommandNotesNew};
    QAction* const entries[] = {
        c.AdjustButton,       c.StretchButton,        c.FixPictureDateButton,
        c.RenameButton,       c.RenamePicturesButton, c.DisplayNotesFolderButton,
        c.ThumbFolderButton,  c.ConvertJpgSetText,    c.CreateAppendHtmlFile,
        c.HtmlThumbButton,    c.ShowLogsButton,       c.SetFileTypesButton,
        c.PrintPreviewButton, c.SyncDatesButton,      c.GenerateThumbButton,
        c.FirstStepsButton,   c.HelpKeysButton,       c.NightButton,
        c.CornersButton,      c.StarCirclesButton,    c.BurstButton,
        c.NightReportButton,  c.SkyPanelButton,       c.SitesButton,
        c.SetClockButton,     c.KitsButton,           c.FillNotesButton,
        c.BlinkButton,        c.MoversButton,         c.SumButton,
        c.BestFramesButton,   c.FollowFolderButton,   c.ShowNewestButton};
    if (m_dice.OneIn(4)) {
        if (QPushButton* button = m_dice.Of(buttons); MayUse(*button)) Use(*button);
        return;
    }
    QAction* entry = m_dice.Of(entries);
    Say("menu " + FromQt(entry->objectName()));
    if (MayTrigger(*entry)) entry->trigger();
}

// Of a file with several, which is selected first where it is listed.
void Acts::StepImage() {
    const House& house = m.house();
    const int row = house.controls.FileListBox->RowOf("cube.fits");
    if (row >= 0 && m_dice.OneIn(2)) m.house().navigation.SelectRow(row);
    QAction* entry =
        m_dice.OneIn(3) ? house.controls.PrevImageButton : house.controls.NextImageButton;
    if (!MayTrigger(*entry)) return Say("nothing, " + FromQt(entry->objectName()) + " is off");
    Say("image " + FromQt(entry->objectName()));
    entry->trigger();
}

void Acts::CloseWindow() {
    const auto windows = Windows();
    if (windows.empty()) return Say("nothing, no window is open");
    QWidget* window = m_dice.Of(windows);
    Say("close " + FromQt(window->objectName()));
    window->close();
}

void Acts::RunShow() {
    QPushButton* button = m_dice.Of(SlideButtons(m.house().controls));
    m_inShow = m_dice.Below(10);
    if (!MayUse(*button)) return Say("nothing, shows are off");
    Say("show " + FromQt(button->objectName()));
    button->click();
}

void Acts::OtherProgram() {
    // What is there before it, so that it is known what it took.
    found += m_inventory.Check();
    m_oneFile.Look();
    std::vector<std::string> folders = m.PictureFolders();
    folders.push_back(m.Folder("notes"));
    std::vector<fs::path> files;
    std::error_code none;
    for (const std::string& folder : folders)
        for (const auto& entry : fs::directory_iterator(folder, none))
            if (entry.is_regular_file()) files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    if (!files.empty()) ChangeOneOf(files);
    m_oneFile.Look();
}

void Acts::ChangeOneOf(const std::vector<fs::path>& files) {
    enum Change { Add, Lengthen, Cut, Rename, Replace, Touch, SaveAnew, Remove, Changes };
    static const char* const told[] = {"adds a copy of", "lengthens", "cuts",       "renames",
                                       "replaces",       "touches",   "saves anew", "removes"};
    constexpr std::size_t kMany = 60;
    const fs::path& file = m_dice.Of(files);
    const fs::path& other = m_dice.Of(files);
    const fs::path fresh =
        file.parent_path() / ("added " + std::to_string(m_number) + file.extension().string());
    const int change = files.size() > kMany ? Remove : m_dice.Below(Changes);
    Say("other program " + std::string(told[change]) + " " + file.string());
    if (change != Add && change != Rename && change != Touch) m_inventory.Taken(file);
    std::error_code ignored;
    const auto copy = [&](const fs::path& from, const fs::path& to) {
        fs::copy_file(from, to, fs::copy_options::overwrite_existing, ignored);
    };
    const auto append = [this](const fs::path& to) {
        std::ofstream(to, std::ios::app | std::ios::binary) << "changed " << m_number;
    };
    if (change == Add) copy(file, fresh);
    if (change == Replace) copy(other, file);
    if (change == Lengthen) append(file);
    if (change == Cut) fs::resize_file(file, fs::file_size(file, ignored) / 2, ignored);
    if (change == Touch) fs::last_write_time(file, fs::file_time_type::clock::now(), ignored);
    if (change == Remove) fs::remove(file, ignored);
    if (change == Rename || change == SaveAnew) fs::rename(file, fresh, ignored);
    if (change == SaveAnew) {
        append(fresh);
        fs::rename(fresh, file, ignored);
    }
}

void Acts::DragIn(QWidget& widget, QPoint from) {
    const QPoint to(m_dice.Below(widget.width()), m_dice.Below(widget.height()));
    const auto send = [&](QEvent::Type type, QPoint at, Qt::MouseButtons held) {
        QMouseEvent event(type, at, widget.mapToGlobal(at),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held, {});
        QApplication::sendEvent(&widget, &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton);
    send(QEvent::MouseMove, to, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, to, {});
}

void Acts::UsePicture() {
    PictureBox& pane = *m.house().controls.Picture1;
    if (!pane.isVisible()) return Say("nothing, no picture is up");
    const QPoint place(m_dice.Below(pane.width()), m_dice.Below(pane.height()));
    const int choice = m_dice.Below(6);
    Say("picture " + std::to_string(choice));
    if (choice == 0) {
        QTest::mouseClick(&pane, Qt::RightButton, {}, place);
    } else if (choice == 1) {
        m.house().window.resize(700 + m_dice.Below(700), 500 + m_dice.Below(500));
    } else if (choice == 2) {
        QWheelEvent wheel(place, pane.mapToGlobal(place), {}, {0, m_dice.OneIn(2) ? 120 : -120}, {},
                          m_dice.OneIn(2) ? Qt::ControlModifier : Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(&pane, &wheel);
    } else if (choice == 3) {
        DragIn(pane, place);
    } else {
        QTest::mouseClick(&pane, Qt::LeftButton, {}, place);
    }
}

void Acts::Wait() {
    Say("wait");
    QTest::qWait(m_dice.Below(60));
}

void Acts::Quit() {
    if (!m_dice.OneIn(2)) return Say("nothing");
    Say("quit and start");
    const MainControls& c = m.house().controls;
    (m_dice.OneIn(3) ? c.QuitButton : c.Exit)->trigger();
}

void Acts::AnswerPopup() {
    QWidget* popup = QApplication::activePopupWidget();
    if (!popup) return;
    auto* menu = qobject_cast<QMenu*>(popup);
    const auto entries = menu ? menu->actions() : QList<QAction*>();
    popup->close();
    if (entries.isEmpty()) return;
    QAction* entry = m_dice.Of(entries);
    if (!MayTrigger(*entry)) return;
    Say("popup " + FromQt(entry->objectName()));
    entry->trigger();
}

// Windows and menus whose command has not returned: it waits in an event loop of its own.
void Acts::AnswerModal() {
    if (!m_acting) return;
    if (QApplication::activePopupWidget()) return AnswerPopup();
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || m.house().state.BatchRuns) return;
    const auto buttons = modal->findChildren<QAbstractButton*>();
    if (buttons.isEmpty() || m_dice.OneIn(4))
        modal->close();
    else
        Use(*m_dice.Of(buttons));
}

void Acts::OnPump() {
    ++m_pumps;
    if (m.house().state.SlideViewing)
        InShow();
    else if (m.house().state.BatchRuns)
        InBatch();
}

void Acts::InShow() {
    if (!m.house().slides.Signals() || !m.house().slides.Signals()->Slideloop) return;
    if (--m_inShow < 0 || m_pumps > kPumpsOfAnAct) return m.house().slides.SlideDone();
    QWidget& window = *m.house().slides.Window();
    if (m_dice.OneIn(25)) return OtherProgram();
    if (m_dice.OneIn(10)) {
        Say("drag in the show");
        return DragIn(window, QPoint(m_dice.Below(400), 100));
    }
    if (m_dice.OneIn(6))
        return QTest::mouseClick(&window, m_dice.OneIn(3) ? Qt::RightButton : Qt::LeftButton, {},
                                 QPoint(m_dice.Below(400), 100));
    KeyInto(window);
}

void Acts::InBatch() {
    const MainControls& c = m.house().controls;
    for (QPushButton* cancel : {c.BatchCancelButton, c.PrintCancelButton})
        if (cancel->isVisible() && (m_dice.OneIn(30) || m_pumps > kPumpsOfAnAct)) {
            Say("cancel");
            return QTest::mouseClick(cancel, Qt::LeftButton);
        }
    if (m_dice.OneIn(40)) return OtherProgram();
    const auto windows = Windows();
    if (m_dice.OneIn(40) && !windows.empty()) return CloseWindow();
    if (!m_dice.OneIn(8)) return;
    QWidget* focused = QApplication::focusWidget();
    KeyInto(focused ? *focused : m.house().window);
}

} // namespace tarn::testing
