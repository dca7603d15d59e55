#include "night/frmSites.h"

#include "common/numbers.h"
#include "platform/QtText.h"
#include "sky/place/SiteList.h"
#include "widgets/Named.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr QSize kDesign(620, 360);
constexpr int kColumns = 5;

std::string Shown(double value) {
    constexpr int kDigits = 5; // of degrees: a metre
    std::string text = FormatFixed(value, kDigits);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

std::vector<std::string> CellsOf(const NamedSite& site) {
    return {site.name, Shown(site.site.latitude), Shown(site.site.longitude),
            Shown(site.site.height),
            site.zoneMinutes ? Shown(*site.zoneMinutes / 60.0) : std::string()};
}

} // namespace

frmSites::frmSites(Context& context)
    : m(context), m_place(*this, context.state.SitesPlace),
      m_table(Named(new QTableWidget(0, kColumns), "SitesTable", "Sites")),
      m_otherwise(Named(new QComboBox(), "SitesOtherwise", "Site of pictures without one")),
      m_fault(Named(new QLabel(), "SitesFault")) {
    setObjectName(QStringLiteral("frmSites"));
    setWindowTitle(QStringLiteral("Tarn_View - Sites"));
    m_table->setHorizontalHeaderLabels(
        {QStringLiteral("Name"), QStringLiteral("Latitude"), QStringLiteral("Longitude, east +"),
         QStringLiteral("Height, m"), QStringLiteral("Zone, hours")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setTabKeyNavigation(false);
    m_table->setCornerButtonEnabled(false);
    if (auto* corner = m_table->findChild<QAbstractButton*>()) // never seen, yet found by readers
        Named(corner, "SitesCornerButton", "Select all sites");
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_fault->setTextFormat(Qt::PlainText);
    m_fault->setWordWrap(true);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_table, 1);
    auto* choice = new QHBoxLayout();
    auto* label = new QLabel(QStringLiteral("&Pictures that do not say their site:"));
    label->setBuddy(m_otherwise);
    choice->addWidget(label);
    choice->addWidget(m_otherwise, 1);
    all->addLayout(choice);
    all->addWidget(m_fault);
    auto* buttons = new QHBoxLayout();
    auto* add = NamedButton("SitesAddButton", "&Add");
    auto* remove = NamedButton("SitesRemoveButton", "&Remove");
    auto* keep = NamedButton("SitesKeepButton", "&OK");
    auto* cancel = NamedButton("SitesCancelButton", "Cancel");
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch(1);
    buttons->addWidget(keep);
    buttons->addWidget(cancel);
    all->addLayout(buttons);
    connect(add, &QPushButton::clicked, this, [this] {
        AddRow(std::vector<std::string>(kColumns));
        m_table->setCurrentCell(m_table->rowCount() - 1, 0);
        m_table->editItem(m_table->currentItem());
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        m_table->removeRow(m_table->currentRow());
        FillChoice();
    });
    connect(keep, &QPushButton::clicked, this, [this] { KeepButton_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_table, &QTableWidget::cellChanged, this, [this] { FillChoice(); });
}

void frmSites::ShowSites() {
    {
        const QSignalBlocker quiet(m_table);
        m_table->setRowCount(0);
        for (const NamedSite& site : ParseSites(m.state.SkySites)) AddRow(CellsOf(site));
    }
    m_fault->clear();
    m_otherwise->clear();
    FillChoice();
    m_otherwise->setCurrentIndex(std::max(0, m_otherwise->findText(ToQt(m.state.SkySite))));
    if (!isVisible()) m_place.Restore(kDesign);
    show();
    raise();
    activateWindow();
}

void frmSites::AddRow(const std::vector<std::string>& cells) {
    const QSignalBlocker quiet(m_table);
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    for (int column = 0; column < kColumns; ++column)
        m_table->setItem(row, column, new QTableWidgetItem(ToQt(cells[std::size_t(column)])));
}

std::string frmSites::Cell(int row, int column) const {
    const QTableWidgetItem* item = m_table->item(row, column);
    return item ? FromQt(item->text()) : std::string();
}

void frmSites::FillChoice() {
    const QString chosen = m_otherwise->currentText();
    m_otherwise->clear();
    m_otherwise->addItem(QStringLiteral("have none"));
    for (int row = 0; row < m_table->rowCount(); ++row)
        if (!Cell(row, 0).empty()) m_otherwise->addItem(ToQt(Cell(row, 0)));
    m_otherwise->setCurrentIndex(std::max(0, m_otherwise->findText(chosen)));
}

void frmSites::KeepButton_Click() {
    std::vector<NamedSite> sites;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        std::string fault;
        const auto site = SiteOfCells(Cell(row, 0), Cell(row, 1), Cell(row, 2), Cell(row, 3),
                                      Cell(row, 4), fault);
        if (!site) {
            m_fault->setText(ToQt(fault));
            m_table->setCurrentCell(row, 0);
            return;
        }
        sites.push_back(*site);
    }
    m.state.SkySites = SitesText(sites);
    m.state.SkySite =
        m_otherwise->currentIndex() > 0 ? FromQt(m_otherwise->currentText()) : std::string();
    accept();
    onKept();
}

} // namespace tarn
