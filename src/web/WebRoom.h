// The commands of the menu "Web pages": the two forms, and the html files of a folder.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"

#include <memory>
#include <string>

namespace tarn {

class frmHtmlLayout;
class frmHtmlThumb;

class WebRoom : public Room {
public:
    explicit WebRoom(Context& context);
    ~WebRoom() override;

    void ConnectControls() override;

    void CreateAppendHtmlFile_Click();
    void HtmlThumbButton_Click();
    void HtmlEditButton_Click();       // in the browser
    void HtmlNotepadButton_Click();    // in the text editor
    void HtmlEditCustomButton_Click(); // in the chosen html editor
    void HtmlDeleteButton_Click();     // all pages of the folder, to the wastebasket

    void KeepValues() override;
    void BreakOff() override; // an open page gets its close

private:
    std::string AskForFile(const char* title, const char* filter);
    void Say(const std::string& failure, const std::string& done);

    Context& m;
    std::unique_ptr<frmHtmlLayout> m_layout; // made when they are first asked for
    std::unique_ptr<frmHtmlThumb> m_gallery;
};

} // namespace tarn
