#include "display/frmOnetoOne.h"

#include "desk/state/Replay.h"
#include "display/Rings.h"
#include "imaging/Upright.h"
#include "platform/QtText.h"
#include "widgets/PictureBox.h"
#include "widgets/WindowPlaces.h"

#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QWindow>

#include <cmath>

namespace tarn {

namespace {

constexpr QSize kDesign(800, 600);
constexpr int kCorner = 75 / kTwipsPerPixel; // from the edges

PixelSize Whole(QSize size) {
    return {size.width(), size.height()};
}

} // namespace

frmOnetoOne::frmOnetoOne(Context& context)
    : m(context), m_place(*this, context.state.OneToOnePlace), m_picture2(new PictureBox(this)),
      m_picture3(new PictureBox(this)), m_infoText(new QLabel(this)) {
    setObjectName(QStringLiteral("frmOnetoOne"));
    m_picture2->setObjectName(QStringLiteral("OnePicture2"));
    m_picture3->setObjectName(QStringLiteral("OnePicture3"));
    m_picture2->setAccessibleName(QStringLiteral("Picture at full size"));
    m_picture3->setAccessibleName(QStringLiteral("Whole picture, the part shown is chosen in it"));
    m_infoText->setObjectName(QStringLiteral("InfoText"));
    m_infoText->setTextFormat(Qt::PlainText);
    m_infoText->setAutoFillBackground(true);
    m_infoText->setMargin(2);
    for (PictureBox* box : {m_picture2, m_picture3}) box->installEventFilter(this);
    setFocusProxy(m_picture2);
}

PixelSize frmOnetoOne::Navigator() const {
    const double ratio = devicePixelRatioF();
    return {int(kNavWidth * ratio), int(kNavHeight * ratio)};
}

PixelSize frmOnetoOne::View() const {
    return Whole(m_picture2->PixelSize());
}

void frmOnetoOne::Form_Load() {
    {
        const QScopedValueRollback<bool> loading(m_loading, true);
        setWindowState(windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized));
        m_place.Restore(kDesign);
        m_picture2->SetPicture(QImage());
        m_picture3->show();
        m_last.reset();
        Layout();
        Form_Activate();
        show();
        OnePicture(m.state);
    }
    m.state.OneToOneLoaded = true;
    m_picture2->setFocus();
    if (m_followsScreen) return;
    m_followsScreen = true; // another may have finer pixels
    connect(windowHandle(), &QWindow::screenChanged, this, [this] {
        if (m.state.OneToOneLoaded) OnePicture(m.state);
    });
}

void frmOnetoOne::Form_Activate() {
    SetOnTop(*this, m.state.OneAlwaysTop);
}

void frmOnetoOne::OnePicture(const PreviewTurns& turns, int orientation) {
    const ProgramState& s = m.state;
    m_infoText->setText(ToQt(s.Filename + " (" + s.SizeText + ") " + s.FileSizeText));
    m_infoText->setToolTip(ToToolTip(s.Filename));
    setWindowTitle(ToQt(kCaption + s.Filename));
    m_full.Clear(); // no picture stands under the name of a clip or page
    if (s.ImageWidth > 0) m_full.CopyFrom(s.ImgXfull);
    ReplayTurns(turns, m_full);
    TurnUpright(orientation, m_full);
    m_turn = TurnOf(turns, orientation);
    m_begin.reset();
    m_nav.CopyFrom(m_full); // from the pixels at hand, which are enough for it
    m_full.FetchAll();
    const std::string error = m_full.ErrorText(); // what is shown is an enlargement then
    m_full.Brightness(s.BrightnessValue);
    ShowNavigator();
    m_infoText->setVisible(s.OneToOneInfo);
    if (!error.empty()) ShowInfo(error + " - " + s.FileNameOnly);
    Layout();
    const PixelSize copy{m_nav.Width(), m_nav.Height()};
    const NavPoint at = m_last.value_or(NavPoint{float(copy.width) / 2, float(copy.height) / 2});
    MoveView(at.x, at.y);
}

void frmOnetoOne::ShowNavigator() {
    const PixelSize picture = Full();
    const PixelSize copy = FitNavigator(picture, Navigator());
    if (copy != picture) m_nav.Scale(copy.width, copy.height);
    m_nav.Brightness(m.state.BrightnessValue);
    m_painted = false; // also where the view stays as it is
    m_picture3->SetPicture(m_nav.FullPicture());
}

// Copies share their pixels, so that only what is cut out is copied.
void frmOnetoOne::MoveView(float x, float y) {
    const PixelSize view = View();
    const PixelSize copy{m_nav.Width(), m_nav.Height()};
    m_last = NavPoint{x, y};
    PutRings();
    if (!m_full.HasImage()) m_picture2->SetPicture(QImage());
    const auto place = m_full.HasImage() ? PlaceOfView(x, y, Full(), copy, view) : std::nullopt;
    if (!place) return; // a picture smaller than the viewport: it keeps what it showed
    m_view.CopyFrom(m_full);
    m_view.Crop(place->left, place->top, view.width, view.height);
    m_painted = false;
    m_picture2->SetPicture(m_view.FullPicture());
    m_begin = QPoint(place->left, place->top);
    PutRings();
}

void frmOnetoOne::ShowRings(const PictureRings& rings) {
    m_rings = rings;
    PutRings();
}

void frmOnetoOne::PutRings() {
    const bool shown = m_begin && m_full.HasImage() && m_rings.path == m.state.Filename;
    m_picture2->SetRings(
        shown ? RingsIn(m_rings, {m_turn, QSize(m_full.Width(), m_full.Height()), 1, *m_begin},
                        m_picture2->Picture().size())
              : std::vector<SeenRing>());
}

void frmOnetoOne::ToggleInfo() {
    const bool shown = m_infoText->isHidden();
    m_infoText->setVisible(shown);
    m.state.OneToOneInfo = shown;
}

void frmOnetoOne::ShowInfo(const std::string& text) {
    m_infoText->setText(ToQt(text));
    m_infoText->show();
}

void frmOnetoOne::Layout() {
    m_picture2->setGeometry(rect());
    const double ratio = devicePixelRatioF();
    const QSize copy(int(std::ceil(m_nav.Width() / ratio)), int(std::ceil(m_nav.Height() / ratio)));
    m_picture3->setGeometry(width() - copy.width() - kCorner, height() - copy.height() - kCorner,
                            copy.width(), copy.height());
    m_infoText->setGeometry(0, 0, width(), m_infoText->sizeHint().height());
}

void frmOnetoOne::resizeEvent(QResizeEvent*) {
    if (m_loading || isMinimized()) return;
    Layout();
    if (m_last) MoveView(m_last->x, m_last->y);
}

void frmOnetoOne::closeEvent(QCloseEvent*) {
    m.state.OneToOneLoaded = false;
    // A hidden button would hand its focus to whatever comes next.
    if (m.controls.CloseOneToOneButton->hasFocus()) m.shell.FocusPane();
    m.controls.CloseOneToOneButton->hide();
    m_full.Clear();
    m_nav.Clear();
    m_view.Clear();
    if (m.shell.MainMinimised()) m.shell.SetMainMinimised(false);
}

} // namespace tarn
