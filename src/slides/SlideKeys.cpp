#include "slides/SlideKeys.h"

#include <initializer_list>
#include <span>

namespace tarn {

namespace {

struct KeyRow {
    int keycode;
    SlideEffect effect;
    const char* says;
};

constexpr SlideEffect Move(SlideMove move) {
    return {SlideAction::Move, static_cast<int>(move)};
}

constexpr KeyRow kArrows[] = {
    {keys::kDown, Move(SlideMove::Next), "next picture"},
    {keys::kRight, {SlideAction::Rotate, 90}, "turn right"},
    {keys::kUp, Move(SlideMove::Previous), "previous picture"},
    {keys::kLeft, {SlideAction::Rotate, 270}, "turn left"},
};

constexpr KeyRow kAlternateArrows[] = {
    {keys::kDown, {SlideAction::Rotate, 90}, "turn right"},
    {keys::kRight, Move(SlideMove::Next), "next picture"},
    {keys::kUp, {SlideAction::Rotate, 270}, "turn left"},
    {keys::kLeft, Move(SlideMove::Previous), "previous picture"},
};

// What both kinds of show have.
constexpr KeyRow kShared[] = {
    {'P', Move(SlideMove::Previous), "previous picture"},
    {'N', Move(SlideMove::Next), "next picture"},
    {keys::kSpace, Move(SlideMove::Next), "next picture"},
    {keys::kHome, Move(SlideMove::First), "first picture"},
    {keys::kEnd, Move(SlideMove::Last), "last picture"},
    {keys::kPageUp, Move(SlideMove::PageBack), "five pictures back, or a page"},
    {keys::kPageDown, Move(SlideMove::PageOn), "five pictures on, or a page"},
    {keys::kPlus, {SlideAction::Zoom, 1}, "closer, through 1:1 to 8:1"},
    {keys::kMinus, {SlideAction::Zoom, -1}, "farther"},
    {'9', {SlideAction::Zoom, 0}, "as the picture fits"},
    {'K', {SlideAction::Keep}, "marks to keep"},
    {'J', {SlideAction::Reject}, "marks as rejected"},
    {'H', {SlideAction::ClearMark}, "takes mark and stars away"},
    {keys::kControl + '0', {SlideAction::Stars, 0}, "no stars"},
    {keys::kControl + '1', {SlideAction::Stars, 1}, "one to five stars"},
    {keys::kControl + '2', {SlideAction::Stars, 2}, "one to five stars"},
    {keys::kControl + '3', {SlideAction::Stars, 3}, "one to five stars"},
    {keys::kControl + '4', {SlideAction::Stars, 4}, "one to five stars"},
    {keys::kControl + '5', {SlideAction::Stars, 5}, "one to five stars"},
    {'E', {SlideAction::CameraSettings}, "camera settings in the title"},
    {'T', {SlideAction::Title}, "title on or off"},
    {'C', {SlideAction::TextColor}, "next color of the title"},
    {'F', {SlideAction::TextFont}, "next font of the title"},
    {'S', {SlideAction::TextSize}, "next size of the title"},
    {'B', {SlideAction::Background}, "next background"},
    {keys::kF1, {SlideAction::Help}, "help"},
    {keys::kEscape, {SlideAction::Done}, "end of the show"},
    {'X', {SlideAction::Done}, "end of the show"},
    {keys::kF11, {SlideAction::Done}, "end of the show"},
};

constexpr KeyRow kFull[] = {
    {'R', {SlideAction::Rotate, 90}, "turn right"},
    {'L', {SlideAction::Rotate, 270}, "turn left"},
    {'1', {SlideAction::Rotate, 180}, "turn upside down"},
    {'M', {SlideAction::Mirror, 0}, "mirror left to right"},
    {'I', {SlideAction::Mirror, 1}, "mirror top to bottom"},
    {'O', Move(SlideMove::Again), "the picture again, as it is in its file"},
    {keys::kF6, {SlideAction::Brightness, 1}, "brighter by 1"},
    {keys::kF7, {SlideAction::Brightness, 5}, "brighter by 5"},
    {keys::kF5, {SlideAction::Brightness, -1}, "darker by 1"},
    {keys::kF4, {SlideAction::Brightness, -5}, "darker by 5"},
    {keys::kF3, {SlideAction::ResetBrightness}, "brightness back to normal"},
    {'A', {SlideAction::AdjustWindow}, "brightness window"},
    {'D', {SlideAction::Notes}, "on the picture: nothing, the note, the note and the camera data"},
    {keys::kComma, {SlideAction::HistoryBack}, "back through the pictures viewed"},
    {keys::kPeriod, {SlideAction::HistoryForward}, "forward through the pictures viewed"},
    {'Y', {SlideAction::Copy}, "copy to the \"Copy to\" folder"},
    {'U', {SlideAction::Convert}, "JPEG copy to that folder"},
    {keys::kDelete, {SlideAction::Delete}, "picture to the wastebasket"},
};

constexpr SlideEffect Frame(FrameWay way) {
    return {SlideAction::Frame, static_cast<int>(way)};
}

constexpr KeyRow kManyArrows[] = {
    {keys::kShift + keys::kLeft, Frame(FrameWay::Left), "frames another picture, to be marked"},
    {keys::kShift + keys::kUp, Frame(FrameWay::Up), "frames another picture, to be marked"},
    {keys::kShift + keys::kRight, Frame(FrameWay::Right), "frames another picture, to be marked"},
    {keys::kShift + keys::kDown, Frame(FrameWay::Down), "frames another picture, to be marked"},
    {keys::kUp, Move(SlideMove::Previous), "previous picture"},
    {keys::kDown, Move(SlideMove::Next), "next picture"},
};

SlideEffect Find(std::span<const KeyRow> rows, int keycode) {
    for (const KeyRow& row : rows)
        if (row.keycode == keycode) return row.effect;
    return {};
}

std::vector<keys::KeyLine> LinesOf(std::initializer_list<std::span<const KeyRow>> tables) {
    std::vector<keys::KeyLine> lines;
    for (const std::span<const KeyRow> rows : tables)
        for (const KeyRow& row : rows) keys::AddLine(lines, keys::NameOf(row.keycode), row.says);
    return lines;
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

std::vector<keys::KeyLine> FullKeyLines(bool alternateArrows) {
    return alternateArrows ? LinesOf({kShared, kAlternateArrows, kFull})
                           : LinesOf({kShared, kArrows, kFull});
}

std::vector<keys::KeyLine> ManyKeyLines() {
    return LinesOf({kShared, kManyArrows});
}

std::optional<MarkChange> MarkChangeOf(const SlideEffect& effect) {
    switch (effect.action) {
    case SlideAction::Keep:
        return Decide(Decision::Keep);
    case SlideAction::Reject:
        return Decide(Decision::Reject);
    case SlideAction::ClearMark:
        return ClearMark();
    case SlideAction::Stars:
        return Rate(effect.amount);
    default:
        return {};
    }
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
