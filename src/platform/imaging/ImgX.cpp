#include "platform/imaging/ImgX.h"

#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>

namespace tarn {

namespace {

constexpr float kQuarter = 90.0F;
constexpr int kWhite = 255;

// How far a picture shrinks to fit into the box, 1 when it fits as it is.
double FitScale(QSize picture, QSize box) {
    return std::min(
        {1.0, double(box.width()) / picture.width(), double(box.height()) / picture.height()});
}

// Fewest pixels of a file from which it can be fitted into the box upright and on its side.
QSize LeastFor(QSize picture, QSize box) {
    if (box.isEmpty() || picture.isEmpty()) return {};
    const double scale = std::max(FitScale(picture, box), FitScale(picture.transposed(), box));
    return {int(std::ceil(picture.width() * scale)), int(std::ceil(picture.height() * scale))};
}

QImage Brightened(const QImage& picture, int value) {
    const int added = int(std::lround(value * kWhite / 100.0));
    std::array<int, kWhite + 1> table{};
    for (int i = 0; i <= kWhite; ++i) table[i] = std::clamp(i + added, 0, kWhite);
    QImage result = picture;
    for (int y = 0; y < result.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(result.scanLine(y));
        for (QRgb* pixel = line; pixel != line + result.width(); ++pixel)
            *pixel = qRgba(table[qRed(*pixel)], table[qGreen(*pixel)], table[qBlue(*pixel)],
                           qAlpha(*pixel));
    }
    return result;
}

QImage InOwnFormat(const QImage& picture) {
    return picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32
                                                             : QImage::Format_RGB32);
}

QImage Resampled(const QImage& picture, QSize size) {
    return InOwnFormat(picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

} // namespace

QSize ImgX::ReadFileInfo(const std::string& path) {
    return PictureLoader::ReadSize(path);
}

std::string ImgX::LoadFile(const std::string& path, QSize wanted) {
    std::string error;
    auto source = PictureLoader::Open(path, error);
    if (!source) {
        Clear();
        return error;
    }
    const QSize least = LeastFor(source->Size(), wanted);
    return Load(std::move(source), least);
}

std::string ImgX::LoadWithSystemReader(const std::string& path) {
    std::string error;
    auto source = PictureLoader::OpenWithToolkit(path, error);
    if (source) return Load(std::move(source), {});
    Clear();
    return error;
}

std::string ImgX::Load(std::shared_ptr<PictureSource> source, QSize least) {
    Clear();
    std::string error;
    m_pixels = source->Decode(least, error);
    if (m_pixels.isNull()) return error;
    m_size = m_pixels.size();
    if (!least.isEmpty() && m_size != source->Size() && source->Reduces()) {
        m_size = source->Size();
        m_source = std::move(source);
    }
    return error;
}

void ImgX::TakePicture(const QImage& picture) {
    Clear();
    SetAll(InOwnFormat(picture));
}

std::string ImgX::StatusText() const {
    if (!HasImage()) return "No Image";
    return std::to_string(Width()) + " x " + std::to_string(Height()) + ", " +
           std::to_string(m_pixels.depth()) + " bit";
}

void ImgX::SetAll(const QImage& picture) {
    m_pixels = picture;
    m_size = picture.size();
    m_source.reset();
    m_turn = {};
    m_brightened.clear();
}

// Sees to it that at least so many pixels are at hand, unless the file does not have them.
void ImgX::Fetch(QSize least) {
    if (!m_source || (m_pixels.width() >= least.width() && m_pixels.height() >= least.height()))
        return;
    std::string error;
    const QImage stored = m_source->Decode(m_turn.Of(least.boundedTo(m_size)), error);
    if (stored.isNull()) {
        m_error = error;
        return;
    }
    m_pixels = m_turn.Of(stored);
    for (const int value : m_brightened) m_pixels = Brightened(m_pixels, value);
}

void ImgX::FetchAll() {
    if (!m_source) return;
    Fetch(m_size);
    SetAll(m_pixels.size() == m_size ? m_pixels : Resampled(m_pixels, m_size));
}

void ImgX::Scale(int width, int height) {
    if (!HasImage() || width < 0 || height < 0 || (width == 0 && height == 0)) return;
    QSize size(width, height);
    if (width == 0)
        size.setWidth(std::max(1, int(std::lround(double(height) * Width() / Height()))));
    if (height == 0)
        size.setHeight(std::max(1, int(std::lround(double(width) * Height() / Width()))));
    Fetch(size);
    SetAll(m_pixels.size() == size ? m_pixels : Resampled(m_pixels, size));
}

void ImgX::Crop(int left, int top, int width, int height) {
    if (!HasImage()) return;
    FetchAll();
    const QRect inside = QRect(left, top, width, height).intersected(m_pixels.rect());
    SetAll(inside.isEmpty() ? QImage() : m_pixels.copy(inside));
}

void ImgX::Rotate(float degrees) {
    if (!HasImage()) return;
    const float quarters = degrees / kQuarter;
    if (quarters != std::floor(quarters)) {
        FetchAll();
        SetAll(InOwnFormat(
            m_pixels.transformed(QTransform().rotate(degrees), Qt::SmoothTransformation)));
        return;
    }
    Turn step;
    step.Rotate(int(quarters));
    m_turn.Rotate(int(quarters));
    m_pixels = step.Of(m_pixels);
    m_size = step.Of(m_size);
}

void ImgX::Mirror(int axis) {
    m_turn.Mirror(axis);
    m_pixels = m_pixels.mirrored(axis == 0, axis != 0);
}

void ImgX::Brightness(int value) {
    if (!HasImage() || value == 0) return;
    m_pixels = Brightened(m_pixels, value);
    m_brightened.push_back(value);
}

const QImage& ImgX::FullPicture() {
    FetchAll();
    return m_pixels;
}

} // namespace tarn
