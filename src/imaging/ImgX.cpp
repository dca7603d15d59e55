#include "imaging/ImgX.h"

#include "imaging/PicturesAhead.h"
#include "imaging/Pixels.h"

#include <QTransform>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr float kQuarter = 90.0F;
constexpr long long kMostMadeUp = 1LL << 30U; // bytes of pixels that could not be read

// A part of a picture of 32 bits a pixel without a copy; the picture has to outlive it.
QImage View(const QImage& picture, const QRect& part) {
    const uchar* begin = picture.constScanLine(part.top()) + qsizetype(part.left()) * 4;
    return {begin, part.width(), part.height(), picture.bytesPerLine(), picture.format()};
}

} // namespace

QSize ImgX::ReadFileInfo(const std::string& path) {
    return PictureLoader::ReadSize(path);
}

std::string ImgX::LoadFile(const std::string& path, QSize wanted) {
    std::string error;
    auto source = PictureLoader::Open(path, error);
    if (!source) return Refuse(error);
    const QSize least = LeastFor(source->Size(), wanted);
    return Load(std::move(source), least);
}

std::string ImgX::LoadFile(const std::string& path, QSize wanted, PicturesAhead& ahead) {
    return LoadFile(path, wanted, ahead, PictureLoader::LookAt(path));
}

std::string ImgX::LoadFile(const std::string& path, QSize wanted, PicturesAhead& ahead,
                           const FileLook& now) {
    std::string error;
    auto source = ahead.Take(path, wanted, now);
    const bool ready = source != nullptr;
    if (!ready) {
        if (const auto refusal = ahead.TakeRefusal(path, now)) return RefuseFor(path, *refusal);
    }
    if (!ready) source = PictureLoader::Open(path, error);
    if (!source) return Refuse(error);
    error = Load(source, LeastFor(source->Size(), wanted));
    if (!ready && HasImage()) ahead.Keep(path, wanted, std::move(source));
    return error;
}

std::string ImgX::LoadWithSystemReader(const std::string& path) {
    if (!m_refused.empty() && path == m_refused) return m_refusal; // it has tried already
    std::string error;
    auto source = PictureLoader::OpenWithToolkit(path, error);
    return source ? Load(std::move(source), {}) : Refuse(error);
}

std::string ImgX::Refuse(const std::string& error) {
    Clear();
    m_loadError = error;
    return error;
}

// Both readers have tried.
std::string ImgX::RefuseFor(const std::string& path, const std::string& error) {
    Refuse(error);
    m_refused = path;
    m_refusal = error;
    return error;
}

std::string ImgX::Load(std::shared_ptr<PictureSource> source, QSize least) {
    Clear();
    std::string error;
    m_pixels = source->Decode(least, error);
    m_loadError = error;
    if (m_pixels.isNull() && source->IsToolkits()) {
        m_refused = source->Path();
        m_refusal = error;
    }
    if (m_pixels.isNull()) return error;
    m_facts = source->Facts();
    m_colorRemark = source->ColorRemark();
    const bool reduced = !least.isEmpty() && m_pixels.size() != source->Size() && source->Reduces();
    m_size = reduced ? source->Size() : m_pixels.size();
    if (reduced || source->HasScaled()) m_source = std::move(source);
    return error;
}

void ImgX::TakePicture(const QImage& picture) {
    Clear();
    SetAll(InOwnFormat(picture));
}

void ImgX::TakePixels(const ImgX& other) {
    m_pixels = other.m_pixels;
    m_source = other.m_source;
    m_loadError = other.m_loadError;
    m_shown = {};
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
    m_shown = {};
}

// Sees to it that at least so many pixels are at hand, unless the file does not have them.
void ImgX::Fetch(QSize least) {
    const QSize stored = m_turn.Of(least.boundedTo(m_size));
    if (!m_source || (m_pixels.width() >= stored.width() && m_pixels.height() >= stored.height()))
        return;
    std::string error;
    const QImage decoded = m_source->Decode(stored, error);
    if (decoded.isNull()) {
        m_error = error;
        return;
    }
    m_loadError = error;
    m_pixels = decoded;
    m_shown = {};
}

void ImgX::FetchAll() {
    if (!HasImage() || (!m_source && m_pixels.size() == m_turn.Of(m_size))) return;
    Fetch(m_size);
    SetPixels(m_pixels);
    const QSize all = m_turn.Of(m_size);
    if (m_pixels.size() == all) return;
    if (4LL * all.width() * all.height() <= kMostMadeUp)
        SetPixels(Resampled(m_pixels, all));
    else
        m_size = m_turn.Of(m_pixels.size());
}

// All that there is, still to be turned and brightened.
void ImgX::SetPixels(const QImage& pixels) {
    m_pixels = pixels;
    m_source.reset();
    m_shown = {};
}

void ImgX::Scale(int width, int height) {
    if (!HasImage() || width < 0 || height < 0 || (width == 0 && height == 0)) return;
    QSize size(width, height);
    if (width == 0)
        size.setWidth(std::max(1, int(std::lround(double(height) * Width() / Height()))));
    if (height == 0)
        size.setHeight(std::max(1, int(std::lround(double(width) * Height() / Width()))));
    const QSize stored = m_turn.Of(size);
    const QImage ready = m_source ? m_source->Scaled(stored) : QImage();
    if (ready.isNull() || !m_brightened.empty()) {
        Fetch(size);
        if (!m_brightened.empty()) SetAll(SystemPicture());
        const QSize target = m_turn.Of(size); // what is brightened is turned, too
        SetPixels(m_pixels.size() == target ? m_pixels : Resampled(m_pixels, target));
    } else {
        SetPixels(ready);
    }
    m_size = size;
}

void ImgX::Crop(int left, int top, int width, int height) {
    if (!HasImage()) return;
    FetchAll();
    const QRect inside = QRect(left, top, width, height).intersected(QRect({0, 0}, m_size));
    if (inside.isEmpty()) {
        SetAll(QImage());
        return;
    }
    const QImage part = View(m_pixels, m_turn.Back(inside, m_pixels.size()));
    SetPixels(m_turn.IsNone() ? part.copy() : m_turn.Of(part));
    m_turn = {};
    m_size = inside.size();
}

void ImgX::Rotate(float degrees) {
    if (!HasImage()) return;
    const float quarters = degrees / kQuarter;
    if (quarters != std::floor(quarters)) {
        FetchAll();
        SetAll(InOwnFormat(
            SystemPicture().transformed(QTransform().rotate(degrees), Qt::SmoothTransformation)));
        return;
    }
    Turn step;
    step.Rotate(int(quarters));
    m_turn.Rotate(int(quarters));
    m_size = step.Of(m_size);
    m_shown = {};
}

void ImgX::Mirror(int axis) {
    m_turn.Mirror(axis);
    m_shown = {};
}

void ImgX::TurnBy(const Turn& turn) {
    if (turn.mirrored) Mirror(0);
    if (turn.quarters != 0) Rotate(90.0F * float(turn.quarters));
}

void ImgX::Brightness(int value) {
    if (!HasImage() || value == 0) return;
    m_brightened.push_back(value);
    m_shown = {};
}

const QImage& ImgX::SystemPicture() const {
    if (m_turn.IsNone() && m_brightened.empty()) return m_pixels;
    if (m_shown.isNull()) {
        m_shown = m_turn.Of(m_pixels);
        for (const int value : m_brightened) m_shown = Brightened(std::move(m_shown), value);
    }
    return m_shown;
}

const QImage& ImgX::FullPicture() {
    FetchAll();
    return SystemPicture();
}

} // namespace tarn
