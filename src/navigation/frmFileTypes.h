// Edits the lists of types behind the first three class boxes, and those that go with FITS
// pictures.
#pragma once

#include "desk/Context.h"
#include "navigation/ClassFilter.h"

#include <QDialog>

class QLabel;
class QLineEdit;

namespace tarn {

class frmFileTypes : public QDialog {
public:
    explicit frmFileTypes(Context& context);

    // Shows the lists as they stand and holds the other windows until it is closed.
    void ShowTypes(const ClassBoxes& boxes);

    void SetButton_Click();

private:
    Context& m;
    ClassBoxes m_boxes;
    QLineEdit* m_pictures; // FileTypesText
    QLineEdit* m_videos;   // VideoTypesText
    QLineEdit* m_web;      // WebTypesText
    QLineEdit* m_xisf;     // XisfTypesText, listed with FITS pictures
    QLineEdit* m_packed;   // PackedFitsTypesText, too
    QLabel* m_invalid;     // Label2
};

} // namespace tarn
