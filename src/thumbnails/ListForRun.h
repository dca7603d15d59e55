// For the time of a run the list shows pictures only, and the class boxes say so. A filter of the
// user's own is left as it stands.
#pragma once

#include "desk/Context.h"

#include <string>

namespace tarn {

class ListForRun {
public:
    explicit ListForRun(Context& context);
    ~ListForRun() { PutBack(); }
    ListForRun(const ListForRun&) = delete;
    ListForRun& operator=(const ListForRun&) = delete;

    // Boxes and pattern as they were; may come twice. No row of the list is current then.
    void PutBack();

    // The list keeps showing pictures only.
    void Leave() { m_changed = false; }

    // The row that was current, by its name, else by its place.
    void SelectFormerRow();

private:
    struct Boxes {
        bool pictures;
        bool videos;
        bool web;
        bool fits;
        bool raw;
    };
    void Set(const Boxes& boxes);

    Context& m;
    bool m_changed;
    Boxes m_boxes;
    std::string m_types;   // FileTypes
    std::string m_pattern; // of the list
    int m_row;
    std::string m_name; // of that row; empty when there was none
};

} // namespace tarn
