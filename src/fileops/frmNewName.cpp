#include "fileops/frmNewName.h"

#include "common/paths.h"
#include "fileops/PicturePlan.h"
#include "platform/QtText.h"
#include "widgets/WindowPlaces.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr QPoint kFromMain(60, 80); // logical pixels from the main window's corner
constexpr int kNameWidth = 48;      // characters

QLabel* AddLabel(QVBoxLayout& to, const char* name) {
    auto* label = new QLabel();
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    to.addWidget(label);
    return label;
}

} // namespace

frmNewName::frmNewName(QWidget& main, const NewNameTexts& texts) : QDialog(&main) {
    setObjectName(QString::fromLatin1(texts.form));
    setWindowTitle(QString::fromLatin1(texts.title));
    setModal(true);
    KeepOnTop(*this);
    auto* all = new QVBoxLayout(this);
    m_path = AddLabel(*all, "PathText");
    m_old = AddLabel(*all, "OldNameText");
    m_new = new QLineEdit();
    m_new->setObjectName(QString::fromLatin1(texts.box));
    m_new->setAccessibleName(QStringLiteral("New filename"));
    m_new->setMinimumWidth(kNameWidth * m_new->fontMetrics().horizontalAdvance(QLatin1Char('0')));
    all->addWidget(m_new);
    m_error = AddLabel(*all, "ErrorLabel");
    m_error->setMinimumHeight(m_error->fontMetrics().lineSpacing());
    auto* buttons = new QHBoxLayout();
    auto* action = new QPushButton(QString::fromLatin1(texts.caption));
    action->setObjectName(QString::fromLatin1(texts.button));
    action->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"));
    cancel->setObjectName(QStringLiteral("CancelButton"));
    buttons->addStretch();
    buttons->addWidget(action);
    buttons->addWidget(cancel);
    all->addLayout(buttons);
    connect(action, &QPushButton::clicked, this, [this] { ActionButton_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_new, &QLineEdit::textEdited, m_error, &QLabel::clear);
}

void frmNewName::Ask(const std::string& folder, const std::string& name,
                     std::function<void(const std::string&)> accept) {
    m_oldName = name;
    m_accept = std::move(accept);
    m_path->setText(ToQt(JoinPath(folder, "")));
    m_old->setText(ToQt(name));
    m_new->setText(ToQt(name));
    m_error->clear();
    move(parentWidget()->pos() + kFromMain);
    show();
    activateWindow();
    m_new->setFocus();
    // The type stays as a rule.
    const int point = m_new->text().lastIndexOf(QLatin1Char('.'));
    m_new->setSelection(0, point > 0 ? point : m_new->text().size());
}

void frmNewName::ActionButton_Click() {
    // A name that is no text is shown otherwise than it is.
    const bool same = m_new->text() == m_old->text();
    const std::string name = same ? m_oldName : FromQt(m_new->text());
    const std::string fault = FaultOfName(name, m_oldName);
    m_error->setText(ToQt(fault));
    if (!fault.empty()) return;
    accept();
    m_accept(name);
}

} // namespace tarn
