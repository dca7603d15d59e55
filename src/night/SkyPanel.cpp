#include "night/SkyPanel.h"

#include "common/paths.h"
#include "night/NightPictures.h"
#include "platform/QtText.h"

#include <QAction>
#include <QListWidget>

namespace tarn {

namespace {

constexpr int kRest = 120; // milliseconds

} // namespace

SkyPanel::SkyPanel(Context& context) : m(context) {
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRest);
    QObject::connect(&m_rest, &QTimer::timeout, &m_here, [this] { Ask(); });
}

SkyPanel::~SkyPanel() = default;

void SkyPanel::ShowSettings() {
    m.controls.SkyPanelButton->setChecked(m.state.SkyPanel);
    m.controls.SkyList->setVisible(m.state.SkyPanel);
}

void SkyPanel::Switched() {
    m.state.SkyPanel = m.controls.SkyPanelButton->isChecked();
    m.controls.SkyList->setVisible(m.state.SkyPanel);
    Follow();
}

// What stands there is of another picture.
void SkyPanel::Follow() {
    m.controls.SkyList->clear();
    if (m.state.SkyPanel)
        m_rest.start();
    else
        BreakOff();
}

void SkyPanel::BreakOff() {
    m_rest.stop();
    if (m_sky) m_sky->Ask({});
}

void SkyPanel::Ask() {
    const ProgramState& s = m.state;
    if (!s.SkyPanel || s.SlideViewing || s.BatchRuns || s.Kind != FileKind::Picture) return;
    if (!m_sky)
        m_sky = std::make_unique<LateSky>([this] {
            QMetaObject::invokeMethod(
                &m_here, [this] { TakeAnswer(); }, Qt::QueuedConnection);
        });
    LateSky::Wish wish{s.Filename, NightPictures(m), {}};
    if (const auto sites = ParseSites(s.SkySites);
        const NamedSite* site = SiteNamed(sites, s.SkySite))
        wish.otherwise = *site;
    m_sky->Ask(std::move(wish));
}

void SkyPanel::TakeAnswer() {
    const auto sky = m_sky->Take();
    if (!sky || sky->path != m.state.Filename) return; // another picture is shown by now
    QListWidget& list = *m.controls.SkyList;
    list.clear();
    for (const std::string& line : sky->lines) list.addItem(ToQt(line));
}

} // namespace tarn
