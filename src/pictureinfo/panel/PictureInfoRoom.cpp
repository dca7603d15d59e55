#include "pictureinfo/panel/PictureInfoRoom.h"

#include "platform/QtText.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>

namespace tarn {

void PictureInfoRoom::ReadPictureInfo() {
    m_reader.ReadPictureInfo(m.state);
    const MainControls& c = m.controls;
    c.MpixelText->setText(ToQt(m.state.MpixelText));
    c.FileSizeText->setText(ToQt(m.state.FileSizeText));
    c.List1->clear();
    m.state.HistoryListed = false;
    for (const std::string& row : m.state.PanelRows) c.List1->addItem(ToQt(row));
    m.shell.ShowMessage(m.state.DatesDiffer ? m.state.FileDate : std::string());
    for (QAction* entry : {c.FixPictureDateButton, c.SetFileDatesButton, c.PopupSetFileDatesButton})
        SetEnabled(entry, !m.state.NoExif);
}

} // namespace tarn
