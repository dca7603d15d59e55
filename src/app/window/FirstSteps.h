// What a new user settles first: the folder of pictures, those for notes and copies, and whether
// file dates follow the pictures'. Each line shows what holds now; its button is the menu's
// command.
#pragma once

#include "desk/Context.h"

#include <QWidget>

#include <functional>

class QGridLayout;
class QLabel;
class QPushButton;
class QRadioButton;

namespace tarn {

class ElidedLabel;

class FirstSteps : public QWidget {
public:
    explicit FirstSteps(Context& context);

    // Above the lines; empty: nothing is to be said.
    void SetHint(const QString& text);
    void SetClosable(bool closable);

    std::function<void()> onClose;
    std::function<void()> onAnswer; // about the dates, and it was what held already

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    ElidedLabel* AddFolder(QGridLayout& to, const char* caption, const char* button,
                           QAction* command);
    void AddDates(QGridLayout& to);
    void AnswerDates(bool follow);
    void Refresh();

    Context& m;
    QLabel* m_hint;
    ElidedLabel* m_pictures;
    ElidedLabel* m_notes;
    ElidedLabel* m_copies;
    QRadioButton* m_yes;
    QRadioButton* m_no;
    QPushButton* m_close;
};

} // namespace tarn
