#include "desk/settings/Settings.h"

#include "desk/settings/HistoryText.h"
#include "desk/settings/SettingsTable.h"
#include "platform/SettingsStore.h"

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
    if (state.Theme < 0 || state.Theme > 2) state.Theme = 0;
    if (state.ConvertJpgType < 0 || state.ConvertJpgType > 2) state.ConvertJpgType = 0;
    if (state.ConvertJpgQuality < 1 || state.ConvertJpgQuality > 100) state.ConvertJpgQuality = 75;
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

int LoadTheme(const SettingsStore& store) {
    ProgramState state;
    SetField(SettingOf("theme"), state, store.Read("theme", ""));
    PutInRange(state);
    return state.Theme;
}

std::string LoadStartPath(const SettingsStore& store, const std::string& fallback) {
    return store.Read(kStartPath, fallback);
}

bool SaveSettings(ProgramState& state, SettingsStore& store) {
    if (state.NoSaveOnExit) return true;
    if (!state.Filename.empty()) store.Write(kStartPath, state.Filename);
    for (const SettingRow& row : SettingRows())
        if (row.keeping == Keeping::Always ||
            (row.keeping == Keeping::WhileNormal && state.MainNormal))
            store.Write(row.key, TextOf(row, state));
    store.Write("HistFolders", PackFolders(state));
    store.Write("HistFiles", PackRows(state));
    return store.Flush();
}

} // namespace tarn
