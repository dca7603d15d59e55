#include "imaging/ColorProfiles.h"

#include "imaging/PictureFormat.h"
#include "imaging/fits/TwoThreads.h"

#include <QCryptographicHash>

#include <lcms2.h>

#include <array>
#include <cstdlib>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace tarn {

namespace {

constexpr std::size_t kKept = 4; // transforms
constexpr char kBroken[] = "The color profile is broken and was ignored";
constexpr int kSeen = 1;                      // levels of 255 that nobody sees
constexpr long long kOneThread = 1000 * 1000; // pixels that are not worth a second one
constexpr cmsUInt32Number kPixels = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? TYPE_BGRA_8 : TYPE_ARGB_8;

struct CloseProfile {
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
struct CloseTransform {
    void operator()(void* transform) const { cmsDeleteTransform(transform); }
};

struct Transform {
    QByteArray hash; // of the profile
    std::string error;
    std::unique_ptr<void, CloseTransform> work; // null: nothing to do
    std::vector<QRgb> greys;                    // of a profile of greys: what each means
};

// Most profiles mean the very colours of the screen.
bool ChangesNothing(cmsHTRANSFORM transform) {
    constexpr int kLevels = 6;
    constexpr int kStep = 255 / (kLevels - 1);
    for (int i = 0; i < kLevels * kLevels * kLevels; ++i) {
        const QRgb before =
            qRgb(i % kLevels * kStep, i / kLevels % kLevels * kStep, i / kLevels / kLevels * kStep);
        QRgb after = before;
        cmsDoTransform(transform, &before, &after, 1);
        for (const int by :
             {std::abs(qRed(before) - qRed(after)), std::abs(qGreen(before) - qGreen(after)),
              std::abs(qBlue(before) - qBlue(after))})
            if (by > kSeen) return false;
    }
    return true;
}

void TakeGreys(Transform& made, cmsHPROFILE from, cmsHPROFILE screen) {
    constexpr int kLevels = 256;
    const std::unique_ptr<void, CloseTransform> work(cmsCreateTransform(
        from, TYPE_GRAY_8, screen, kPixels, INTENT_PERCEPTUAL, cmsFLAGS_NOCACHE));
    if (!work) {
        made.error = kBroken;
        return;
    }
    for (int level = 0; level < kLevels; ++level) {
        const auto grey = std::uint8_t(level);
        QRgb color = 0;
        cmsDoTransform(work.get(), &grey, &color, 1);
        made.greys.push_back(color | qRgb(0, 0, 0));
    }
}

// Only what is a picture of greys has such a profile rightly.
void Regrey(const std::vector<QRgb>& greys, QImage& picture) {
    for (int y = 0; y < picture.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            if (qRed(line[x]) == qGreen(line[x]) && qGreen(line[x]) == qBlue(line[x]))
                line[x] = (line[x] & 0xFF000000) | (greys[std::size_t(qRed(line[x]))] & 0xFFFFFF);
    }
}

std::shared_ptr<Transform> Make(const std::string& profile) {
    auto made = std::make_shared<Transform>();
    cmsSetLogErrorHandler(nullptr);
    const std::unique_ptr<void, CloseProfile> from(
        cmsOpenProfileFromMem(profile.data(), cmsUInt32Number(profile.size())));
    const std::unique_ptr<void, CloseProfile> screen(cmsCreate_sRGBProfile());
    const auto space = from ? cmsGetColorSpace(from.get()) : cmsSigRgbData;
    if (space == cmsSigGrayData && screen) TakeGreys(*made, from.get(), screen.get());
    if (space != cmsSigRgbData) return made;
    if (from && screen)
        made->work.reset(cmsCreateTransform(from.get(), kPixels, screen.get(), kPixels,
                                            INTENT_PERCEPTUAL,
                                            cmsFLAGS_NOCACHE | cmsFLAGS_COPY_ALPHA));
    if (!made->work)
        made->error = kBroken;
    else if (ChangesNothing(made->work.get()))
        made->work.reset();
    return made;
}

// Pictures of one camera have the same one.
std::shared_ptr<Transform> TransformOf(const std::string& profile) {
    const QByteArray hash = QCryptographicHash::hash(
        QByteArrayView(profile.data(), qsizetype(profile.size())), QCryptographicHash::Blake2b_256);
    static std::mutex mutex;
    static std::deque<std::shared_ptr<Transform>> kept;
    const std::lock_guard lock(mutex);
    for (const auto& each : kept)
        if (each->hash == hash) return each;
    kept.push_front(Make(profile));
    kept.front()->hash = hash;
    if (kept.size() > kKept) kept.pop_back();
    return kept.front();
}

void Rows(cmsHTRANSFORM work, QImage& picture, uchar* bits, int from, int to) {
    for (int y = from; y < to; ++y) {
        uchar* row = bits + qsizetype(y) * picture.bytesPerLine();
        cmsDoTransform(work, row, row, cmsUInt32Number(picture.width()));
    }
}

} // namespace

std::string ToScreenColors(QImage& picture, const std::string& profile) {
    if (picture.isNull() || profile.empty()) return {};
    if (profile.size() > kLargestProfile) return kBroken;
    const auto transform = TransformOf(profile);
    if (!transform->greys.empty()) Regrey(transform->greys, picture);
    if (!transform->work) return transform->error;
    uchar* bits = picture.bits(); // not in the threads: it may copy
    void* work = transform->work.get();
    const auto rows = [&](std::size_t from, std::size_t to) {
        Rows(work, picture, bits, int(from), int(to));
    };
    if ((long long)(picture.width()) * picture.height() < kOneThread)
        rows(0, std::size_t(picture.height()));
    else
        InTwoThreads(std::size_t(picture.height()), rows);
    return {};
}

} // namespace tarn
