// Pictures decoded before they are asked for: while one stands on the screen, worker threads decode
// those that will probably come next, at the size in which they will be shown.
#pragma once

#include "platform/imaging/PictureLoader.h"

#include <QSize>

#include <memory>
#include <string>
#include <vector>

namespace tarn {

struct PictureWish {
    std::string path;
    QSize wanted; // as for ImgX::LoadFile: the box to fit into, empty for all pixels
};

class PicturesAhead {
public:
    PicturesAhead();
    ~PicturesAhead();
    PicturesAhead(const PicturesAhead&) = delete;
    PicturesAhead& operator=(const PicturesAhead&) = delete;

    // What to decode while nothing else happens, the nearest first. Replaces what was wished
    // before; what was decoded and is wished no more goes.
    void Expect(const std::vector<PictureWish>& wishes);

    // The file's source with at least these pixels decoded, if they are ready or in the making
    // (then it waits for them). Null when they are not, or when the file is another one by now.
    std::shared_ptr<PictureSource> Take(const std::string& path, QSize wanted);
};

} // namespace tarn
