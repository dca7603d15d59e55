#include "platform/Clipboard.h"

#include "platform/FileMime.h"
#include "platform/QtText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

namespace tarn {

namespace {

class QtClipboard : public Clipboard {
public:
    QtClipboard() {
        m_changed = QObject::connect(System(), &QClipboard::dataChanged, System(), [this] {
            if (onChange) onChange();
        });
    }
    ~QtClipboard() override { QObject::disconnect(m_changed); }

    void SetText(const std::string& utf8) override { System()->setText(ToQt(utf8)); }
    void SetPicture(const QImage& picture) override { System()->setImage(picture); }
    void SetFiles(const ClipboardFiles& files) override {
        System()->setMimeData(MimeOf(files)); // the clipboard's own from here on
    }
    ClipboardFiles Files() const override {
        const QMimeData* data = System()->mimeData();
        return data ? FilesIn(*data) : ClipboardFiles();
    }
    std::string Text() const override { return FromQt(System()->text()); }

private:
    static QClipboard* System() { return QGuiApplication::clipboard(); }

    QMetaObject::Connection m_changed;
};

} // namespace

std::unique_ptr<Clipboard> MakeClipboard() {
    return std::make_unique<QtClipboard>();
}

} // namespace tarn
