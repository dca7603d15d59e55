#include "print/frmPrintPreview.h"

#include "common/paths.h"
#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/printing/PagePainter.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

constexpr double kScreenDotsPerInch = 96;
constexpr double kZoomStep = 1.25;
constexpr double kLeastZoom = 0.1;
constexpr double kMostZoom = 5;
constexpr int kAround = 12; // of the page, in the window
constexpr QSize kDesign(820, 900);

} // namespace

// One page, black on white whatever the desktop's colours are. Painted once a page and size.
class PaperView : public QWidget {
public:
    void Show(const PaperPage& page, PaperSize size, double zoom) {
        m_scale = zoom * kScreenDotsPerInch / kTwipsPerInch;
        setFixedSize(QSizeF(size.width * m_scale, size.height * m_scale).toSize());
        m_page = &page;
        m_painted = {};
        update();
    }
    void Forget() { m_page = nullptr; }

protected:
    void paintEvent(QPaintEvent*) override {
        const double ratio = devicePixelRatioF();
        if (m_painted.isNull() || m_painted.devicePixelRatio() != ratio) Paint(ratio);
        QPainter(this).drawImage(0, 0, m_painted);
    }

private:
    void Paint(double ratio) {
        m_painted = QImage(size() * ratio, QImage::Format_RGB32);
        m_painted.setDevicePixelRatio(ratio);
        m_painted.fill(Qt::white);
        if (!m_page) return;
        QPainter painter(&m_painted);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        painter.scale(m_scale, m_scale);
        PaintPage(painter, *m_page);
    }

    const PaperPage* m_page = nullptr;
    double m_scale = 1;
    QImage m_painted;
};

frmPrintPreview::frmPrintPreview(Context& context)
    : m(context), m_place(*this, context.state.PreviewPlace) {
    setObjectName(QStringLiteral("frmPrintPreview"));
    setWindowTitle(QStringLiteral("Print Preview"));
    auto* rows = new QVBoxLayout(this);
    auto* bar = new QHBoxLayout();
    rows->addLayout(bar);
    m_label = new QLabel(this);
    m_label->setObjectName(QStringLiteral("PageLabel"));
    MakeButtons();
    bar->addStretch();
    m_area = new QScrollArea(this);
    m_area->setAccessibleName(QStringLiteral("Page"));
    m_area->setAlignment(Qt::AlignCenter);
    m_area->setBackgroundRole(QPalette::Dark);
    m_area->setFocusPolicy(Qt::StrongFocus);
    m_view = new PaperView();
    m_area->setWidget(m_view);
    rows->addWidget(m_area, 1);
    m_place.Restore(kDesign);
}

frmPrintPreview::~frmPrintPreview() = default;

const WindowKey<frmPrintPreview> frmPrintPreview::kKeys[] = {
    {Qt::CTRL | Qt::Key_P, "print", &frmPrintPreview::PrintPages},
    {Qt::CTRL | Qt::Key_S, "write a PDF file", &frmPrintPreview::SavePdf},
    {Qt::Key_PageUp, "page before", &frmPrintPreview::GoBack},
    {Qt::Key_PageDown, "next page", &frmPrintPreview::GoOn},
    {Qt::Key_Home, "first page", &frmPrintPreview::GoToFirst},
    {Qt::Key_End, "last page", &frmPrintPreview::GoToLast},
    {Qt::Key_Plus, "larger", &frmPrintPreview::Enlarge},
    {Qt::Key_Minus, "smaller", &frmPrintPreview::MakeSmaller},
    {Qt::Key_0, "whole page", &frmPrintPreview::ShowWholePage},
    {Qt::Key_Escape, "close the window", &frmPrintPreview::Close},
};

std::vector<keys::KeyLine> frmPrintPreview::KeyLines() {
    return LinesOf(kKeys);
}

QPushButton* frmPrintPreview::Button(const char* name, const QString& caption, int key) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(QString::fromLatin1(name));
    button->setShortcut(QKeySequence(key));
    button->setToolTip(QKeySequence(key).toString(QKeySequence::NativeText));
    connect(button, &QPushButton::clicked, this, [this, key] { ActOnKey(*this, kKeys, key); });
    static_cast<QHBoxLayout*>(layout()->itemAt(0)->layout())->addWidget(button);
    return button;
}

void frmPrintPreview::MakeButtons() {
    m_print =
        Button("PreviewPrintButton", QStringLiteral("Print"), (Qt::CTRL | Qt::Key_P).toCombined());
    Button("PreviewPdfButton", QStringLiteral("PDF..."), (Qt::CTRL | Qt::Key_S).toCombined());
    m_previous = Button("PreviewPreviousButton", QStringLiteral("Previous"), Qt::Key_PageUp);
    m_next = Button("PreviewNextButton", QStringLiteral("Next"), Qt::Key_PageDown);
    static_cast<QHBoxLayout*>(layout()->itemAt(0)->layout())->addWidget(m_label);
    Button("PreviewLargerButton", QStringLiteral("Larger"), Qt::Key_Plus);
    Button("PreviewSmallerButton", QStringLiteral("Smaller"), Qt::Key_Minus);
    Button("PreviewFitButton", QStringLiteral("Whole Page"), Qt::Key_0);
    Button("PreviewCloseButton", QStringLiteral("Close"), Qt::Key_Escape);
}

void frmPrintPreview::GoToLast() {
    if (m_printer) GoTo(static_cast<int>(m_printer->Pages().size()) - 1);
}

void frmPrintPreview::Enlarge() {
    SetZoom(m_zoom * kZoomStep);
}

void frmPrintPreview::MakeSmaller() {
    SetZoom(m_zoom / kZoomStep);
}

void frmPrintPreview::ShowWholePage() {
    m_fits = true;
    FitPage();
}

void frmPrintPreview::ShowPages(std::unique_ptr<Printer> printer, const PrinterChoice& choice,
                                std::function<bool(Printer&)> send) {
    m_view->Forget();
    m_printer = std::move(printer);
    m_send = std::move(send);
    m_pdf = choice.pdf;
    m_print->setText(choice.toFile ? QStringLiteral("Print to File") : QStringLiteral("Print"));
    m_fits = true;
    show();
    raise();
    activateWindow();
    m_area->setFocus();
    m_page = 0;
    FitPage();
}

void frmPrintPreview::GoTo(int page) {
    if (!m_printer) return;
    const auto& pages = m_printer->Pages();
    const int count = static_cast<int>(pages.size());
    m_page = std::clamp(page, 0, count - 1);
    m_previous->setEnabled(m_page > 0);
    m_next->setEnabled(m_page + 1 < count);
    m_label->setText(QStringLiteral("%1 of %2").arg(m_page + 1).arg(count));
    m_view->Show(pages[static_cast<std::size_t>(m_page)], m_printer->PageSize(), m_zoom);
}

void frmPrintPreview::SetZoom(double zoom) {
    m_fits = false;
    m_zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
    GoTo(m_page);
}

void frmPrintPreview::FitPage() {
    if (!m_printer) return;
    const PaperSize page = m_printer->PageSize();
    const double dots = kScreenDotsPerInch / kTwipsPerInch;
    const QSize room = m_area->size() - QSize(kAround, kAround);
    const double zoom =
        std::min(room.width() / (page.width * dots), room.height() / (page.height * dots));
    m_zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
    GoTo(m_page);
}

void frmPrintPreview::PrintPages() {
    if (!m_printer) return;
    if (m_send(*m_printer)) close(); // pages that did not get there can be sent once more
}

void frmPrintPreview::SavePdf() {
    if (!m_printer) return;
    const std::string path = m.dialogs.SaveFile("Save as PDF", m_pdf, "PDF files (*.pdf)");
    if (path.empty()) return;
    std::string error;
    if (!WritePdf(m.files, path, m_printer->PageSize(), m_printer->Pages(), &error)) {
        m.dialogs.Message(Dialogs::Icon::Exclamation, "Print Preview",
                          "'" + LastPart(path) + "' was not written: " + error);
        return;
    }
    m_pdf = path;
    m.state.PrintFolder = FolderOf(path);
    m.shell.ShowMessage("'" + LastPart(path) + "' file created");
}

// The pages go with it: a folder's pictures take their memory.
void frmPrintPreview::closeEvent(QCloseEvent* event) {
    m_view->Forget();
    if (m_printer) m_printer->Kill();
    m_printer.reset();
    QWidget::closeEvent(event);
}

void frmPrintPreview::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (m_fits) FitPage();
}

void frmPrintPreview::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if ((key != Qt::Key_Home && key != Qt::Key_End) || !ActOnKey(*this, kKeys, key))
        QWidget::keyPressEvent(event);
}

} // namespace tarn
