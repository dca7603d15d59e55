// The owner of the current file. Who makes another file current says so here, and so does who shows
// it; rooms that follow the current file are told here, whatever kind it is.
#pragma once

#include "common/paths.h"
#include "desk/state/ProgramState.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tarn {

class CurrentFile {
public:
    explicit CurrentFile(ProgramState& state) : m_state(state) {}

    // Another file is current from now on; what stands on the screen is still the one before.
    void Choose(const std::string& path) {
        m_state.Filename = path;
        m_state.FileNameOnly = LastPart(path);
        m_state.FileType = FileTypeOf(path);
    }
    void Choose(const std::string& path, int row) {
        Choose(path);
        m_state.FileIndex = row;
    }

    // How it is shown: the pane of that kind comes up.
    void ShowAs(FileKind kind) {
        const FileKind before = std::exchange(m_state.Kind, kind);
        if (onKind) onKind(before);
    }
    std::function<void(FileKind before)> onKind; // the window's

    // It is shown, or is seen to be gone: all who follow are told, in the order in which they came.
    void Tell() const {
        for (const auto& follower : m_followers) follower();
    }
    void Follow(std::function<void()> follower) { m_followers.push_back(std::move(follower)); }

private:
    ProgramState& m_state;
    std::vector<std::function<void()>> m_followers;
};

} // namespace tarn
