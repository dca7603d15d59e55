// The options that a page carries in a comment, so that a later run can take its look up again.
// One table for each of the two kinds of page says their order, and drives writing, reading and
// setting by name.
#pragma once

#include "desk/state/GallerySettings.h"
#include "desk/state/HtmlSettings.h"
#include "web/PageText.h"
#include "web/SavedGrammar.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tarn {

// Bytes of a page that is read for its options, or for what it needs.
inline constexpr std::size_t kLargestPage = 64U << 20U;

template <class Settings> struct SavedValue {
    std::string_view name; // its key in the settings, or its own name
    std::variant<bool Settings::*, int Settings::*, std::string Settings::*> field;
    bool asNumber = false;     // a flag that is written as "-1 " or " 0 "
    SavedGrammar grammar = {}; // of a number or a text, where it comes from a page
};

const std::vector<SavedValue<HtmlSettings>>& PageValues();       // of a hand-laid page
const std::vector<SavedValue<GallerySettings>>& GalleryValues(); // of a gallery's index

// A whole number with a blank or a minus in front and a blank behind.
std::string SavedNumber(int value);

// The lines of the values, one each. The settings' texts must be page bytes.
void AddSavedValues(PageText& page, const HtmlSettings& settings);
void AddSavedValues(PageText& page, const GallerySettings& settings);

// Takes the values of a page's bytes into `settings`; their texts become UTF-8. Stops silently at
// the end of the block, of the file, and at a value that is none of its kind: what comes behind
// keeps its present value, as does a value alone that is not of its grammar. False when the page
// holds no such block (that of the other kind of page is none either).
bool ReadSavedValues(std::string_view page, HtmlSettings& settings);
bool ReadSavedValues(std::string_view page, GallerySettings& settings);

// One value by its name, from text; false when there is no such name or the text is none of its
// kind, as a text with a line break is none.
bool SetSavedValue(HtmlSettings& settings, std::string_view name, std::string_view text);
bool SetSavedValue(GallerySettings& settings, std::string_view name, std::string_view text);

// The same settings with all their texts as page bytes.
HtmlSettings InPageBytes(HtmlSettings settings);
GallerySettings InPageBytes(GallerySettings settings);

} // namespace tarn
