// The options of a gallery of thumbnails, and the commands that make one.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "web/BoundControls.h"
#include "web/GalleryRun.h"

#include <QDialog>

class QCheckBox;
class QListWidget;
class QRadioButton;

namespace tarn {

class GalleryMiniature;

class frmHtmlThumb : public QDialog {
public:
    explicit frmHtmlThumb(Context& context);

    // The gallery's chosen file; the options are the desk's.
    void ShowForm(const std::string& path);

    void Form_Unload(); // the options go onto the desk

    void MakeGallery(bool frames);
    void GenThumbButton_Click(bool updateOnly);
    void HtmlViewButton_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void reject() override { close(); }

private:
    QWidget* MakeThumbnails();
    QWidget* MakeIndex();
    QWidget* MakeCellNotes();
    QWidget* MakeLinks();
    QWidget* MakePicture();
    QWidget* MakePageNotes();
    QWidget* MakeLook();
    QWidget* MakeRun();
    void Follow(QWidget& part); // the miniature follows its controls
    void ShowMiniature();
    void ShowWarnings(const GallerySettings& settings);
    void Form_Activate();
    void Say(const std::string& text);
    std::vector<GalleryItem> Items() const; // in the order of the list
    GalleryPlan Plan(bool frames) const;
    std::vector<std::string> Pictures() const;
    void Run(GalleryPlan plan);
    void SetBusy(bool busy);

    Context& m;
    BoundControls<GallerySettings> m_fields;
    KeptPlace m_place;
    std::string m_path;
    std::string m_folder;  // of the pictures
    int m_missing = 0;     // pictures without a thumbnail
    int m_brokenLinks = 0; // pictures whose names browsers cannot follow
    QString m_brokenName;  // the last of them

    QComboBox* m_size = nullptr;     // GenThumbSize
    QListWidget* m_thumbs = nullptr; // FileThumb
    QListWidget* m_linked = nullptr; // FileLinked
    QCheckBox* m_topLine = nullptr;
    QCheckBox* m_keptOnly = nullptr;
    QRadioButton* m_notesTop = nullptr;
    QLabel* m_info = nullptr;
    QLabel* m_error = nullptr;
    QPushButton* m_view = nullptr;
    QPushButton* m_cancel = nullptr;
    GalleryMiniature* m_miniature = nullptr;
    std::vector<QPushButton*> m_commands; // off while a gallery is made
};

} // namespace tarn
