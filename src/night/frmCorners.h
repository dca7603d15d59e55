// The window "Corners": nine cuts of the picture at full size, from its corners, edges and middle,
// each with the size of the stars there and the direction in which they are drawn out.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "sky/night/LateStars.h"

#include <QDialog>

#include <array>
#include <functional>
#include <memory>
#include <optional>

class QLabel;

namespace tarn {

class CornerCut;

class frmCorners : public QDialog {
public:
    explicit frmCorners(Context& context);
    ~frmCorners() override;

    void Form_Load();
    void Follow(); // another picture is shown, or the same otherwise
    void ShowStars(const StarsOfFile& stars);

    std::function<void()> onClosed;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override; // Esc
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Closed();
    void ShowCuts();
    void ShowTexts();

    Context& m;
    KeptPlace m_place;
    std::array<CornerCut*, 9> m_cuts{};
    QLabel* m_line;
    ImgX m_picture; // turned as it is shown, with all its pixels
    Turn m_turn;
    std::optional<StarsOfFile> m_stars; // of the picture shown
};

} // namespace tarn
