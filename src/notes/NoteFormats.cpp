#include "notes/NoteFormats.h"

#include "common/codepage.h"
#include "common/numbers.h"
#include "common/text.h"
#include "common/utf8.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t kLongestLine = 1000; // bytes
constexpr std::size_t kMostRead = 1U << 20U;

constexpr std::size_t At(NoteEntry entry) {
    return static_cast<std::size_t>(entry);
}

bool IsText(std::string_view line) {
    return std::none_of(line.begin(), line.end(),
                        [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\t'; });
}

// Editors of today write UTF-8, those of old the code page.
std::string AsText(std::string_view line) {
    return IsUtf8(line) ? std::string(line) : FromCodePage(line);
}

void ParseLine(std::string_view line, FormatLists& lists) {
    // Old editors close a file with this sign.
    if (line.ends_with('\x1A')) line.remove_suffix(1);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.size() > kLongestLine || !IsText(line)) return;
    const auto parts = Split(line, ':');
    if (parts.size() < 2) return;
    const auto& rows = NoteEntryRows();
    for (std::size_t i = 0; i < kNoteEntries; ++i) {
        if (parts[0] != rows[i].caption) continue;
        lists[i].push_back(AsText(parts[1]));
        return;
    }
}

constexpr std::array<const char*, 12> kMonths = {"January",   "February", "March",    "April",
                                                 "May",       "June",     "July",     "August",
                                                 "September", "October",  "November", "December"};

constexpr std::array kReadBackOrder = {
    NoteEntry::Telescope,  NoteEntry::Lens,     NoteEntry::Mount,
    NoteEntry::Camera,     NoteEntry::Filter,   NoteEntry::Exposure,
    NoteEntry::Processing, NoteEntry::Location, NoteEntry::Date};

// The two characters behind the caption are passed over unseen. None: too short to hold a value.
std::optional<std::string> ValueOf(std::string_view line, std::string_view caption) {
    if (!line.starts_with(caption)) return {};
    const bool closed = line.ends_with('\r');
    // A closed line loses its last character, the carriage return; an open one loses one, too.
    const int rest = Length(line) - Length(caption);
    if (rest < (closed ? 3 : 2)) return {};
    const std::string_view behind = RightChars(line, rest - 2);
    return std::string(LeftChars(behind, rest - (closed ? 3 : 1)));
}

} // namespace

const std::array<NoteEntryRow, kNoteEntries>& NoteEntryRows() {
    static const std::array<NoteEntryRow, kNoteEntries> rows{{
        {"Telescope",
         "Telescope",
         "Telescope used",
         {"Meade 12\" LX200R", "TEC APO 140", "Stellarvue SV80S", "Vixen FL102S", "SolarMax 60"}},
        {"Guide Scope", "GuideScope", "", {"Mini Borg 50", "ZWO 60"}},
        {"Lens",
         "Lens",
         "Additional lens such as a barlow or reducer",
         {"AP CCDT67", "WO FLAT4_10", "WO FLAT4_17", "WO FLAT61"}},
        {"Mount", "Mount", "Telescope mount", {"AP 900 GTO", "Vixen SXD2", "Vixen GP"}},
        {"Camera", "Camera", "Camera model", {"Canon 60Da)", "ZWO ASI178MC-COOL"}},
        {"Filter", "Filter", "", {}},
        {"Exposure", "Exp", "Exposures, video info", {""}},
        {"Processing", "Proc", "Processing software", {"ImagesPlus", "PhotoImpact"}},
        {"Location", "Loc", "Where image was taken", {"RQT", "VLD"}},
        {"Date", "Date", "Date of capture", {""}},
    }};
    return rows;
}

FormatLists ParseFormats(std::string_view bytes) {
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
    FormatLists lists;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        ParseLine(bytes.substr(0, end), lists);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return lists;
}

std::vector<std::string> DateEntries(const DateTime& now) {
    const std::string month = kMonths[static_cast<std::size_t>(std::clamp(now.month, 1, 12) - 1)];
    const std::string yyyy = FormatPadded(now.year, 4);
    const std::string mm = FormatPadded(now.month, 2);
    const std::string dd = FormatPadded(now.day, 2);
    return {dd + "-" + month.substr(0, 3) + "-" + yyyy,
            month + " " + dd + ", " + yyyy,
            FormatDateText(now),
            mm + "/" + dd + "/" + yyyy.substr(yyyy.size() - 2),
            yyyy + "-" + mm + "-" + dd,
            yyyy + "." + mm + "." + dd};
}

void LoadFormats(FormatLists& lists, const std::optional<std::string>& bytes, const DateTime& now) {
    FormatLists loaded = bytes ? ParseFormats(*bytes) : FormatLists();
    auto& filters = loaded[At(NoteEntry::Filter)];
    const auto& before = lists[At(NoteEntry::Filter)];
    filters.insert(filters.begin(), before.begin(), before.end());
    if (bytes)
        for (std::string& date : DateEntries(now))
            loaded[At(NoteEntry::Date)].push_back(std::move(date));
    for (std::size_t i = 0; i < kNoteEntries; ++i)
        if (loaded[i].empty()) loaded[i] = NoteEntryRows()[i].defaults;
    lists = std::move(loaded);
}

std::optional<std::string> ReadFormatFile(Files& files, const std::string& path,
                                          const std::string& programsOwn) {
    auto bytes = files.Read(path, kMostRead);
    if (bytes || files.Exists(path)) return bytes;
    const auto own = files.Read(programsOwn, kMostRead);
    std::string error;
    if (!own || !files.Write(path, *own, &error)) return {};
    return files.Read(path, kMostRead);
}

std::string ComposeNote(const NoteComposition& composition) {
    std::string note = composition.firstLines.value_or("");
    for (std::size_t i = 0; i < kNoteEntries; ++i) {
        if (!composition.entries[i]) continue;
        note += kLineEnd;
        note += NoteEntryRows()[i].caption;
        note += ": " + *composition.entries[i];
    }
    return note;
}

std::vector<std::pair<NoteEntry, std::string>> ReadBack(std::string_view note,
                                                        const EntryTicks& ticks) {
    std::vector<std::pair<NoteEntry, std::string>> values;
    for (const std::string& line : Split(note, '\n')) {
        for (const NoteEntry entry : kReadBackOrder) {
            auto value = ValueOf(line, NoteEntryRows()[At(entry)].caption);
            const NoteEntry ruling = entry == NoteEntry::Location ? NoteEntry::Lens : entry;
            if (value && ticks[At(ruling)]) values.emplace_back(entry, std::move(*value));
        }
    }
    return values;
}

std::string FirstLines(std::string_view note, int n) {
    std::string first;
    const auto pieces = Split(note, '\r');
    const auto count = std::min(pieces.size(), static_cast<std::size_t>(std::max(n, 1)));
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) first += kLineEnd;
        first += std::string_view(pieces[i]).substr(pieces[i].starts_with('\n') ? 1 : 0);
    }
    return first;
}

} // namespace tarn
