// Pictures that a batch passes are seen in the pane, one after the other, while the selection stays
// what it is. At the end the pane shows again what it showed.
#pragma once

#include "desk/Context.h"
#include "facts/PictureReading.h"

#include <QImage>
#include <QSize>

#include <chrono>
#include <string>
#include <vector>

namespace tarn {

struct PassedPicture {
    // As the window has it: the whole picture, or its cut at 1x and 2x; upright and brightened.
    ImgX picture;
    QSize inPane;      // the pixels that it has there
    std::string fault; // why the file has no picture, or not all of it
};

class PassingPictures {
public:
    PassingPictures(Context& context, std::vector<std::string> paths);
    ~PassingPictures();
    PassingPictures(const PassingPictures&) = delete;
    PassingPictures& operator=(const PassingPictures&) = delete;

    // Of a file without a picture what stands in for it. The next ones are decoded meanwhile.
    PassedPicture Show(std::size_t index);

    // For a batch that needs no pixels: not so often that it would be held up.
    void ShowNowAndThen(std::size_t index);

    const PictureInfo& Info() const { return m_reading.Info(); } // of the one shown last

private:
    bool IsCut() const { return m.state.OneX || m.state.TwoX; }
    QSize Wanted() const;
    PassedPicture Pass(std::size_t index);
    ImgX InPane(ImgX picture) const;

    Context& m;
    PictureReading m_reading;
    std::vector<std::string> m_paths;
    QImage m_before;
    std::chrono::steady_clock::time_point m_nextShow;
};

} // namespace tarn
