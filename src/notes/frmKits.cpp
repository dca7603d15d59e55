#include "notes/frmKits.h"

#include "common/paths.h"
#include "history/Changes.h"
#include "platform/QtText.h"
#include "platform/WholeFile.h"
#include "sky/headers/FrameHeader.h"
#include "widgets/FileListBox.h"
#include "widgets/Named.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

constexpr QSize kDesign(620, 360);
enum Column { kKind, kName, kHeaders, kColumns };

const char* CaptionOf(NoteEntry entry) {
    return NoteEntryRows()[static_cast<std::size_t>(entry)].caption;
}

} // namespace

frmKits::frmKits(Context& context)
    : m(context), m_place(*this, context.state.KitsPlace),
      m_table(Named(new QTableWidget(0, kColumns), "KitsTable", "Kit")),
      m_fault(Named(new QLabel(), "KitsFault")) {
    setObjectName(QStringLiteral("frmKits"));
    setWindowTitle(QStringLiteral("Tarn_View - Kit"));
    m_table->setHorizontalHeaderLabels({QStringLiteral("Kind"), QStringLiteral("Name in notes"),
                                        QStringLiteral("Names in headers, ; between")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setTabKeyNavigation(false);
    m_table->setCornerButtonEnabled(false);
    if (auto* corner = m_table->findChild<QAbstractButton*>()) // never seen, yet found by readers
        Named(corner, "KitsCornerButton", "Select all");
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_fault->setTextFormat(Qt::PlainText);
    m_fault->setWordWrap(true);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_table, 1);
    all->addWidget(m_fault);
    MakeButtons();
}

void frmKits::MakeButtons() {
    auto* buttons = new QHBoxLayout();
    auto* add = NamedButton("KitsAddButton", "&Add");
    auto* fromPicture = NamedButton("KitsPictureButton", "Add from &Picture",
                                    "What the header of the picture shown names");
    auto* remove = NamedButton("KitsRemoveButton", "&Remove");
    auto* keep = NamedButton("KitsKeepButton", "&OK");
    auto* cancel = NamedButton("KitsCancelButton", "Cancel");
    for (QPushButton* button : {add, fromPicture, remove}) buttons->addWidget(button);
    buttons->addStretch(1);
    for (QPushButton* button : {keep, cancel}) buttons->addWidget(button);
    static_cast<QVBoxLayout*>(layout())->addLayout(buttons);
    connect(add, &QPushButton::clicked, this, [this] {
        AddRow({});
        m_table->setCurrentCell(m_table->rowCount() - 1, kName);
        m_table->editItem(m_table->currentItem());
    });
    connect(fromPicture, &QPushButton::clicked, this, [this] { AddFromPicture(); });
    connect(remove, &QPushButton::clicked, this,
            [this] { m_table->removeRow(m_table->currentRow()); });
    connect(keep, &QPushButton::clicked, this, [this] { KeepButton_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

Outcome frmKits::ShowKits() {
    if (m.state.NotesFolder.empty())
        return Outcome::Refused("The kit list stands in the notes folder, which has not been set");
    if (isVisible()) { // what is being edited stays
        raise();
        activateWindow();
        return Outcome::Did();
    }
    m_path = JoinPath(m.state.NotesFolder, kKitFile);
    m_before.clear();
    if (m.files.Exists(m_path)) {
        std::string error;
        const auto bytes = ReadWhole(m.files, m_path, kLargestKit, &error);
        if (!bytes) return Outcome::Refused("ERROR - " + m_path + ": " + error);
        m_before = *bytes;
    }
    m_table->setRowCount(0);
    for (const KitItem& item : ParseKit(m_before)) AddRow(item);
    m_fault->setText(m_table->rowCount() > 0
                         ? QString()
                         : QStringLiteral("No kit yet: add a thing of yours, or take over what the "
                                          "header of the picture shown names."));
    m_place.Restore(kDesign);
    show();
    raise();
    activateWindow();
    return Outcome::Did();
}

void frmKits::AddRow(const KitItem& item) {
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    auto* kind = Named(new QComboBox(), "KitsKind_" + QString::number(row), "Kind");
    for (const NoteEntry entry : kKitEntries) kind->addItem(QString::fromLatin1(CaptionOf(entry)));
    kind->setCurrentText(QString::fromLatin1(CaptionOf(item.entry)));
    m_table->setCellWidget(row, kKind, kind);
    m_table->setItem(row, kName, new QTableWidgetItem(ToQt(item.name)));
    std::string names;
    for (const std::string& name : item.headerNames) names += (names.empty() ? "" : "; ") + name;
    m_table->setItem(row, kHeaders, new QTableWidgetItem(ToQt(names)));
}

// What the list has no name for yet.
void frmKits::AddFromPicture() {
    const FrameHeader header = ReadFrameHeader(m.state.Filename, {});
    std::vector<KitItem> items;
    for (int row = 0; row < m_table->rowCount(); ++row) items.push_back(ItemOf(row));
    int added = 0;
    for (const auto& [entry, written] : {std::pair(NoteEntry::Telescope, header.telescope),
                                         {NoteEntry::Lens, header.lens},
                                         {NoteEntry::Camera, header.camera},
                                         {NoteEntry::Filter, header.filter}}) {
        const bool isKnown =
            std::any_of(kKitEntries.begin(), kKitEntries.end(),
                        [&](NoteEntry each) { return KitFor(items, each, written) != nullptr; });
        if (written.empty() || isKnown) continue;
        AddRow({entry, written, {written}});
        ++added;
    }
    const std::string name = "'" + LastPart(m.state.Filename) + "'";
    m_fault->setText(added > 0              ? QString()
                     : header.fault.empty() ? ToQt(name + " names nothing new")
                                            : ToQt(name + ": " + header.fault));
}

std::string frmKits::Cell(int row, int column) const {
    const QTableWidgetItem* item = m_table->item(row, column);
    return item ? FromQt(item->text().trimmed()) : std::string();
}

KitItem frmKits::ItemOf(int row) const {
    const auto* kind = static_cast<QComboBox*>(m_table->cellWidget(row, kKind));
    return {kKitEntries[std::size_t(kind->currentIndex())], Cell(row, kName),
            HeaderNamesOf(Cell(row, kHeaders))};
}

// Another program's change of the file since is not written over.
void frmKits::KeepButton_Click() {
    m_table->setCurrentItem(nullptr); // what is being typed is taken
    std::vector<KitItem> items;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        KitItem item = ItemOf(row);
        if (const std::string fault = FaultOf(item); !fault.empty()) {
            m_fault->setText(ToQt(fault));
            m_table->setCurrentCell(row, kName);
            return;
        }
        items.push_back(std::move(item));
    }
    const std::string bytes = KitBytes(items, m_before);
    std::string error;
    const bool stands = m.files.Exists(m_path);
    const auto now = stands ? ReadWhole(m.files, m_path, kLargestKit, &error) : std::string();
    if (!now) return m_fault->setText(ToQt(m_path + ": " + error));
    if (*now != m_before)
        return m_fault->setText(ToQt(m_path + " has been changed since: close and open it again"));
    if (bytes != m_before || !stands) {
        Changes changes(m.history, "Kit list");
        if (!changes.Write(m_path, bytes, &error))
            return m_fault->setText(ToQt("NOT kept: " + m_path + ": " + error));
    }
    accept();
    m.shell.ShowMessage("Kit list saved to " + m_path);
}

} // namespace tarn
