// Sounds by the toolkit, whose library of media is a module for its size.
#include "platform/ProgramFiles.h"
#include "platform/QtText.h"
#include "platform/SoundModule.h"

#include <QAudioDevice>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QThread>
#include <QUrl>

#include <map>

namespace tarn {

namespace {

constexpr int kLongestWait = 500; // milliseconds
constexpr int kLook = 10;         // milliseconds between looks whether it still plays

class QtSound : public Sound {
public:
    void Play(const std::string& name) override {
        if (QSoundEffect* effect = Effect(name)) effect->play();
    }
    void PlayAndWait(const std::string& name) override {
        QSoundEffect* effect = Effect(name);
        if (!effect) return;
        effect->play();
        QElapsedTimer waited;
        waited.start();
        while (effect->isPlaying() && waited.elapsed() < kLongestWait) {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
            QThread::msleep(kLook);
        }
    }

private:
    QSoundEffect* Effect(const std::string& name) {
        if (QMediaDevices::audioOutputs().isEmpty()) return nullptr;
        const QString file = ToQt(ProgramFile(name));
        if (!QFile::exists(file)) return nullptr; // no fault, and it may come later
        auto& effect = m_effects[name];
        if (!effect) {
            effect = std::make_unique<QSoundEffect>();
            effect->setSource(QUrl::fromLocalFile(file));
        }
        return effect.get();
    }

    std::map<std::string, std::unique_ptr<QSoundEffect>> m_effects;
};

std::unique_ptr<Sound> Make() {
    return std::make_unique<QtSound>();
}

} // namespace

extern "C" const SoundModule TarnModule{Make};

} // namespace tarn
