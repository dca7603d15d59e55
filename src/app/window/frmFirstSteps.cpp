#include "app/window/frmFirstSteps.h"

#include "widgets/FileListBox.h"

#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kDigits = 72; // width

} // namespace

frmFirstSteps::frmFirstSteps(Context& context)
    : QDialog(context.controls.FileListBox->window()), m_steps(new FirstSteps(context)) {
    setObjectName(QStringLiteral("frmFirstSteps"));
    setWindowTitle(QStringLiteral("Tarn_View - First Steps"));
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(m_steps);
    m_steps->SetClosable(true);
    m_steps->onClose = [this] { close(); };
}

void frmFirstSteps::ShowSteps() {
    if (!isVisible()) {
        const int width = std::min(kDigits * fontMetrics().horizontalAdvance(QLatin1Char('0')),
                                   screen()->availableSize().width() * 9 / 10);
        resize(width, m_steps->layout()->totalHeightForWidth(width));
    }
    show();
    raise();
    activateWindow();
}

} // namespace tarn
