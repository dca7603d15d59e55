// Alt with a letter chooses from menus, or nothing: it never types into a text.
#pragma once

#include <QObject>

namespace tarn {

// Holds for all texts of the program while it lives.
class AltLetters : public QObject {
public:
    AltLetters();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tarn
