#include "thumbnails/frmThumbFolder.h"

#include "platform/QtText.h"
#include "thumbnails/ThumbFolder.h"
#include "widgets/WindowPlaces.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr QPoint kFromMain(60, 80); // logical pixels from the main window's corner

QPushButton* AddButton(QHBoxLayout& to, const char* name, const char* caption) {
    auto* button = new QPushButton(QString::fromLatin1(caption));
    button->setObjectName(QString::fromLatin1(name));
    to.addWidget(button);
    return button;
}

} // namespace

frmThumbFolder::frmThumbFolder(QWidget& main, std::function<bool(const std::string&)> accept)
    : QDialog(&main), m_accept(std::move(accept)), m_text(new QLineEdit()),
      m_notValid(new QLabel(QString::fromLatin1(kBadSubFolder))) {
    setObjectName(QStringLiteral("frmThumbFolder"));
    setWindowTitle(QStringLiteral("Tarn_View - Set Thumbnail Sub Folder Name"));
    setModal(true);
    KeepOnTop(*this);
    auto* all = new QVBoxLayout(this);
    auto* heading =
        new QLabel(QStringLiteral("&Name of sub folder thumbnail pictures will be created in"));
    heading->setBuddy(m_text);
    all->addWidget(heading);
    m_text->setObjectName(QStringLiteral("ThumbFolderText"));
    all->addWidget(m_text);
    m_notValid->setObjectName(QStringLiteral("ThumbNotValidLabel"));
    QSizePolicy kept = m_notValid->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    m_notValid->setSizePolicy(kept);
    all->addWidget(m_notValid);
    for (const char* line :
         {"Folder will reside under the current pictures folder when thumbnails are created.",
          "Folder will be created if it does not exist when thumbnails are generated.",
          "Enter only a name, no leading \\ allowed."})
        all->addWidget(new QLabel(QString::fromLatin1(line)));
    auto* buttons = new QHBoxLayout();
    buttons->addStretch();
    auto* set = AddButton(*buttons, "SetThumbFolderButton", "Set");
    set->setDefault(true);
    auto* cancel = AddButton(*buttons, "CancelThumbFolderButton", "Cancel");
    all->addLayout(buttons);
    connect(set, &QPushButton::clicked, this, [this] { SetThumbFolderButton_Click(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_text, &QLineEdit::textEdited, m_notValid, &QWidget::hide);
}

void frmThumbFolder::Ask(const std::string& name) {
    m_text->setText(ToQt(name));
    m_notValid->hide();
    move(parentWidget()->pos() + kFromMain);
    show();
    activateWindow();
    m_text->setFocus();
    m_text->selectAll();
}

void frmThumbFolder::SetThumbFolderButton_Click() {
    if (m_accept(FromQt(m_text->text())))
        accept();
    else
        m_notValid->show();
}

} // namespace tarn
