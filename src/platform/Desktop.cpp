#include "platform/Desktop.h"

#include "common/paths.h"
#include "platform/QtText.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <optional>

namespace tarn {

namespace {

QString Find(const QString& program) {
    return program.contains(QLatin1Char('/')) ? program : QStandardPaths::findExecutable(program);
}

std::string Start(const QString& program, const QStringList& arguments) {
    const QString found = Find(program);
    if (found.isEmpty() || !QFile::exists(found))
        return FromQt(QStringLiteral("'%1' is not installed").arg(program));
    return QProcess::startDetached(found, arguments)
               ? std::string()
               : FromQt(QStringLiteral("'%1' cannot be started").arg(program));
}

QString Answer(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(Find(program), arguments);
    if (!process.waitForFinished(3000)) return {};
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

constexpr qint64 kLargestEntry = 1 << 20; // bytes

// The program behind a desktop entry: its command line with the place of the file filled in.
QStringList CommandOf(const QString& entry, const QString& path) {
    for (const QString& folder :
         QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        QFile file(folder + QLatin1Char('/') + entry);
        if (!file.open(QIODevice::ReadOnly)) continue;
        for (const QString& line :
             QString::fromUtf8(file.read(kLargestEntry)).split(QLatin1Char('\n'))) {
            if (!line.startsWith(QLatin1String("Exec="))) continue;
            QStringList words = QProcess::splitCommand(line.mid(5));
            bool placed = false;
            for (QString& word : words) {
                const bool field = word.size() == 2 && word[0] == QLatin1Char('%');
                const bool takes = field && QStringLiteral("fFuU").contains(word[1]);
                if (takes) word = path;
                placed = placed || takes;
            }
            words.removeIf([](const QString& word) {
                return word.size() == 2 && word[0] == QLatin1Char('%');
            });
            if (!placed) words << path;
            words.removeAll(QString()); // no file: the program alone
            return words;
        }
    }
    return {};
}

class SystemDesktop : public Desktop {
public:
    std::string StartProgram(const std::string& program, const std::string& path) override {
        return Start(ToQt(program), {QFile::decodeName(path.c_str())});
    }
    std::string OpenAssociated(const std::string& path) override {
        return Start(QStringLiteral("xdg-open"), {QFile::decodeName(path.c_str())});
    }
    std::string EditText(const std::string& path) override {
        const QString file = QFile::decodeName(path.c_str());
        const QString entry =
            Answer(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                                QStringLiteral("text/plain")});
        QStringList command = entry.isEmpty() ? QStringList() : CommandOf(entry, file);
        if (command.isEmpty() && path.empty()) return "no editor for text is set in this desktop";
        if (command.isEmpty()) return OpenAssociated(path);
        const QString program = command.takeFirst();
        return Start(program, command);
    }
    std::string ShowInFileManager(const std::string& folder, const std::string& file) override {
        QString uri =
            QString::fromLatin1(QUrl::fromLocalFile(QFile::decodeName(file.c_str())).toEncoded());
        uri.replace(QLatin1Char(','), QLatin1String("%2C")); // it parts the list of the call
        // The file managers' common call, which marks the file.
        if (!file.empty() && !Find(QStringLiteral("dbus-send")).isEmpty() &&
            QProcess::execute(Find(QStringLiteral("dbus-send")),
                              {QStringLiteral("--session"), QStringLiteral("--print-reply"),
                               QStringLiteral("--reply-timeout=2000"),
                               QStringLiteral("--dest=org.freedesktop.FileManager1"),
                               QStringLiteral("/org/freedesktop/FileManager1"),
                               QStringLiteral("org.freedesktop.FileManager1.ShowItems"),
                               QStringLiteral("array:string:") + uri, QStringLiteral("string:")}) ==
                0)
            return {};
        return Start(QStringLiteral("xdg-open"), {QFile::decodeName(folder.c_str())});
    }
    // Without waiting: a bus that hangs must not hold up a show.
    void HoldAwake(bool hold) override {
        if (hold == m_held.has_value()) return;
        if (hold) {
            m_held = QDBusConnection::sessionBus().asyncCall(
                ScreenSaver("Inhibit")
                << QStringLiteral("tarn-view") << QStringLiteral("A slide show runs"));
            return;
        }
        const QDBusPendingReply<uint> known = *m_held;
        m_held.reset();
        if (known.isFinished() && known.isValid())
            QDBusConnection::sessionBus().asyncCall(ScreenSaver("UnInhibit") << known.value());
    }

private:
    static QDBusMessage ScreenSaver(const char* method) {
        return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.ScreenSaver"),
                                              QStringLiteral("/org/freedesktop/ScreenSaver"),
                                              QStringLiteral("org.freedesktop.ScreenSaver"),
                                              QString::fromLatin1(method));
    }

    std::optional<QDBusPendingCall> m_held; // answers with what the screen saver knows this by
};

} // namespace

std::unique_ptr<Desktop> MakeDesktop() {
    return std::make_unique<SystemDesktop>();
}

} // namespace tarn
