#include "platform/imaging/ImgX.h"

#include "platform/imaging/PicturesAhead.h"
#include "platform/imaging/Pixels.h"

#include <QTransform>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr float kQuarter = 90.0F;

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

std::string ImgX::LoadFile(const std::string& path, QSize wanted, PicturesAhead& ahead) {
    std::string error;
    auto source = ahead.Take(path, wanted);
    const bool ready = source != nullptr;
    if (!ready) source = PictureLoader::Open(path, error);
    if (!source) {
        Clear();
        return error;
    }
    error = Load(source, LeastFor(source->Size(), wanted));
    if (!ready && HasImage()) ahead.Keep(path, wanted, std::move(source));
    return error;
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
    const bool reduced = !least.isEmpty() && m_pixels.size() != source->Size() && source->Reduces();
    m_size = reduced ? source->Size() : m_pixels.size();
    if (reduced || source->HasScaled()) m_source = std::move(source);
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
    const QImage ready = m_source ? m_source->Scaled(m_turn.Of(size)) : QImage();
    if (!ready.isNull() && m_brightened.empty()) {
        SetAll(m_turn.Of(ready));
        return;
    }
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
