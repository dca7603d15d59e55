#include "slides/SlideKeys.h"

#include "common/keys.h"

#include <span>

namespace tarn {

namespace {

struct KeyRow {
    int keycode;
    SlideEffect effect;
};

constexpr SlideEffect Move(SlideMove move) {
    return {SlideAction::Move, static_cast<int>(move)};
}

constexpr KeyRow kArrows[] = {
    {keys::kDown, Move(SlideMove::Next)},
    {keys::kRight, {SlideAction::Rotate, 90}},
    {keys::kUp, Move(SlideMove::Previous)},
    {keys::kLeft, {SlideAction::Rotate, 270}},
};

constexpr KeyRow kAlternateArrows[] = {
    {keys::kDown, {SlideAction::Rotate, 90}},
    {keys::kRight, Move(SlideMove::Next)},
    {keys::kUp, {SlideAction::Rotate, 270}},
    {keys::kLeft, Move(SlideMove::Previous)},
};

// What both kinds of show have.
constexpr KeyRow kShared[] = {
    {'P', Move(SlideMove::Previous)},
    {'N', Move(SlideMove::Next)},
    {keys::kSpace, Move(SlideMove::Next)},
    {keys::kHome, Move(SlideMove::First)},
    {keys::kEnd, Move(SlideMove::Last)},
    {keys::kPageUp, Move(SlideMove::PageBack)},
    {keys::kPageDown, Move(SlideMove::PageOn)},
    {keys::kPlus, {SlideAction::Zoom, 1}},
    {keys::kMinus, {SlideAction::Zoom, -1}},
    {'9', {SlideAction::Zoom, 0}},
    {'E', {SlideAction::CameraSettings}},
    {'T', {SlideAction::Title}},
    {'C', {SlideAction::TextColor}},
    {'F', {SlideAction::TextFont}},
    {'S', {SlideAction::TextSize}},
    {'B', {SlideAction::Background}},
    {keys::kF1, {SlideAction::Help}},
    {keys::kEscape, {SlideAction::Done}},
    {'X', {SlideAction::Done}},
};

constexpr KeyRow kFull[] = {
    {'R', {SlideAction::Rotate, 90}},
    {'L', {SlideAction::Rotate, 270}},
    {'1', {SlideAction::Rotate, 180}},
    {'M', {SlideAction::Mirror, 0}},
    {'I', {SlideAction::Mirror, 1}},
    {'O', Move(SlideMove::Again)},
    {keys::kF6, {SlideAction::Brightness, 1}},
    {keys::kF7, {SlideAction::Brightness, 5}},
    {keys::kF5, {SlideAction::Brightness, -1}},
    {keys::kF4, {SlideAction::Brightness, -5}},
    {keys::kF3, {SlideAction::ResetBrightness}},
    {'A', {SlideAction::AdjustWindow}},
    {'D', {SlideAction::Notes}},
    {keys::kComma, {SlideAction::HistoryBack}},
    {keys::kPeriod, {SlideAction::HistoryForward}},
    {'Y', {SlideAction::Copy}},
    {'U', {SlideAction::Convert}},
    {keys::kDelete, {SlideAction::Delete}},
};

constexpr KeyRow kManyArrows[] = {
    {keys::kUp, Move(SlideMove::Previous)},
    {keys::kDown, Move(SlideMove::Next)},
};

SlideEffect Find(std::span<const KeyRow> rows, int keycode) {
    for (const KeyRow& row : rows)
        if (row.keycode == keycode) return row.effect;
    return {};
}

SlideEffect FindIn(std::span<const KeyRow> own, std::span<const KeyRow> arrows, int keycode) {
    for (const std::span<const KeyRow> rows : {own, arrows})
        if (const SlideEffect effect = Find(rows, keycode); effect.action != SlideAction::None)
            return effect;
    return Find(kShared, keycode);
}

} // namespace

SlideEffect FullEffectOf(int keycode, bool alternateArrows) {
    if (alternateArrows) return FindIn(kFull, kAlternateArrows, keycode);
    return FindIn(kFull, kArrows, keycode);
}

SlideEffect ManyEffectOf(int keycode) {
    return FindIn({}, kManyArrows, keycode);
}

bool IsSlideStep(const SlideEffect& effect) {
    if (effect.action != SlideAction::Move) return false;
    const auto move = static_cast<SlideMove>(effect.amount);
    return move == SlideMove::Next || move == SlideMove::Previous;
}

bool SkipsBack(int keycode) {
    return keycode == keys::kUp || keycode == 'P';
}

} // namespace tarn
