// The frames of a night as rows, in the order of a column.
#pragma once

#include "night/NightFrames.h"

#include <QAbstractTableModel>

#include <vector>

namespace tarn {

class NightTable : public QAbstractTableModel {
public:
    // Of these frames, which are kept elsewhere; the same or others have changed.
    void SetFrames(const std::vector<NightFrame>& frames);
    void FramesChanged(); // in place: none came or went

    std::size_t FrameOf(int row) const { return m_order[std::size_t(row)]; }
    int RowOf(std::size_t frame) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    void Arrange();

    const std::vector<NightFrame>* m_frames = nullptr;
    std::vector<std::size_t> m_order; // of the rows
    std::vector<int> m_rows;          // of the frames
    int m_column = 0;
    bool m_descending = false;
};

} // namespace tarn
