// A small picture of what a gallery's index will look like.
#pragma once

#include "desk/state/GallerySettings.h"

#include <QWidget>

namespace tarn {

class GalleryMiniature : public QWidget {
public:
    GalleryMiniature();

    void ShowGallery(const GallerySettings& settings, int pictures);

    QSize sizeHint() const override { return {220, 260}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    GallerySettings m_settings;
    int m_pictures = 0;
};

} // namespace tarn
