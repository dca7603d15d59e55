// Sets up conversions to JPEG and lets the user run through a folder with them. Stands above the
// other windows; what it shows lies on the desk, also while it is closed.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"

#include <QDialog>

#include <functional>
#include <string>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSlider;
class QVBoxLayout;

namespace tarn {

class CopyRoom;

class frmCaption : public QDialog {
public:
    frmCaption(Context& context, CopyRoom& room);

    void OpenForm();
    bool IsOpen() const { return m_open; }
    void ShowCopyFolder();
    void ShowPicture() { ShowType(); } // another one is shown
    void ShowCaptionText(const std::string& text);
    void reject() override { close(); } // Esc, too, ends what the window remembers

protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;

private:
    void MakeText(QVBoxLayout& all);
    void MakeSize(QVBoxLayout& all);
    void MakeCommands(QVBoxLayout& all);
    QPushButton* Button(const char* name, const char* caption, const char* tip,
                        std::function<void()> act);
    void UseText(int type);
    void ShowType();
    void LimitClicked(QCheckBox& clicked, QCheckBox& other);
    void ShowQuality();
    void ShowPreview();
    void Step(bool forward);

    Context& m;
    CopyRoom& m_room;
    QCheckBox* m_addText;            // CheckAddText
    QLineEdit* m_lines;              // TextFirstLines
    QLineEdit* m_caption;            // TextCaption
    QLabel* m_using;                 // Label1
    QLabel* m_preview;               // the lower end of the picture with the text
    QSlider* m_quality;              // SliderJpgQ
    QLabel* m_qualityLabel;          // LabelJpgQ
    QLineEdit* m_maxSize;            // TextMaxSize
    QCheckBox* m_maxWidth;           // CheckMaxWidth
    QCheckBox* m_maxHeight;          // CheckMaxHeight
    QPushButton* m_copyTo = nullptr; // CommandCopyTo
    KeptPlace m_place;
    bool m_open = false;
};

} // namespace tarn
