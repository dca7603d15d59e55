// The list as pictures: shown or not, and where the small pictures come from. Only rows that are
// seen are asked for, and none while a batch needs the cores.
#pragma once

#include "desk/Context.h"
#include "thumbnails/GridPictures.h"

#include <QCache>
#include <QImage>
#include <QTimer>

#include <memory>
#include <string>

namespace tarn {

class ThumbGrid {
public:
    explicit ThumbGrid(Context& context);
    ~ThumbGrid();

    void ConnectControls();
    void ShowSettings(); // the list as the setting says

private:
    void ListPicturesButton_Click();
    void Show(bool pictures);
    QImage PictureOf(int row);
    void AskForSeen();
    void Take(int generation, const std::string& picture, const QImage& image);
    void Forget();

    Context& m;
    struct Picture {
        QImage image; // null: it cannot be shown
        int generation;
    };
    QCache<std::string, Picture> m_pictures; // by name
    std::string m_folder;                    // of theirs
    int m_generation = 0;                    // of the list's contents
    QTimer m_asking;
    std::unique_ptr<GridPictures> m_worker; // made at first use; goes first
};

} // namespace tarn
