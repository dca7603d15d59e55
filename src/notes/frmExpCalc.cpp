#include "notes/frmExpCalc.h"

#include "notes/FrmNewNotes.h"
#include "notes/NoteWindows.h"
#include "platform/QtText.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace tarn {

frmExpCalc::frmExpCalc(const WindowState& places, FrmNewNotes& composer) : m_composer(composer) {
    setObjectName(QStringLiteral("frmExpCalc"));
    setWindowTitle(QStringLiteral("Tarn View - Expousre calculator"));
    KeepOnTop(*this);
    auto* all = new QVBoxLayout(this);
    all->addLayout(MakeRows());
    all->addStretch();
    all->addLayout(MakeCommands());
    PutAtPlace(*this, places.ExpCalcPlace);
}

QLayout* frmExpCalc::MakeRows() {
    auto* grid = new QGridLayout();
    grid->addWidget(new QLabel(QStringLiteral("Secs.")), 0, 0);
    grid->addWidget(new QLabel(QStringLiteral("Exps.")), 0, 1);
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    for (int i = 0; i < static_cast<int>(kExposureRows); ++i) {
        Row& row = m_rows[static_cast<std::size_t>(i)];
        const QString number = QString::number(i + 1);
        row.seconds = Named(new QLineEdit(), "TextSec" + number, "Seconds " + number);
        row.frames = Named(new QLineEdit(), "TextExp" + number, "Number of exposures " + number);
        row.result = Named(new QLabel(), "LabelCalc" + number);
        row.result->setMinimumWidth(36 * em);
        for (QLineEdit* box : {row.seconds, row.frames}) box->setMaximumWidth(12 * em);
        grid->addWidget(row.seconds, i + 1, 0);
        grid->addWidget(row.frames, i + 1, 1);
        grid->addWidget(row.result, i + 1, 2);
    }
    m_labelTotal = Named(new QLabel(), "LabelTotal");
    grid->addWidget(m_labelTotal, static_cast<int>(kExposureRows) + 1, 2);
    grid->setColumnStretch(2, 1);
    return grid;
}

QLayout* frmExpCalc::MakeCommands() {
    auto* bar = new QHBoxLayout();
    const auto add = [&](const char* name, const char* caption, const char* tooltip,
                         void (frmExpCalc::*command)()) {
        QPushButton* button = NamedButton(name, caption, tooltip);
        connect(button, &QPushButton::clicked, this, [this, command] { (this->*command)(); });
        bar->addWidget(button);
        return button;
    };
    add("CommandCalc", "Calculate", "", &frmExpCalc::CommandCalc_Click)->setDefault(true);
    add("CommandFill", "Fill", "Fill in Exposure to Format form", &frmExpCalc::CommandFill_Click);
    add("CommandClear", "Clear", "", &frmExpCalc::CommandClear_Click);
    bar->addStretch();
    return bar;
}

void frmExpCalc::CommandCalc_Click() {
    std::array<ExposureInput, kExposureRows> input;
    for (std::size_t i = 0; i < kExposureRows; ++i)
        input[i] = {FromQt(m_rows[i].seconds->text()), FromQt(m_rows[i].frames->text())};
    m_sum.emplace(input);
    for (std::size_t i = 0; i < kExposureRows; ++i)
        m_rows[i].result->setText(ToQt(m_sum->RowText(i)));
    m_labelTotal->setText(ToQt(m_sum->TotalText()));
}

void frmExpCalc::CommandFill_Click() {
    const auto text = m_sum ? m_sum->FillText() : std::nullopt;
    if (text) m_composer.SetExposure(*text);
}

void frmExpCalc::CommandClear_Click() {
    for (const Row& row : m_rows) row.seconds->clear();
    for (const Row& row : m_rows) row.frames->clear();
}

} // namespace tarn
