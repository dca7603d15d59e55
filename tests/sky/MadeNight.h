// Frames of one field through a night, made by code: each with its own seeing, wind, cloud and sky.
#pragma once

#include "FitsFiles.h"
#include "MadeSky.h"

#include <string>

namespace tarn::testing {

struct MadeFrame {
    double fwhm = 3;
    double eccentricity = 0.2;
    double angle = 30;
    double light = 1; // of the stars: cloud has less
    double sky = 1000;
    std::string filter = "L";
    std::string exposure = "300.0";
    std::string type = "Light Frame";
    std::string taken = "2024-11-05T20:00:00";
    int stars = 60; // 0: a dark or a flat
    double shiftX = 0;
    double shiftY = 0;
    double soft = 0;                 // how much wider stars are in the right upper corner, part
    std::vector<MadeStar> more = {}; // what is no star of the field
};

inline std::string FrameBytes(const MadeFrame& frame, int width, int height, unsigned seed = 1) {
    MadeSky field(width, height, 77); // the same stars in each frame
    MadeStar like;
    auto stars = field.Scatter(frame.stars, like, 3000, 30000, 25);
    MadeSky sky(width, height, seed);
    sky.AddLevel(frame.sky);
    for (MadeStar star : stars) {
        const double away = std::max(0.0, star.x / width) * std::max(0.0, star.y / height);
        const double fwhm = frame.fwhm * (1 + frame.soft * away);
        star.peak *= frame.light * 9 / (fwhm * fwhm); // the light stays
        star.fwhm = fwhm;
        star.eccentricity = frame.eccentricity;
        star.angle = frame.angle;
        star.x += frame.shiftX;
        star.y += frame.shiftY;
        sky.Add(star);
    }
    for (const MadeStar& star : frame.more) sky.Add(star);
    sky.Record(8);
    return FitsBytes(
        16, {width, height},
        [&](std::size_t at) { return sky.At(int(at) % width, int(at) / width) - 32768; },
        {{"BZERO", "32768"},
         {"FILTER", "'" + frame.filter + "'"},
         {"EXPTIME", frame.exposure},
         {"IMAGETYP", "'" + frame.type + "'"},
         {"DATE-OBS", "'" + frame.taken + "'"}});
}

} // namespace tarn::testing
