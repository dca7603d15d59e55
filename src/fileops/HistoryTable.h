// The commands of the history as rows of a table, read as far as they are scrolled to.
#pragma once

#include "history/History.h"

#include <QAbstractTableModel>

#include <string>
#include <vector>

namespace tarn {

class HistoryTable : public QAbstractTableModel {
public:
    explicit HistoryTable(History& history) : m_history(history) {}

    // The newest first; of those whose words or folder have this text, in any case.
    void Show(const std::string& text);

    const CommandRow* RowAt(int row) const;
    // Its row, as far as it has been read; -1.
    int RowOf(std::int64_t id) const;

    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

private:
    std::vector<CommandRow> Next() const;

    History& m_history;
    std::string m_text;
    std::vector<CommandRow> m_rows;
    bool m_isWhole = false;
};

} // namespace tarn
