// The full-screen show: walks the pictures of the list, or the selected ones, until the user ends
// it. It sets the program's current file to the slide that is seen, so that whatever acts on a file
// acts on that one.
#pragma once

#include "imaging/ImgX.h"
#include "imaging/Turn.h"
#include "slides/ShowTime.h"
#include "slides/SlideKeys.h"
#include "slides/SlideSequence.h"

#include <string>
#include <vector>

namespace tarn {

class FullSlides {
public:
    // The list has a row at least.
    FullSlides(Context& context, ShowTime& time);

    // The whole show. When it returns, the slide window is gone; the caller ends the time of the
    // show and then calls ShowEnd.
    void Run();

    // The main window on the picture where the show ended.
    void ShowEnd();

    const std::string& Title() const { return m_title; }

private:
    // The walk.
    void CollectSelectedFiles();
    int Count() const; // entries there are now
    std::string PathOf(int index) const;
    bool Walk();

    // One slide.
    bool LoadSlide();
    std::string LoadFile(const FileLook& look);
    void TakeAsCurrentFile();
    void ReadInfo();
    void ShowSlide();
    std::string MarkShown() const;
    void ComposeTitle();
    void PlaySound();
    void PaintSlide();
    ImgX Turned(const ImgX& decoded) const;
    QSize WantedPixels() const;
    void DrawSlideNotes(QImage& picture) const;
    void DrawSlideTitle();
    void ExpectNeighbours();
    void SelectStart();

    // The keys.
    void Dispatch(int keycode);
    void Leave(SlideMove move);
    void Turn(SlideAction action, int amount);
    void Brighten(int step);
    void ResetBrightness();
    void AdjustWindow();
    void NextNotesMode();
    void ToggleTitle();
    void ChangeLook(SlideAction action);
    void CloseLook();
    void GoToView(bool back);
    void Copy(bool convert);
    void SetMark(const MarkChange& change);
    void Delete();

    Context& m;
    ShowTime& m_time;
    std::string m_startFile;      // that was current, its full path
    int m_startRow;               // and its row
    bool m_walksSelected = false; // the selected files; else the list
    std::string m_selectedFolder; // what was selected at the start, by name
    std::vector<std::string> m_selectedFiles;
    ImgX m_slide; // as decoded
    ImgX m_whole; // the same with all its pixels, while it is zoomed
    SlideSequence m_sequence;
    bool m_shown = false;  // a slide was
    tarn::Turn m_turn;     // by keys, since the slide was read
    int m_orientation = 1; // of the slide, by the camera, still to be done
    SlideMove m_move = SlideMove::Next;
    bool m_back = false;      // what cannot be shown is passed over backwards
    std::string m_file;       // of the slide that is seen, its full path
    std::string m_markedFile; // by the last key that marked
    std::string m_title;
    bool m_copied = false; // a copy key was used on this slide
    std::string m_refusal; // why nothing was copied
    std::string m_error;   // of a file that was passed over
};

} // namespace tarn
