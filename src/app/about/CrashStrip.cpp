#include "app/about/CrashStrip.h"

#include "app/about/frmText.h"
#include "platform/Clipboard.h"
#include "platform/CrashNote.h"
#include "platform/Files.h"
#include "platform/QtText.h"

#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QToolBar>

namespace tarn {

CrashStrip::CrashStrip(QMainWindow& window, Files& files, Clipboard& clipboard)
    : m_window(window), m_files(files), m_clipboard(clipboard) {}

CrashStrip::~CrashStrip() = default;

void CrashStrip::Offer() {
    const std::string path = TakeCrashNote(m_files, m_files.StateFolder());
    if (path.empty()) return;
    auto* strip = new QToolBar(QStringLiteral("Crash"));
    strip->setObjectName(QStringLiteral("CrashStrip"));
    strip->setMovable(false);
    strip->setContextMenuPolicy(Qt::PreventContextMenu);
    auto* show = new QPushButton(QStringLiteral("Show"));
    show->setObjectName(QStringLiteral("CrashShowButton"));
    show->setToolTip(QStringLiteral("Show the note, to be copied into a report"));
    auto* dismiss = new QPushButton(QStringLiteral("Dismiss"));
    dismiss->setObjectName(QStringLiteral("CrashDismissButton"));
    dismiss->setToolTip(QStringLiteral("Hide this line; the note is kept"));
    strip->addWidget(new QLabel(
        QStringLiteral("  Tarn_View ended by a crash the last time; a note tells where.  ")));
    strip->addWidget(show);
    strip->addWidget(dismiss);
    m_window.addToolBar(strip);
    strip->show();
    QObject::connect(show, &QPushButton::clicked, strip, [this, path] { ShowNote(path); });
    QObject::connect(dismiss, &QPushButton::clicked, strip, [this, strip] {
        m_window.removeToolBar(strip);
        strip->deleteLater();
    });
}

void CrashStrip::ShowNote(const std::string& path) {
    constexpr std::size_t kMost = 1U << 20U;
    std::string error;
    const auto text = m_files.Read(path, kMost, &error);
    if (!m_note)
        m_note = std::make_unique<frmText>("frmCrashNote", "Tarn_View - Crash note", m_clipboard);
    m_note->ShowText("The note is kept in " + path, text ? *text : error);
}

} // namespace tarn
