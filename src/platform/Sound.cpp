#include "platform/Sound.h"

#include "platform/ProgramFiles.h"
#include "platform/QtText.h"

#include <QAudioDevice>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>

#include <map>

namespace tarn {

namespace {

class QtSound : public Sound {
public:
    void Play(const std::string& name) override {
        if (QMediaDevices::audioOutputs().isEmpty()) return;
        auto& effect = m_effects[name];
        if (!effect) {
            effect = std::make_unique<QSoundEffect>();
            effect->setSource(QUrl::fromLocalFile(ToQt(ProgramFile(name))));
        }
        effect->play();
    }

private:
    std::map<std::string, std::unique_ptr<QSoundEffect>> m_effects;
};

} // namespace

std::unique_ptr<Sound> MakeSound() {
    return std::make_unique<QtSound>();
}

} // namespace tarn
