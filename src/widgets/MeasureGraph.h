// A measure of many frames over time or order, and a second one below it. Points are told apart by
// colour and shape; one is clicked or walked to by keys, and a line is dragged over the upper ones.
#pragma once

#include "common/graph_scale.h"

#include <QColor>
#include <QString>
#include <QWidget>

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace tarn {

struct GraphPoint {
    enum class Accent { None, Best, Worst };

    double x = 0;
    std::array<double, 2> y{}; // of the upper and the lower measure; NaN where there is none
    int kind = 0;              // into the names of the kinds
    Accent accent = Accent::None;
    bool kept = false;
    bool rejected = false;
};

class MeasureGraph : public QWidget {
public:
    explicit MeasureGraph(QWidget* parent = nullptr);

    struct Titles {
        std::array<QString, 2> measures;
        QString along;
        bool isTime = false; // x are seconds since 1970
    };
    void SetTitles(const Titles& titles);
    void SetPoints(std::vector<GraphPoint> points, std::vector<QString> kinds);
    void SetHint(const QString& hint); // while there are no points
    void SetCurrent(int point);        // -1: none
    void SetChosen(std::vector<bool> chosen);
    void SetLimit(std::optional<double> limit); // where the line lies

    std::function<QString(int point)> tipOf;
    std::function<void(int point)> onClick;
    std::function<void(double limit)> onLimit; // while it is dragged

    // Where a point of the upper part, or the lower (1), is painted, and which one lies there.
    QPointF PlaceOf(int point, int part) const;
    int PointAt(QPointF place) const; // -1: none
    double LimitAt(double y) const;

    QSize sizeHint() const override { return {560, 420}; }
    QSize minimumSizeHint() const override { return {260, 220}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRectF Plot(int part) const;
    int Left() const;
    void WorkOutRanges();
    std::vector<GraphTick> AlongTicks() const;
    void PaintPart(QPainter& painter, int part) const;
    void PaintAlong(QPainter& painter) const;
    void PaintLimit(QPainter& painter) const;
    void PaintLegend(QPainter& painter) const;
    void PaintPoint(QPainter& painter, int point, int part) const;
    void Walk(int by);
    void DragTo(double y);
    bool IsOnLimit(QPointF place) const;

    Titles m_titles;
    std::vector<GraphPoint> m_points;
    std::vector<QString> m_kinds;
    std::vector<bool> m_chosen;
    QString m_hint;
    int m_current = -1;
    GraphRange m_along;
    std::array<GraphRange, 2> m_ranges;
    std::optional<double> m_limit;
    std::optional<QPointF> m_pressed;
    bool m_drags = false;
};

// The colour of a kind by its name: filters have theirs, others what their number gives.
QColor ColourOfKind(const QString& name, int number);

} // namespace tarn
