#include "platform/SettingsStore.h"

#include "common/utf8.h"
#include "platform/QtText.h"

#include <QFile>
#include <QSettings>
#include <QStandardPaths>

#include <unordered_map>

namespace tarn {

namespace {

// File names are bytes, and the store holds characters: a byte that is no UTF-8 is kept as a
// character of a private range, so that it comes back as it was. A true character of that range is
// kept byte by byte.
constexpr ushort kRawBytes = 0xF700;

bool StandsForAByte(char32_t code) {
    return code >= kRawBytes + 0x80 && code <= kRawBytes + 0xFF;
}

QString ToStored(const std::string& text) {
    QString stored;
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Char next = DecodeUtf8(text, at);
        const std::size_t end = at + static_cast<std::size_t>(next.length);
        if (next.valid && !StandsForAByte(next.code)) {
            stored += QString::fromUcs4(&next.code, 1);
            at = end;
        }
        for (; at < end; ++at) stored += QChar(static_cast<ushort>(kRawBytes + (text[at] & 0xFF)));
    }
    return stored;
}

std::string FromStored(const QString& stored) {
    std::string text;
    for (const char32_t code : stored.toUcs4()) {
        if (StandsForAByte(code))
            text += static_cast<char>(code - kRawBytes);
        else
            AppendUtf8(text, code);
    }
    return text;
}

class IniStore : public SettingsStore {
public:
    explicit IniStore(const QString& file) : m_settings(file, QSettings::IniFormat) {
        m_settings.beginGroup(QStringLiteral("Defaults"));
    }

    std::string Read(const std::string& key, const std::string& fallback) const override {
        const QVariant value = m_settings.value(ToQt(key));
        // A hand-edited value with commas comes back as a list: put it together again.
        if (value.typeId() == QMetaType::QStringList)
            return m_known[key] = FromStored(value.toStringList().join(", "));
        if (!value.isValid()) return fallback;
        return m_known[key] = FromStored(value.toString());
    }
    bool Contains(const std::string& key) const override { return m_settings.contains(ToQt(key)); }
    void Write(const std::string& key, const std::string& text) override {
        const auto known = m_known.find(key);
        if (known != m_known.end() && known->second == text) return;
        m_known[key] = text;
        m_settings.setValue(ToQt(key), ToStored(text));
    }
    void Delete() override {
        m_known.clear();
        m_settings.remove(QString());
    }
    bool Flush() override {
        if (!QFile::exists(m_settings.fileName())) // somebody has taken it away
            for (const auto& [key, text] : m_known) m_settings.setValue(ToQt(key), ToStored(text));
        m_settings.sync();
        return m_settings.status() != QSettings::AccessError; // a broken line is none
    }
    bool IsWritable() const override { return m_settings.isWritable(); }
    std::string Location() const override { return FromQt(m_settings.fileName()); }

private:
    QSettings m_settings;

    // As this run has read or written them: what has not changed here is left as it stands, since
    // another window may have changed it.
    mutable std::unordered_map<std::string, std::string> m_known;
};

} // namespace

std::unique_ptr<SettingsStore> MakeSettingsStore(const std::string& iniFile) {
    return std::make_unique<IniStore>(ToQt(iniFile));
}

std::unique_ptr<SettingsStore> MakeUserSettingsStore() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return std::make_unique<IniStore>(folder + QStringLiteral("/Tarn_View/Tarn_View.ini"));
}

} // namespace tarn
