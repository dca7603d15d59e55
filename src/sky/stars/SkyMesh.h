// The sky behind the stars: its level and noise from place to place, from samples of the plane.
#pragma once

#include "sky/stars/ValuePlane.h"

#include <vector>

namespace tarn {

// A mesh of cells some tens of samples wide. Each has the median of a few hundred of its samples
// and their deviation (from the median of absolute deviations), with what stands out by three of
// them left out; between the cells' middles both change in straight lines.
class SkyMesh {
public:
    explicit SkyMesh(const ValuePlane& plane);

    bool HasData() const { return m_hasData; }

    // Whether the samples differ at all.
    bool IsVaried() const { return m_range > 0; }

    // In the values of the plane: the middle of all cells. Noise is 0 where most samples are alike.
    float Background() const { return m_background; }
    float Noise() const { return m_noise; }

    // What noise is left of 1 after Smooth: less than white noise leaves where the samples depend
    // on their neighbours less, and more where they do more.
    float NoiseLeft() const { return m_noiseLeft; }

    // At a sample, from 0.
    float BackgroundAt(int x, int y) const { return Between(m_levels, float(x), float(y)); }
    float NoiseAt(int x, int y) const { return Between(m_noises, float(x), float(y)); }

    // A row of background + `sigmas` * noise.
    void Row(int y, float sigmas, float* to) const;

private:
    void MeasureCells(const ValuePlane& plane);
    std::size_t TakeSamples(const ValuePlane& plane, int column, int row,
                            std::vector<float>& samples) const;
    void FillGaps();
    void TakeMiddles();
    template <typename Visit> void ForEachBeside(int cell, const Visit& visit) const;
    void EvenOut(std::vector<float>& cells, const std::vector<float>& noises) const;
    void MeasureNoise(const ValuePlane& plane);
    float Between(const std::vector<float>& cells, float x, float y) const;

    int m_width;
    int m_height;
    int m_columns;
    int m_rows;
    std::vector<float> m_levels; // of the cells, row after row
    std::vector<float> m_noises;
    bool m_hasData = false;
    float m_step = 0; // between values that can be stored
    float m_background = 0;
    float m_noise = 0;
    float m_range = 0; // of the samples that were looked at
    float m_noiseLeft = 1;
};

} // namespace tarn
