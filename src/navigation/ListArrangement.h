// Which files of the folder are listed by their marks, and in which order the list has them: the
// boxes beside it and the entries of the menu. What an order needs from the disk comes in behind
// the folder; the current file stays the current one.
#pragma once

#include "desk/Context.h"
#include "navigation/SortFacts.h"

#include <QObject>
#include <QTimer>

#include <string>
#include <vector>

class QAction;

namespace tarn {

class ListArrangement {
public:
    explicit ListArrangement(Context& context);

    void ConnectControls();

    // Why the list may be empty though the folder has files.
    bool ChoosesByMark() const { return m_choice >= 0; }
    void ListAllMarks(); // no choice by marks any more

private:
    std::vector<std::string> Arranged(const std::string& folder, std::vector<std::string> names);
    void FolderRead();
    void MarksCame();
    void NoteFilterCombo_Click(int index);
    void SetOrder(const ListOrder& order);
    void ShowOrder();
    void Rearrange();
    void AwaitMeasures();
    void MeasuresCame();
    const SortKind& Kind() const; // of the order
    SortNeeds Needs() const { return Kind().needs; }

    Context& m;
    QObject m_here;              // what the readers' threads tell is done in its thread
    int m_choice = -1;           // of MarkChoices
    ListOrder m_order;           // of the folder shown
    bool m_marksAwaited = false; // those of the folder shown are still being read
    bool m_measuresAwaited = false;
    std::vector<QAction*> m_entries;
    QTimer m_later;
    SortFacts m_facts; // last: its threads end first
};

} // namespace tarn
