// A page as browsers show it, in a module of its own that is loaded with the first page: its
// library is larger than the rest of the program.
#pragma once

#include <QUrl>

class QKeyEvent;
class QWidget;

namespace tarn {

class WebView {
public:
    virtual ~WebView() = default;

    // Takes no keyboard focus: the keys of the pane come through SendKey.
    virtual QWidget* Widget() = 0;

    // A local file. The page reads what lies in its own folder and below it, nothing else, and
    // leads nowhere.
    virtual void Show(const QUrl& page) = 0;
    virtual void SendKey(const QKeyEvent& key) = 0;
};

struct WebPaneModule {
    static constexpr char kModule[] = "webpane";

    // A view that fills `pane`; null where the system does not let it work safely. The caller owns
    // it.
    WebView* (*make)(QWidget* pane);
};

} // namespace tarn
