#include "platform/FileMime.h"

#include <QMimeData>
#include <QSysInfo>

namespace tarn {

namespace {

constexpr char kFileManagers[] = "x-special/gnome-copied-files"; // "copy" or "cut", then addresses
constexpr char kCutSelection[] = "application/x-kde-cutselection"; // "1" for cut

// Address of a file whose name may be no text at all.
QByteArray AddressOf(const std::string& path) {
    return "file://" + QByteArray::fromStdString(path).toPercentEncoding("/");
}

// Of a file on this machine; empty for any other address.
std::string PathOf(const QByteArray& address) {
    QByteArray local = address.trimmed();
    if (!local.startsWith("file:")) return {};
    local.remove(0, 5);
    if (local.startsWith("//")) {
        const QByteArray host = local.mid(2, local.indexOf('/', 2) - 2);
        if (!host.isEmpty() && host != "localhost" && host != QSysInfo::machineHostName().toUtf8())
            return {};
        local.remove(0, 2 + host.size());
    }
    const QByteArray path = QByteArray::fromPercentEncoding(local);
    return path.startsWith('/') && !path.contains('\0') ? path.toStdString() : std::string();
}

} // namespace

QMimeData* MimeOf(const ClipboardFiles& files) {
    QByteArray addresses;
    for (const std::string& path : files.paths) addresses += AddressOf(path) + "\r\n";
    QByteArray forManagers = files.cut ? "cut" : "copy";
    for (const std::string& path : files.paths) forManagers += "\n" + AddressOf(path);
    auto* data = new QMimeData();
    data->setData(QStringLiteral("text/uri-list"), addresses);
    data->setData(QString::fromLatin1(kFileManagers), forManagers);
    data->setData(QString::fromLatin1(kCutSelection), files.cut ? "1" : "0");
    return data;
}

ClipboardFiles FilesIn(const QMimeData& data) {
    ClipboardFiles files;
    for (const QByteArray& line : data.data(QStringLiteral("text/uri-list")).split('\n'))
        if (std::string path = PathOf(line); !path.empty()) files.paths.push_back(path);
    files.cut = data.data(QString::fromLatin1(kFileManagers)).startsWith("cut") ||
                data.data(QString::fromLatin1(kCutSelection)) == "1";
    return files;
}

} // namespace tarn
