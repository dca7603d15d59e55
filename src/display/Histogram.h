// The values of a picture as columns, with a line for each of the stretch's three marks.
#pragma once

#include <QWidget>

#include <array>

namespace tarn {

class Histogram : public QWidget {
public:
    static constexpr int kColumns = 256;

    explicit Histogram(QWidget* parent = nullptr);

    void SetCounts(const std::array<int, kColumns>& counts);

    // Shadows, midtones, highlights: places from 0 to 1.
    void SetMarks(const std::array<double, 3>& places);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::array<int, kColumns> m_counts{};
    std::array<double, 3> m_marks{};
};

} // namespace tarn
