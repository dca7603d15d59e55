// The main window: makes the controls of the table, gives each its place, and hands what happens to
// the rooms. It knows no picture and no file.
#pragma once

#include "app/window/MainLayout.h"
#include "desk/controls/MainControls.h"

#include <QMainWindow>

#include <functional>
#include <initializer_list>
#include <map>
#include <vector>

class QBoxLayout;
class QScrollArea;
class QShortcut;
class QSplitter;

namespace tarn {

class Files;
class FlowRow;
class FocusFrame;
class PaneHandle;

class frmMain : public QMainWindow {
    Q_OBJECT

public:
    frmMain(MainControls& controls, const Files& files);

    // Lays the window out for its present size.
    void LayOutNow();
    QSize DesignSize() const { return m_design; }

    // Place of the splitter in twips.
    int SplitterTop() const;
    void SetSplitterTop(int twips);
    int DesignSplitterTop() const; // two fifths for the tree

    // Where the handles between the panes stand.
    const PanePlaces& Panes() const { return m_chosen; }
    void SetPanes(const PanePlaces& places);

    // The pane alone, as large as the window, or all the rest beside it.
    void SetPictureOnly(bool only);
    bool IsPictureOnly() const { return m_pictureOnly; }

    // The way of the Tab key; once all commands are connected, which makes links of texts.
    void OrderTabs();

    // A strip that comes and goes above the message line; the panes above it give way.
    void SetNotice(QWidget& strip);
    void ShowNotice(bool shown);

    // Font of the file list made larger by so many points; the size as the list now reports it.
    double ChangeListFont(double by);

    std::function<void()> onResize;                 // the size has changed, after the layout
    std::function<void()> onRefit;                  // the pane alone has, by a strip
    std::function<void()> onSizedBySystem;          // behind that, when it was not the program
    std::function<void()> onEscape;                 // Esc while the pane is alone
    std::function<void()> onClose;                  // the window is asked to close
    std::function<void(const std::string&)> onOpen; // a file or folder was dropped

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeBars();
    void MakePanels();
    void MakeHandles();
    PaneHandle* Handle(const char* name, Qt::Orientation moves, int LayoutMeasures::*now,
                       int PanePlaces::*chosen, int sign);
    void PlaceInfo(int width);
    void ApplyChosen(LayoutMeasures& measures, QSize area) const;
    void Moved();
    QWidget* Bar(const char* name, QWidget* parent);
    void Put(QWidget* widget, Place place);
    void StyleControls();
    void StyleFonts();
    void ReserveInfo();
    int WidestOf(std::initializer_list<Place> places) const;
    void Measure();
    void MeasureDesign();
    void MeasureLeast();
    void TakeDesignSize();
    int LeastPanel(int notesWidth) const;
    int LeastListSide(int width) const;
    int LeastAbove(const LayoutMeasures& measures) const;
    void SetLeastArea(QSize outside);
    QSize AreaInside(QSize outside);
    LayoutMeasures MeasuresFor(QSize area) const;
    void PlacePanes(const QRect& area);

    MainControls& m_controls;
    QScrollArea* m_scroll = nullptr; // shows bars only on a screen too small for the least area
    QWidget* m_area = nullptr;       // what the layout divides
    QWidget* m_folderBar = nullptr;
    QSplitter* m_splitter = nullptr; // vbuSplitter
    QWidget* m_listSide = nullptr;
    QWidget* m_tools = nullptr;
    QWidget* m_info = nullptr; // texts about the picture
    QWidget* m_panes = nullptr;
    QWidget* m_videoFrame = nullptr;
    QWidget* m_exif = nullptr;
    QWidget* m_notes = nullptr;
    PaneHandle* m_treeHandle = nullptr;
    PaneHandle* m_stripHandle = nullptr;
    PaneHandle* m_notesHandle = nullptr;
    FocusFrame* m_focus = nullptr;
    QWidget* m_notice = nullptr;
    bool m_noticeShown = false;
    QShortcut* m_escape = nullptr;       // before all keys of the pane
    std::map<Place, QBoxLayout*> m_bars; // of one control each
    std::map<Place, FlowRow*> m_rows;
    std::map<Place, std::vector<QWidget*>> m_placed; // for the Tab key
    LayoutMeasures m_measures;                       // of the design size
    LayoutMeasures m_least;                          // of the smallest area
    LayoutMeasures m_now;                            // as laid out
    PanePlaces m_chosen;
    bool m_pictureOnly = false;
    QSize m_designArea;
    QSize m_design;
    QSize m_laidOut;
    int m_leastWidth = 0;
};

} // namespace tarn
