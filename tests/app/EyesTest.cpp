// Every window for those who do not see it, who see it large, and who see it in other colours.
#include "AllWindows.h"

#include "common/colors.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextEdit>
#include <QToolButton>

namespace tarn::testing {
namespace {

// What the toolkit makes inside its own widgets.
bool IsInner(const QWidget& widget) {
    if (widget.objectName().startsWith(QLatin1String("qt_"))) return true;
    const QWidget* parent = widget.parentWidget();
    return qobject_cast<const QScrollBar*>(&widget) || widget.inherits("QHeaderView") ||
           qobject_cast<const QComboBox*>(parent) ||
           (parent && parent->inherits("QComboBoxPrivateContainer")) ||
           (qobject_cast<const QLineEdit*>(parent) && widget.inherits("QToolButton"));
}

bool IsControl(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) || qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QAbstractSlider*>(&widget) ||
           qobject_cast<const QAbstractItemView*>(&widget) ||
           qobject_cast<const QPlainTextEdit*>(&widget) ||
           qobject_cast<const QTextEdit*>(&widget) || qobject_cast<const PictureBox*>(&widget);
}

std::vector<QWidget*> Controls(QWidget& window) {
    std::vector<QWidget*> found;
    for (QWidget* each : window.findChildren<QWidget*>())
        if (each->window() == &window && !IsInner(*each) && IsControl(*each)) found.push_back(each);
    return found;
}

std::string Call(const QWidget& widget) {
    return widget.metaObject()->className() + (" " + widget.objectName().toStdString());
}

std::string SpokenName(QWidget& widget) {
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&widget);
    return spoken ? spoken->text(QAccessible::Name).trimmed().toStdString() : "";
}

TEST(Eyes, EveryControlOfEveryWindowHasAName) {
    WindowsDesk d;
    std::size_t count = 0;
    std::set<std::string> windows;
    d.Each([&](const std::string& name, QWidget& window) {
        windows.insert(name);
        EXPECT_FALSE(window.windowTitle().isEmpty()) << name;
        for (QWidget* each : Controls(window)) {
            ++count;
            const std::string spoken = SpokenName(*each);
            EXPECT_FALSE(spoken.empty()) << name << ": " << Call(*each);
            for (QWidget* inner : each->findChildren<QWidget*>()) {
                const bool list =
                    qobject_cast<QAbstractItemView*>(inner) && !inner->inherits("QHeaderView");
                if (!list && !qobject_cast<QToolButton*>(inner)) continue;
                EXPECT_FALSE(SpokenName(*inner).empty()) << name << ": in " << Call(*each);
            }
            EXPECT_NE(spoken, each->objectName().toStdString()) << name << ": a name for programs";
        }
    });
    EXPECT_GE(windows.size(), 25U);
    EXPECT_GT(count, 400U);
}

// Down, or on in the row, or into the next column; never back.
bool GoesOn(const QWidget& from, const QWidget& to) {
    const QRect a = from.geometry();
    const QRect b = to.geometry();
    const bool above = b.bottom() < a.top();
    const bool below = b.top() > a.bottom();
    return above ? b.left() > a.right() : below || b.left() >= a.left();
}

TEST(Eyes, TheTabKeyGoesThroughEachGroupInReadingOrder) {
    WindowsDesk d;
    d.Each([&](const std::string& name, QWidget& window) {
        std::set<const QWidget*> chain;
        const QWidget* before = nullptr;
        QWidget* each = &window;
        do {
            if ((each->focusPolicy() & Qt::TabFocus) && each->isVisible() && !IsInner(*each)) {
                chain.insert(each);
                const bool same = before && before->parentWidget() == each->parentWidget();
                EXPECT_TRUE(!same || GoesOn(*before, *each))
                    << name << ": from " << Call(*before) << " to " << Call(*each);
                before = each;
            }
            each = each->nextInFocusChain();
        } while (each != &window);
        // Whatever can be pressed or written into with the mouse can be reached by keys.
        for (QWidget* control : Controls(window)) {
            const bool wanted = control->isVisible() && (control->focusPolicy() & Qt::ClickFocus) &&
                                control->objectName() != QLatin1String("FileDateText");
            EXPECT_TRUE(!wanted || chain.count(control)) << name << ": " << Call(*control);
        }
    });
}

// Room for the whole text; what cuts its text on purpose asks for no width.
std::string CutText(const QWidget& widget) {
    const QFontMetrics metrics = widget.fontMetrics();
    const auto needs = [&](const QString& text, int beside) {
        const int width = metrics.size(Qt::TextShowMnemonic, text).width() + beside;
        return width > widget.width() ? text.toStdString() : std::string();
    };
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        if (!label->pixmap(Qt::ReturnByValue).isNull()) return {};
        if (label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) return {};
        if (label->wordWrap())
            return label->heightForWidth(label->width()) > label->height()
                       ? label->text().toStdString()
                       : std::string();
        return needs(label->text(), 0);
    }
    if (qobject_cast<const QCheckBox*>(&widget) || qobject_cast<const QRadioButton*>(&widget))
        return widget.sizeHint().width() > widget.width()
                   ? static_cast<const QAbstractButton&>(widget).text().toStdString()
                   : std::string();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return needs(button->text(), button->icon().isNull() ? 4 : button->iconSize().width() + 8);
    if (const auto* box = qobject_cast<const QGroupBox*>(&widget)) return needs(box->title(), 0);
    return {};
}

// Nothing but a scroll area may show a part of what is in it.
bool IsWhole(const QWidget& widget) {
    for (const QWidget* each = &widget; !each->isWindow(); each = each->parentWidget()) {
        const QWidget* parent = each->parentWidget();
        if (parent->objectName() == QLatin1String("qt_scrollarea_viewport")) return true;
        if (!parent->rect().contains(each->geometry())) return false;
    }
    return true;
}

class EyesAtSize : public ::testing::TestWithParam<double> {};

TEST_P(EyesAtSize, NoTextIsCutAndNothingLiesBeyondItsWindow) {
    const QFont usual = QApplication::font();
    QFont font = usual;
    font.setPointSizeF(usual.pointSizeF() * GetParam());
    QApplication::setFont(font);
    {
        WindowsDesk d;
        d.Each([&](const std::string& name, QWidget& window) {
            if (name == "frmMain-cut") { // as on a screen with a quarter of the points
                window.setMinimumSize(0, 0);
                window.resize(680, 360);
                for (int i = 0; i < 3; ++i) QCoreApplication::processEvents();
            }
            EXPECT_LE(window.height(), window.screen()->size().height()) << name;
            EXPECT_LE(window.width(), window.screen()->size().width()) << name;
            for (const QWidget* each : window.findChildren<QWidget*>()) {
                if (each->window() != &window || !each->isVisible() || IsInner(*each)) continue;
                EXPECT_EQ(CutText(*each), "") << name << ": " << Call(*each);
                EXPECT_TRUE(IsWhole(*each)) << name << ": " << Call(*each);
            }
        });
    }
    QApplication::setFont(usual);
}
INSTANTIATE_TEST_SUITE_P(Fonts, EyesAtSize, ::testing::Values(1, 1.5, 2));

using GroundAndText = std::pair<std::string, std::string>;
class EyesInColour : public ::testing::TestWithParam<GroundAndText> {};

TEST_P(EyesInColour, TextsStandOutFromTheirGround) {
    const QPalette usual = QApplication::palette();
    QApplication::setPalette(InColours(GetParam().first.c_str(), GetParam().second.c_str()));
    {
        WindowsDesk d;
        d.Each([&](const std::string& name, QWidget& window) {
            for (const QWidget* each : window.findChildren<QWidget*>()) {
                if (each->window() != &window || !each->isVisible() || !each->isEnabled()) continue;
                const auto* label = qobject_cast<const QLabel*>(each);
                if (!label || label->text().isEmpty()) continue;
                const QPalette& own = each->palette();
                const QColor ground =
                    (each->autoFillBackground() ? own : window.palette()).color(QPalette::Window);
                EXPECT_GE(ContrastOf(int(own.color(QPalette::WindowText).rgb() & 0xFFFFFF),
                                     int(ground.rgb() & 0xFFFFFF)),
                          kReadable)
                    << name << ": " << Call(*each);
            }
        });
    }
    QApplication::setPalette(usual);
}
INSTANTIATE_TEST_SUITE_P(LightDarkContrast, EyesInColour,
                         ::testing::Values(GroundAndText("#efefef", "#000000"),
                                           GroundAndText("#2a2e32", "#fcfcfc"),
                                           GroundAndText("#000000", "#ffff00")));

} // namespace
} // namespace tarn::testing
