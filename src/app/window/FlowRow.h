// A row of controls that goes on in a further line where the window is too narrow for one. `Wrap`
// alone says where a line ends; all sizes follow from it.
#pragma once

#include <QLayout>

#include <vector>

namespace tarn {

class FlowRow : public QLayout {
public:
    // Gaps in logical pixels, between controls and between groups of them.
    FlowRow(QWidget* on, int gap, int groupGap);
    ~FlowRow() override;

    // A control of another group than the one before stands off from it.
    void Add(QWidget* widget, int group);

    // What a text may grow to: room is kept for it, also while it is hidden, so that nothing moves
    // with each picture.
    void Reserve(const QWidget* widget, int width);

    // Width at which all controls stand in one line at their least widths.
    int LineWidth() const;

    // The least width at which they stand in so many lines.
    int WidthFor(int lines) const;

    void addItem(QLayoutItem* item) override;
    int count() const override { return int(m_cells.size()); }
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    Qt::Orientations expandingDirections() const override { return {}; }
    void setGeometry(const QRect& rect) override;

private:
    struct Cell {
        QLayoutItem* item;
        int group;
        int reserved = 0; // least width that is counted on
    };
    struct Placed {
        QLayoutItem* item;
        QRect place; // in the row; from the top of its line until that is laid out
    };
    struct Line {
        std::vector<Placed> placed;
        int width = 0; // used
        int height = 0;
    };
    enum class Room {
        Shown, // for what is seen now
        Kept   // and for what may come
    };
    std::vector<Line> Wrap(int width, Room room) const;
    int GroupWidth(const Cell* first, Room room) const;
    static int HeightOf(const std::vector<Line>& lines);
    static void Spread(Line& line, int width, int top);
    static bool Counts(const Cell& cell, Room room);
    static QSize LeastSize(const Cell& cell, Room room);

    std::vector<Cell> m_cells;
    int m_gap;
    int m_groupGap;
    int m_group = 0; // of the control being added
};

} // namespace tarn
