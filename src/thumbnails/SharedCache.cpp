#include "thumbnails/SharedCache.h"

#include "common/paths.h"
#include "platform/OpenRegular.h"
#include "platform/PrivateFolders.h"
#include "platform/QtText.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QImageReader>
#include <QStandardPaths>

#include <cstdio>

#include <unistd.h>

namespace tarn {

namespace {

constexpr int kNormal = 128;
constexpr int kLarge = 256;
constexpr char kUri[] = "Thumb::URI";
constexpr char kTime[] = "Thumb::MTime";

} // namespace

std::string UriOf(const std::string& path) {
    const QByteArray bytes = QByteArray::fromStdString(path);
    return "file://" + bytes.toPercentEncoding("/!*'()&=+$,:@").toStdString();
}

SharedCache::SharedCache(int side)
    : m_side(side <= kNormal ? kNormal : kLarge),
      m_folder(
          JoinPath(FromQt(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)),
                   m_side == kNormal ? "thumbnails/normal" : "thumbnails/large")) {}

std::string SharedCache::FileOf(const std::string& path) const {
    const QByteArray hash =
        QCryptographicHash::hash(QByteArray::fromStdString(UriOf(path)), QCryptographicHash::Md5);
    return JoinPath(m_folder, hash.toHex().toStdString() + ".png");
}

QImage SharedCache::Read(const std::string& path, std::int64_t modified) const {
    std::string error;
    const FileHandle opened = OpenRegular(FileOf(path), error);
    QFile file;
    if (!opened || !file.open(opened.get(), QIODevice::ReadOnly)) return {};
    QImageReader reader(&file, "png");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size(); // others write there, too
    if (size.width() > m_side || size.height() > m_side) return {};
    const QImage picture = reader.read();
    if (picture.text(kTime) != QString::number(modified) ||
        picture.text(kUri).toStdString() != UriOf(path))
        return {};
    return picture;
}

void SharedCache::Write(const std::string& path, std::int64_t modified,
                        const QImage& picture) const {
    const std::string folder = FolderOf(m_folder);
    if (path.compare(0, folder.size() + 1, folder + "/") == 0) return; // a thumbnail itself
    MakePrivateFolders(m_folder);
    std::string beside = JoinPath(m_folder, ".tarn-XXXXXX");
    const int file = ::mkstemp(beside.data()); // for the user alone
    if (file < 0) return;
    ::close(file);
    // Set on the image: the writer's own texts end at the first colon of a key.
    QImage written = picture;
    written.setText(kUri, QString::fromStdString(UriOf(path)));
    written.setText(kTime, QString::number(modified));
    written.setText(QStringLiteral("Software"), QStringLiteral("Tarn View"));
    if (!written.save(ToQt(beside), "png") ||
        std::rename(beside.c_str(), FileOf(path).c_str()) != 0)
        ::unlink(beside.c_str());
}

} // namespace tarn
