#include "app/window/KeysPage.h"

#include "app/help/frmHelp.h"
#include "app/logs/frmLogs.h"
#include "blink/frmBlink.h"
#include "blink/frmMovers.h"
#include "blink/frmSum.h"
#include "desk/controls/Captions.h"
#include "display/FrmPic.h"
#include "display/frmOnetoOne.h"
#include "navigation/FindInList.h"
#include "navigation/HistoryList.h"
#include "navigation/PaneKeyTable.h"
#include "navigation/frmFilter.h"
#include "night/frmNight.h"
#include "notes/NotesRoom.h"
#include "platform/ProgramFiles.h"
#include "platform/QtText.h"
#include "print/frmPrintPreview.h"
#include "slides/SlideKeys.h"
#include "video/VideoRoom.h"
#include "video/frmBestFrames.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QUrl>

namespace tarn {

namespace {

using Lines = std::vector<keys::KeyLine>;

// What the menu shows behind the caption.
QString KeysOf(const QAction& entry) {
    const qsizetype tab = entry.text().indexOf(QLatin1Char('\t'));
    return tab >= 0 ? entry.text().mid(tab + 1)
                    : entry.shortcut().toString(QKeySequence::NativeText);
}

// Entries that have keys, each behind the menus that lead to it.
void AddEntries(Lines& lines, const QWidget& menu, const QString& way) {
    for (const QAction* entry : menu.actions()) {
        const QString caption = way + CaptionOf(*entry).trimmed();
        if (entry->menu())
            AddEntries(lines, *entry->menu(), caption + QStringLiteral(", "));
        else if (const QString known = KeysOf(*entry); !known.isEmpty())
            lines.push_back({FromQt(known), FromQt(caption)});
    }
}

Lines MenuLines(const Context& m) {
    Lines lines;
    if (const auto* bar = m.controls.FileListBox->window()->findChild<QMenuBar*>())
        AddEntries(lines, *bar, {});
    return lines;
}

QString Section(const char* heading, const Lines& lines) {
    QString html = QStringLiteral("<h2>%1</h2>\n<table>\n").arg(QString::fromLatin1(heading));
    for (const keys::KeyLine& line : lines)
        html += QStringLiteral("<tr><td><b>%1</b></td><td>%2</td></tr>\n")
                    .arg(ToQt(line.keys).toHtmlEscaped(), ToQt(line.action).toHtmlEscaped());
    return html + QStringLiteral("</table>\n");
}

Lines Together(Lines lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
    return lines;
}

} // namespace

QString KeysPage(const Context& m) {
    const QString style =
        QUrl::fromLocalFile(ToQt(ProgramFile("help/manual.css"))).toString(QUrl::FullyEncoded);
    return QStringLiteral("<html><head><title>Keys</title><link rel=\"stylesheet\" "
                          "type=\"text/css\" href=\"%1\"></head><body><h1>Keys</h1>\n"
                          "<p>Alt with the underlined letter opens a menu or does what stands in "
                          "the menu bar; in an open menu the letter alone does. The Menu key or "
                          "Shift+F10 opens the menu of a file, folder or picture, Tab goes on to "
                          "the next pane or button.</p>\n")
               .arg(style) +
           Section("In the window", MenuLines(m)) + Section("Note", NotesRoom::KeyLines()) +
           Section("While the picture has the keyboard", PaneKeyLines(KeyPane::Picture)) +
           Section("While a clip has it",
                   Together(PaneKeyLines(KeyPane::Clip), VideoRoom::KeyLines())) +
           Section("While a text or page has it", PaneKeyLines(KeyPane::Text)) +
           Section("In the list of files", PaneKeyLines(KeyPane::Files)) +
           Section("In the other lists", PaneKeyLines(KeyPane::Lists)) +
           Section("In the line that finds files", FindInList::KeyLines()) +
           Section("In the history", HistoryList::KeyLines()) +
           Section("In the filter's text", frmFilter::KeyLines()) +
           Section("Slides", FullKeyLines(m.state.SlideAltArrowKeys)) +
           Section("Two and four pictures", ManyKeyLines()) +
           Section("Size window", FrmPic::KeyLines()) +
           Section("1:1 window", frmOnetoOne::KeyLines()) + Section("Night", frmNight::KeyLines()) +
           Section("Blink", frmBlink::KeyLines()) + Section("Movers", frmMovers::KeyLines()) +
           Section("Sum of frames", frmSum::KeyLines()) +
           Section("Best frames", frmBestFrames::KeyLines()) +
           Section("Print preview", frmPrintPreview::KeyLines()) +
           Section("Help", frmHelp::KeyLines()) + Section("Logs", frmLogs::KeyLines()) +
           QStringLiteral("</body></html>\n");
}

} // namespace tarn
