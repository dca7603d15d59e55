#include "shell/settings/Settings.h"

#include "common/numbers.h"
#include "common/text.h"
#include "platform/SettingsStore.h"
#include "shell/settings/SettingsTable.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr char kStartPath[] = "filespec_default";

// The limits differ on purpose.
void PutInRange(ProgramState& state) {
    if (state.SlideFontIndex > 6) state.SlideFontIndex = 6;
    if (state.SlideFontSizeIndex > 7) state.SlideFontSizeIndex = 7;
    if (state.SlideBackgroundIndex > 5) state.SlideBackgroundIndex = 3;
    if (state.SlideTextColorIndex > 8) state.SlideTextColorIndex = 0;
    if (state.SlideFontIndex < 1) state.SlideFontIndex = 1;
    if (state.SlideFontSizeIndex < 1) state.SlideFontSizeIndex = 1;
    if (state.SlideBackgroundIndex < 1) state.SlideBackgroundIndex = 3;
    if (state.SlideTextColorIndex < 0) state.SlideTextColorIndex = 0;
    if (state.ThumbSizeIndex > ThumbState::ThumbNumOfSizes || state.ThumbSizeIndex < 1)
        state.ThumbSizeIndex = 3;
}

} // namespace

void LoadSettings(ProgramState& state, const SettingsStore& store) {
    for (const SettingRow& row : SettingRows()) {
        const std::string fallback = DefaultOf(row, state);
        SetField(row, state, fallback);
        SetField(row, state, store.Read(row.key, fallback));
    }
    PutInRange(state);
    if (state.HistHigh >= 1)
        UnpackHistory(state, store.Read("HistFolders", ""), store.Read("HistFiles", ""));
    else
        state.HistHigh = state.HistCur = 0;
}

std::string LoadStartPath(const SettingsStore& store, const std::string& fallback) {
    return store.Read(kStartPath, fallback);
}

std::string PackFolders(const SelectionState& state) {
    std::string text;
    for (int i = 0; state.HistHigh >= 1 && i <= state.HistHigh; ++i)
        text += state.HistFolderPath[static_cast<std::size_t>(i)] + "+";
    return text;
}

std::string PackRows(const SelectionState& state) {
    std::string text;
    for (int i = 0; state.HistHigh >= 1 && i <= state.HistHigh; ++i)
        text += std::to_string(state.HistFileIndex[static_cast<std::size_t>(i)]) + "+";
    return text;
}

void UnpackHistory(SelectionState& state, const std::string& folders, const std::string& rows) {
    const auto paths = Split(folders, '+');
    const auto indexes = Split(rows, '+');
    // The last part stands behind the last "+" and is no entry.
    const int whole = static_cast<int>(std::min(paths.size(), indexes.size())) - 2;
    state.HistHigh = std::clamp(state.HistHigh, 0, std::clamp(whole, 0, kHistoryLimit));
    state.HistCur = std::clamp(state.HistCur, 0, state.HistHigh);
    for (int i = 0; state.HistHigh >= 1 && i <= state.HistHigh; ++i) {
        const auto at = static_cast<std::size_t>(i);
        state.HistFolderPath[at] = paths[at];
        state.HistFileIndex[at] = ParseInt32(indexes[at]).value_or(0);
    }
}

bool SaveSettings(ProgramState& state, SettingsStore& store) {
    if (state.NoSaveOnExit) return true;
    if (!state.Filename.empty()) store.Write(kStartPath, state.Filename);
    for (const std::string& key : WriteOrder()) {
        const bool mainPlace = key == "left_position" || key == "top_position";
        if (mainPlace && !state.MainNormal) continue;
        if (key == "HistFolders")
            store.Write(key, PackFolders(state));
        else if (key == "HistFiles")
            store.Write(key, PackRows(state));
        else
            store.Write(key, TextOf(SettingOf(key), state));
    }
    return store.Flush();
}

} // namespace tarn
