// The user's side of the marks: entries and keys that set them, and where the window shows them.
#pragma once

#include "desk/Context.h"
#include "widgets/MarkPainting.h"

#include <string>
#include <vector>

namespace tarn {

class MarkControls {
public:
    explicit MarkControls(Context& context) : m(context) {}

    void ConnectControls();

    // Marks have come or changed.
    void ShowMarks();

private:
    void Set(const MarkChange& change);
    std::vector<std::string> Marked() const;
    ShownMark ShownOf(const std::string& path) const;
    void ShowCurrent();

    Context& m;
    bool m_column = false; // one is known
    std::string m_columnFolder;
};

} // namespace tarn
