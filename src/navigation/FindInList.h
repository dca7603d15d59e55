// The line above the list: what is typed there narrows the list at once to the files whose names or
// notes have it, or of which its terms hold (FindTerms); those of measures as they come in. Esc
// gives the whole list back, Return stays on the file found.
#pragma once

#include "desk/Context.h"
#include "widgets/WindowKeys.h"

#include <QObject>
#include <QTimer>

#include <string>
#include <unordered_map>

namespace tarn {

class FindInList : public QObject {
public:
    explicit FindInList(Context& context) : m(context) {}

    void ConnectControls();
    void Open();
    void Close(); // the whole list, on the current file

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsOpen() const;
    void ReadTexts();
    void Narrow();
    void ComesMore();
    void LookAgain();
    void Step(int by);
    void StepOn() { Step(1); }
    void StepBack() { Step(-1); }
    void StayOnFound();

    static const WindowKey<FindInList> kKeys[]; // in the line

    Context& m;
    bool m_hasTerms = false;
    bool m_needsMeasures = false;
    bool m_marksAwaited = true; // those of the folder shown are still being read
    QTimer m_later;             // of measures and marks, which come one by one
    std::unordered_map<std::string, std::string> m_texts; // name and note, folded, by name
};

} // namespace tarn
