// A field of stars seen again and again, each time from a little elsewhere, in memory.
#pragma once

#include "MadeSky.h"

#include "sky/stack/FrameSamples.h"
#include "sky/stack/Warp.h"
#include "sky/stars/FrameMeasures.h"

#include <functional>
#include <memory>
#include <vector>

namespace tarn::testing {

// Around the middle of a frame, then shifted: from the field to the frame.
inline FrameMap TurnedMap(int width, int height, double degrees, double shiftX, double shiftY) {
    const double turn = degrees * std::numbers::pi / 180;
    FrameMap map{std::cos(turn), -std::sin(turn), 0, std::sin(turn), std::cos(turn), 0};
    const auto [x, y] = map(width / 2.0, height / 2.0);
    map.c = width / 2.0 - x + shiftX;
    map.f = height / 2.0 - y + shiftY;
    return map;
}

struct SeenFrame {
    FrameMap fromField;
    double fwhm = 3;
    double light = 1; // exposure and transparency: stars and sky
    double sky = 1000;
    double slope = 0; // of the sky, from the left to the right border
    double readNoise = 8;
};

class MadeSeries {
public:
    MadeSeries(int width, int height, unsigned seed, int stars = 60)
        : m_width(width), m_height(height) {
        MadeSky field(3 * width, 3 * height, seed);
        for (MadeStar star : field.Scatter(9 * stars, {.fwhm = 3}, 400, 30000, 14)) {
            star.x -= width;
            star.y -= height;
            m_stars.push_back(star);
        }
    }

    const std::vector<MadeStar>& Stars() const { return m_stars; }
    std::vector<MadeStar>& Stars() { return m_stars; }

    // `more` adds what is no star, in the frame's own places.
    void Add(const SeenFrame& frame, unsigned seed,
             const std::function<void(MadeSky& sky)>& more = {},
             const std::function<void(MadeSky& sky)>& after = {}) {
        auto sky = std::make_shared<MadeSky>(m_width, m_height, seed);
        sky->AddLevel(frame.sky * frame.light, frame.slope / m_width);
        for (MadeStar star : m_stars) {
            std::tie(star.x, star.y) = frame.fromField(star.x, star.y);
            star.peak *= frame.light * 9 / (frame.fwhm * frame.fwhm);
            star.fwhm = frame.fwhm;
            sky->Add(star);
        }
        if (more) more(*sky);
        sky->Record(frame.readNoise);
        if (after) after(*sky);
        m_frames.push_back({sky, frame});
    }

    FrameSamples Samples(std::size_t number) const {
        const std::shared_ptr<MadeSky>& sky = m_frames[number].sky;
        FrameSamples samples;
        samples.width = m_width;
        samples.height = m_height;
        samples.floats = sky->Plane().floats;
        samples.kept = sky;
        return samples;
    }
    FrameReader Reader() const {
        return [this](std::size_t number, std::string&) { return std::optional(Samples(number)); };
    }
    const SeenFrame& Frame(std::size_t number) const { return m_frames[number].seen; }
    std::size_t Count() const { return m_frames.size(); }

    std::vector<FrameMeasures> Measures() const {
        std::vector<FrameMeasures> all;
        for (const Kept& frame : m_frames) {
            all.push_back(MeasureFrame(frame.sky->Plane()));
            all.back().series = "one";
        }
        return all;
    }

private:
    struct Kept {
        std::shared_ptr<MadeSky> sky;
        SeenFrame seen;
    };
    int m_width;
    int m_height;
    std::vector<MadeStar> m_stars;
    std::vector<Kept> m_frames;
};

} // namespace tarn::testing
