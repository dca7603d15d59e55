#include "navigation/frmFilter.h"

#include "desk/batch/BatchRun.h"
#include "navigation/ClassFilter.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/WindowPlaces.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr int kFromList = 16; // logical pixels, at the first opening

} // namespace

const WindowKey<frmFilter> frmFilter::kKeys[] = {
    {Qt::Key_Return, "filter by the text", &frmFilter::TextFilter_Enter},
    {Qt::Key_Enter, "filter by the text", &frmFilter::TextFilter_Enter},
    {Qt::Key_Escape, "without the text; then close", &frmFilter::LeaveText},
};

std::vector<keys::KeyLine> frmFilter::KeyLines() {
    return LinesOf(kKeys);
}

frmFilter::frmFilter(Context& context)
    : QDialog(context.controls.FileListBox->window()), m(context), m_boxes{},
      m_custom(new QCheckBox(QStringLiteral("Custom Filter"))), m_text(new QLineEdit()),
      m_presets(new QComboBox()), m_found(new QLabel()), m_place(*this, context.state.FilterPlace) {
    setObjectName(QStringLiteral("frmFilter"));
    setWindowTitle(QStringLiteral("Tarn_View - Filter"));
    KeepOnTop(*this);
    MakeContents();
    connect(m_custom, &QCheckBox::toggled, this, [this](bool custom) {
        m.state.FilterIsCustom = custom;
        CheckCustom_Click();
    });
    connect(m_presets, &QComboBox::activated, this, [this] { ComboFilter_Click(); });
    connect(m_text, &QLineEdit::textChanged, this,
            [this](const QString& text) { m.state.FilterCustom = FromQt(text); });
    connect(m.controls.FileListBox, &FileListBox::leftOutChanged, this, [this] { TellFound(); });
    m_text->installEventFilter(this);
}

void frmFilter::MakeContents() {
    m_custom->setObjectName(QStringLiteral("CheckCustom"));
    m_text->setObjectName(QStringLiteral("TextFilter"));
    m_text->setAccessibleName(QStringLiteral("Custom Filter pattern"));
    m_text->setPlaceholderText(QStringLiteral("*M31*"));
    m_text->setMinimumWidth(24 * fontMetrics().horizontalAdvance(QLatin1Char('0')));
    m_presets->setObjectName(QStringLiteral("ComboFilter"));
    m_presets->setAccessibleName(QStringLiteral("Presets"));
    m_presets->setMinimumContentsLength(16);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_custom);
    all->addWidget(m_text);
    m_found->setObjectName(QStringLiteral("FoundLabel"));
    m_found->setTextFormat(Qt::PlainText);
    all->addWidget(m_found);
    auto* bar = new QHBoxLayout();
    bar->addWidget(m_presets, 1);
    const auto command = [&](const char* name, const char* caption, const char* tooltip) {
        auto* button = new QPushButton(QString::fromLatin1(caption));
        button->setObjectName(QString::fromLatin1(name));
        button->setToolTip(QString::fromLatin1(tooltip));
        button->setAutoDefault(false);
        bar->addWidget(button);
        return button;
    };
    connect(command("CommandAdd", "Add", "Add above text as new entry"), &QPushButton::clicked,
            this, [this] { CommandAdd_Click(); });
    connect(command("CommandDelete", "Del.", "Delete current showing entry"), &QPushButton::clicked,
            this, [this] { CommandDelete_Click(); });
    all->addLayout(bar);
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        m_boxes[i] = new QCheckBox();
        m_boxes[i]->setObjectName(QStringLiteral("CheckFilter_%1").arg(i));
        all->addWidget(m_boxes[i]);
        connect(m_boxes[i], &QCheckBox::toggled, this, [this] { CheckFilter_Click(); });
    }
    all->addStretch();
    all->setSizeConstraint(QLayout::SetFixedSize); // as high as the boxes shown
}

void frmFilter::ShowFilter() {
    const FileListBox& list = *m.controls.FileListBox;
    m.state.FilterActive = true;
    {
        const QScopedValueRollback<bool> loading(m_loading, true);
        m_text->setText(ToQt(m.state.FilterCustom));
        m_openedWith = list.Pattern();
        m_captions = FilterCaptions(m_openedWith);
        LoadPresets();
        LoadBoxes();
        m_custom->setChecked(false);
        EnableClassBoxes(false);
        if (m_closedBefore) TakeBackLastClosing();
    }
    TellFound();
    const bool firstTime = m.state.FilterPlace == WindowState().FilterPlace;
    m_place.Restore(sizeHint());
    if (firstTime) move(BesideTheList());
    show();
    raise();
    activateWindow();
    m_text->setFocus();
}

// Neither the list that it narrows nor the tree is under it.
QPoint frmFilter::BesideTheList() const {
    const FileListBox& list = *m.controls.FileListBox;
    const int top = m.controls.FolderTreeview1->mapToGlobal(QPoint(0, 0)).y();
    return {list.mapToGlobal(QPoint(list.width(), 0)).x() + kFromList, top};
}

void frmFilter::LoadPresets() {
    m_presets->clear();
    for (const std::string& preset : PresetsOf(m.state.FilterPresets))
        m_presets->addItem(ToQt(preset));
    m_presets->setCurrentIndex(-1);
}

void frmFilter::LoadBoxes() {
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        const bool used = i < m_captions.size();
        m_boxes[i]->setText(used ? ToCaption(m_captions[i]) : QString());
        m_boxes[i]->setAccessibleName(used ? QString() : QStringLiteral("No file type"));
        m_boxes[i]->setChecked(used);
        m_boxes[i]->setVisible(used);
    }
}

void frmFilter::TakeBackLastClosing() {
    for (std::size_t i = 0; i < m_captions.size(); ++i) m_boxes[i]->setChecked(m_lastTicked[i]);
    m_custom->setChecked(m_lastCustom);
    PutOnList(m_lastPattern);
}

void frmFilter::closeEvent(QCloseEvent* event) {
    if (CancelsBatch(m.state, *event)) return;
    event->accept(); // the dialog's own would reject, which closes
    if (m.state.FilterActive) Form_Unload();
}

void frmFilter::Form_Unload() {
    FileListBox& list = *m.controls.FileListBox;
    m.state.FilterActive = m.state.FilterIsCustom = false;
    m_lastTicked = Ticked();
    m_lastCustom = m_custom->isChecked();
    m_lastPattern = list.Pattern();
    m_closedBefore = true;
    EnableClassBoxes(true);
    PutOnList(m_openedWith);
    m.navigation.SelectRow(list.RowOf(m.state.FileNameOnly));
    m.state.FilterPresets = StoredPresets(Presets());
}

void frmFilter::CheckFilter_Click() {
    if (m_loading) return;
    // A list of all files has no boxes, and none of them is cleared.
    PutOnList(m_captions.empty() ? m_openedWith : TickedPattern(m_captions, Ticked()));
}

void frmFilter::CheckCustom_Click() {
    if (!m_custom->isChecked()) {
        EnableBoxes(true);
        CheckFilter_Click();
    } else if (m_text->text().isEmpty()) {
        m_custom->setChecked(false);
    } else {
        PutTextOnList();
        EnableBoxes(false);
    }
}

void frmFilter::ComboFilter_Click() {
    m_text->setText(m_presets->currentText());
    if (m_custom->isChecked()) PutTextOnList();
}

void frmFilter::TextFilter_Enter() {
    if (m_custom->isChecked())
        PutTextOnList();
    else
        m_custom->setChecked(true);
}

bool frmFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        ActOnKey(*this, kKeys, static_cast<QKeyEvent*>(event)->key()))
        return true;
    return QDialog::eventFilter(watched, event);
}

void frmFilter::LeaveText() {
    if (!m_custom->isChecked()) close();
    m_custom->setChecked(false);
}

void frmFilter::CommandAdd_Click() {
    if (m_text->text().isEmpty()) return;
    const int chosen = m_presets->currentIndex();
    m_presets->addItem(m_text->text());
    m_presets->setCurrentIndex(chosen);
    m.state.FilterPresets = StoredPresets(Presets());
    m.shell.ShowMessage("Entry added to ComboFilter box");
}

void frmFilter::CommandDelete_Click() {
    if (m_presets->currentIndex() < 0) return;
    m_presets->removeItem(m_presets->currentIndex());
    m_presets->setCurrentIndex(-1); // no other entry has been chosen
    m.state.FilterPresets = StoredPresets(Presets());
    m.shell.ShowMessage(FromQt(m_text->text()) + " - removed from ComboFilter box");
}

void frmFilter::EnableBoxes(bool enabled) {
    for (QCheckBox* box : m_boxes) box->setEnabled(enabled);
}

void frmFilter::EnableClassBoxes(bool enabled) {
    for (QCheckBox* box : {m.controls.PCheck, m.controls.VCheck, m.controls.WCheck})
        SetEnabled(box, enabled);
}

// What the list refuses shows no message: it stays as it is.
void frmFilter::PutOnList(const std::string& pattern) {
    if (IsPattern(pattern)) m.controls.FileListBox->SetPattern(pattern);
    m.navigation.Update_Num_Files(0);
}

void frmFilter::PutTextOnList() {
    PutOnList(PatternOfText(FromQt(m_text->text())));
}

void frmFilter::TellFound() {
    if (!m.state.FilterActive) return;
    const int count = m.controls.FileListBox->Count();
    m_found->setText(count == 0   ? QStringLiteral("No file fits the filter")
                     : count == 1 ? QStringLiteral("1 file fits")
                                  : QStringLiteral("%1 files fit").arg(count));
}

std::array<bool, kFilterBoxes> frmFilter::Ticked() const {
    std::array<bool, kFilterBoxes> ticked{};
    for (std::size_t i = 0; i < m_boxes.size(); ++i) ticked[i] = m_boxes[i]->isChecked();
    return ticked;
}

std::vector<std::string> frmFilter::Presets() const {
    std::vector<std::string> presets;
    presets.reserve(static_cast<std::size_t>(m_presets->count()));
    for (int i = 0; i < m_presets->count(); ++i) presets.push_back(FromQt(m_presets->itemText(i)));
    return presets;
}

} // namespace tarn
