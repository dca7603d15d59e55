#include "platform/Sound.h"

#include "platform/Modules.h"
#include "platform/SoundModule.h"

namespace tarn {

namespace {

// Takes the module with the first sound.
class LateSound : public Sound {
public:
    void Play(const std::string& name) override {
        if (Sound* player = Player()) player->Play(name);
    }
    void PlayAndWait(const std::string& name) override {
        if (Sound* player = Player()) player->PlayAndWait(name);
    }

private:
    Sound* Player() {
        if (!m_player)
            if (const auto* module = FromModule<SoundModule>()) m_player = module->make();
        return m_player.get();
    }

    std::unique_ptr<Sound> m_player;
};

} // namespace

std::unique_ptr<Sound> MakeSound() {
    return std::make_unique<LateSound>();
}

} // namespace tarn
