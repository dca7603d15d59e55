// Builds one web page by hand: its file, its look, its header, then picture after picture.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "history/Changes.h"
#include "web/BoundControls.h"
#include "web/PageBuild.h"

#include <QDialog>

#include <array>
#include <string>
#include <vector>

class QCheckBox;
class QLineEdit;
class QRadioButton;
class QVBoxLayout;

namespace tarn {

class DiskFacts;
class KeptNote;

// Of the dialogs that ask for a page.
inline constexpr char kPageFilter[] = "Html (*.html *.htm);;*.htm (*.htm)";

class frmHtmlLayout : public QDialog {
public:
    explicit frmHtmlLayout(Context& context);

    void ShowForm();

    // A page that is open gets its close: at Close, and when the program ends.
    void Form_Unload();

    // What no page carries, onto the desk.
    void KeepChecks();

    void CreateButton_Click();
    void AppendButton_Click();
    void CommandOk_Click();
    void HtmlAddButton_Click();
    void HtmlAddAll(bool reverse);
    void HtmlCloseButton_Click();
    void HtmlCloseViewButton_Click();
    void CommandHomePage_Click();

    const std::string& PagePath() const { return m_page.Path(); }
    bool HasPage() const { return m_flow != Flow::Closed; } // chosen, or being written

protected:
    void closeEvent(QCloseEvent* event) override;
    // Escape is no close while a page is open: it would end the page.
    void reject() override {
        if (!HasPage()) close();
    }

private:
    enum class Flow { Closed, Opened, Writing };

    void MakeTop(QVBoxLayout& all);
    void MakeLinkFrame();
    void MakePictureFrame();
    void MakeFormats(QVBoxLayout& rows);
    void MakePlaces(QVBoxLayout& rows);
    void MakeLookFrame();
    void MakeTextFrame();
    void MakeAddFrame();
    void MakeBottom(QVBoxLayout& all);
    void ConnectRules();
    void ShowLinkRule();
    void ShowSizeRule();
    void ChooseColorOf(ColorBox& box);
    void DefaultColors();
    void Show(Flow flow);
    std::string AskForPage(const char* title);
    void ReadSavedSettings(const std::string& path);
    void Choose(const std::string& path);
    void Opened();
    std::string RefusalOfCurrent() const;
    EntryFacts FactsOfCurrent();
    EntryFacts FactsOfPicture(DiskFacts& disk, const std::string& path, const std::string& note);
    Outcome AddEntry(const std::string& name, const EntryFacts& facts);
    Outcome AddCurrent();
    Outcome AddFile(DiskFacts& disk, const std::string& path, KeptNote& notes);
    bool AddAll(const std::vector<std::string>& paths, KeptNote& notes);
    void CopyVideoPicture();
    Changes& Write();
    bool ClosePage();
    void Failed();
    void FailedView(const char* what, const std::string& path, const std::string& error);
    void View(const std::string& path);
    void ShowInPane(const std::string& path);
    void ViewLast();
    void EditLast();
    void WarnOfName(const std::string& name, const EntryFacts& facts);

    Context& m;
    PageBuild m_page;
    std::optional<Changes> m_writing; // the page from its head to its close is one command
    BoundControls<HtmlSettings> m_fields;
    KeptPlace m_place;
    Flow m_flow = Flow::Closed;
    bool m_videoFaultTold = false; // that the video's picture cannot be copied
    std::string m_chosen;          // the last page's path
    int m_brokenLinks = 0;         // entries whose name browsers cannot follow

    QWidget* m_frame1 = nullptr; // link and size of the image
    QWidget* m_frame2 = nullptr; // what an entry shows
    QWidget* m_frame3 = nullptr; // colours, font, borders
    QWidget* m_frame4 = nullptr; // texts and links of the page
    QWidget* m_frameAdd = nullptr;
    QCheckBox* m_appendOption = nullptr;
    QCheckBox* m_inForm = nullptr;
    QCheckBox* m_advance = nullptr;
    QCheckBox* m_keptOnly = nullptr; // for Add All
    QCheckBox* m_exifInfo = nullptr;
    QCheckBox* m_imageLabel = nullptr;
    QCheckBox* m_zoomPan = nullptr;
    std::array<QRadioButton*, 3> m_layouts{};
    QRadioButton* m_sizeFull = nullptr;
    QRadioButton* m_sizeHeight = nullptr;
    QRadioButton* m_sizeWidth = nullptr;
    QRadioButton* m_sizePreview = nullptr;
    QLineEdit* m_height = nullptr;
    QLineEdit* m_width = nullptr;
    QLineEdit* m_home = nullptr;
    QLabel* m_font = nullptr;
    QLabel* m_fontSize = nullptr;
    QLabel* m_lastFile = nullptr;
    QLabel* m_lastLink = nullptr;
    QLabel* m_error = nullptr;
    std::vector<ColorBox*> m_colors; // text, page, title, borders
    QPushButton* m_view = nullptr;
    QPushButton* m_edit = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_close = nullptr;
    QPushButton* m_closeView = nullptr;
    QPushButton* m_link = nullptr;
    QPushButton* m_cancel = nullptr;
};

} // namespace tarn
