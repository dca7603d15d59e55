#include "platform/SettingsStore.h"

#include "platform/QtText.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace tarn {

namespace {

class IniStore : public SettingsStore {
public:
    explicit IniStore(const QString& file) : m_settings(file, QSettings::IniFormat) {
        m_settings.beginGroup(QStringLiteral("Defaults"));
    }

    std::string Read(const std::string& key, const std::string& fallback) const override {
        const QVariant value = m_settings.value(ToQt(key));
        // A hand-edited value with commas comes back as a list: put it together again.
        if (value.typeId() == QMetaType::QStringList)
            return FromQt(value.toStringList().join(", "));
        return value.isValid() ? FromQt(value.toString()) : fallback;
    }
    bool Contains(const std::string& key) const override { return m_settings.contains(ToQt(key)); }
    void Write(const std::string& key, const std::string& text) override {
        m_settings.setValue(ToQt(key), ToQt(text));
    }
    void Delete() override { m_settings.remove(QString()); }
    bool Flush() override {
        m_settings.sync();
        return m_settings.status() == QSettings::NoError;
    }
    bool IsWritable() const override { return m_settings.isWritable(); }
    std::string Location() const override { return FromQt(m_settings.fileName()); }

private:
    QSettings m_settings;
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
