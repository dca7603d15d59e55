// Shows of two and four pictures. They step the selection of the main window, so that every picture
// takes the road of a selection, and keep the pictures that stand: one step decodes one picture.
#pragma once

#include "slides/PicturesOnly.h"
#include "slides/ShowTime.h"
#include "slides/SlideKeys.h"

#include <QImage>
#include <QRect>

#include <string>
#include <vector>

namespace tarn {

class ManySlides {
public:
    // `landscape`: upright pictures are laid on their side. The first of two pictures stays in its
    // place while SlideCompare holds. The list has a row at least.
    ManySlides(Context& context, ShowTime& time, bool landscape);

    // Begins with this file in the second place; empty: with the next one.
    void PutBeside(const std::string& name) { m_beside = name; }

    // The whole show, as FullSlides.
    void Run();

    // The main window on the first of the pictures shown.
    void ShowEnd();

private:
    struct Area {
        int row = 0;
        std::string name;
        std::string date;
        std::string camera;
        bool last = false;
        ImgX whole;          // turned; all its pixels are fetched once it is zoomed
        QImage picture;      // as seen whole, but for the brightness; null until that is asked for
        QRect place;         // as painted, in device pixels
        bool marked = false; // by a key, since it was taken
    };

    // Pages and steps; each false when there is no picture to show.
    bool LoadForward(int fromRow);
    bool LoadBackward(int fromRow);
    bool Go(SlideMove move);
    bool Step(bool forward);
    bool StepFrom(int row, bool forward);
    void TakeBeside();
    bool Holds(int row) const;
    Area TakeArea() const;
    ImgX TurnedPicture() const;
    QImage PictureOf(Area& area);

    int StartRow() const;
    int EndRow() const;
    void Paint();
    void DrawTitles();
    QSize WantedPixels() const;
    void ExpectNeighbours(bool forward);

    void Dispatch(int keycode);
    int MarkedArea() const;
    std::string MarkShown(const Area& area) const;
    void SetMark(const MarkChange& change);
    void MoveFrame(FrameWay way);
    void ShowFrame();
    void Leave(SlideMove move);
    void ChangeLook(SlideAction action);

    Context& m;
    ShowTime& m_time;
    bool m_landscape;
    std::vector<std::string> m_startNames;
    std::vector<Area> m_areas; // those that hold a picture
    std::string m_beside;
    std::string m_error; // of the last file that was passed over
    SlideMove m_move = SlideMove::Next;
    bool m_forward = true; // the last step
    int m_frame = -1;      // the area that is framed; -1: none
    ViewWish m_pointer;    // where it was when the frame was moved
    PicturesOnly m_only;   // last, so that the start is known as it was
};

} // namespace tarn
