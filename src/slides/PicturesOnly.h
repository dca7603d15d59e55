// For the time of a show of several pictures: the list holds no videos and no web files, and what
// the hidden main window decodes serves the areas of the show as well.
#pragma once

#include "desk/Context.h"
#include "slides/SlideArithmetic.h"

#include <string>

namespace tarn {

class PicturesOnly {
public:
    PicturesOnly(Context& context, SlideSize area);
    ~PicturesOnly() { PutBack(); }
    PicturesOnly(const PicturesOnly&) = delete;
    PicturesOnly& operator=(const PicturesOnly&) = delete;

    // Boxes, list and preview as they were; may come twice. No row of the list is current then.
    void PutBack();

private:
    Context& m;
    bool m_unticked = false;
    bool m_videos;
    bool m_web;
    bool m_pictures;
    std::string m_types;   // FileTypes
    std::string m_pattern; // of the list
    int m_previewWidth;
    int m_previewHeight;
    bool m_putBack = false;
};

} // namespace tarn
