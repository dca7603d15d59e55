// The pages of a document before they are sent.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "widgets/WindowKeys.h"
#include "widgets/printing/Printer.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <string>

class QLabel;
class QPushButton;
class QScrollArea;

namespace tarn {

class PaperView;

class frmPrintPreview : public QWidget {
public:
    explicit frmPrintPreview(Context& context);
    ~frmPrintPreview() override;

    // Shows them in place of what it had; `send` is called when the user prints.
    void ShowPages(std::unique_ptr<Printer> printer, const PrinterChoice& choice,
                   std::function<bool(Printer&)> send);

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

    int Page() const { return m_page; } // from 0
    double Zoom() const { return m_zoom; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPushButton* Button(const char* name, const QString& caption, int key);
    void MakeButtons();
    void GoTo(int page);
    void GoBack() { GoTo(m_page - 1); }
    void GoOn() { GoTo(m_page + 1); }
    void GoToFirst() { GoTo(0); }
    void GoToLast();
    void Enlarge();
    void MakeSmaller();
    void ShowWholePage();
    void Close() { close(); }
    void SetZoom(double zoom);
    void FitPage();
    void PrintPages();
    void SavePdf();

    Context& m;
    KeptPlace m_place;
    PaperView* m_view = nullptr;
    QScrollArea* m_area = nullptr;
    QLabel* m_label = nullptr;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
    QPushButton* m_print = nullptr;
    std::unique_ptr<Printer> m_printer;
    std::function<bool(Printer&)> m_send;
    std::string m_pdf; // where a file is proposed
    int m_page = 0;
    double m_zoom = 1; // logical pixels of the screen for a pixel of 96 an inch
    bool m_fits = true;

    static const WindowKey<frmPrintPreview> kKeys[];
};

} // namespace tarn
