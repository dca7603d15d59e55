// Snapshot of the files of one folder that fit a pattern, sorted by name in any case, each once.
#pragma once

#include "platform/Files.h"

#include <QAbstractListModel>

#include <QIcon>

#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace tarn {

// Which files are listed, by their notes.
enum class NoteChoice { All, WithNote, WithoutNote };

class FileListModel : public QAbstractListModel {
public:
    explicit FileListModel(const Files& files) : m_files(files) {}

    // Reads the folder again with this pattern: one reading of the directory, no file touched.
    // False when it cannot be read: everything stays.
    bool Read(const std::string& folder, const std::string& pattern);

    // Files that have come to the folder, of which those are rows that fit.
    struct Added {
        bool isAnyListed = false; // also of those that are no rows
        bool isAnew = false;      // all rows
        std::vector<int> rows{};  // that have come, ascending; none where all stand anew
    };
    Added Add(const std::vector<std::string>& names);

    // Whether the folder now holds other names than the snapshot; what is left out is as of now.
    bool DiffersFromDisk();

    bool Fits(const std::string& name) const; // the pattern
    // Files of the folder that do not fit the pattern, unsorted.
    const std::vector<std::string>& LeftOut() const { return m_reading.leftOut; }
    // Those that fit it and are not listed for their notes, unsorted.
    const std::vector<std::string>& NotChosen() const { return m_reading.notChosen; }

    // Only the rows that `keeps` says, until it is empty: of the snapshot, without a look at the
    // disk. Later readings are narrowed, too.
    void Narrow(std::function<bool(const std::string& name)> keeps);
    bool IsNarrowed() const { return static_cast<bool>(m_keeps); }
    bool LeavesOut(const std::string& name) const; // though the folder has it

    // Which of those are rows, and in which order; they come in the order of names. May be empty.
    std::function<std::vector<std::string>(const std::string& folder,
                                           std::vector<std::string> names)>
        arrange;
    bool Rearrange(); // whether the rows are others now
    // Files of the folder that fit the pattern, in the order of names.
    const std::vector<std::string>& Listed() const { return m_reading.listed; }

    const std::string& Folder() const { return m_folder; }
    const std::string& Pattern() const { return m_pattern; }
    void KeepPattern(const std::string& pattern) { m_pattern = pattern; } // for the next reading
    int Count() const { return static_cast<int>(m_names.size()); }
    const std::string& Text(int row) const { return m_names[static_cast<std::size_t>(row)]; }
    int RowOf(const std::string& name) const; // exact name; -1 when it is not listed

    // Whether a file has a note. With it, each row bears the mark of a note or a blank in its
    // place; without it there are no marks, and every file is listed.
    std::function<bool(const std::string& name)> hasNote;
    // "kept, 3 stars", or nothing; may be empty.
    std::function<std::string(const std::string& name)> spokenMark;
    NoteChoice noteChoice = NoteChoice::All; // counts when the folder is read

    int rowCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    struct Reading {
        std::vector<std::string> listed; // sorted
        std::vector<std::string> leftOut;
        std::vector<std::string> notChosen;
    };
    std::string Spoken(const std::string& name) const;
    bool IsChosen(const std::string& name) const;
    std::optional<Reading> Look(const std::string& folder, const std::string& pattern) const;
    std::vector<std::string> Rows() const;
    // Those of them that are newly listed.
    std::unordered_set<std::string> TakeIn(const std::vector<std::string>& names);

    const Files& m_files;
    std::string m_folder;
    std::string m_pattern;
    Reading m_reading;
    std::function<bool(const std::string&)> m_keeps;
    std::vector<std::string> m_names; // the rows
    mutable QIcon m_mark;             // drawn when first asked for
    mutable QIcon m_noMark;
};

} // namespace tarn
