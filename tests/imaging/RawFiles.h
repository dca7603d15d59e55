// Raw files of the tests' own: the open raw format with a camera's picture in front.
#pragma once

#include <QImage>

#include <cstdint>
#include <string>
#include <vector>

namespace tarn::testing {

class RawFile {
public:
    // The sensor sees `scene`; `preview` is a JPEG file of `previewSize`, empty for none.
    RawFile(const QImage& scene, const std::string& preview, QSize previewSize, int orientation) {
        Number(0x002A4949, 4);
        Number(8, 4);
        constexpr std::uint32_t kLists = 1024; // room for both
        const std::uint32_t pixels = kLists + std::uint32_t(preview.size() + 1) / 2 * 2;
        const std::vector<Entry> first = {
            {254, 4, 1, {1}},
            {256, 4, 1, {std::uint32_t(previewSize.width())}},
            {257, 4, 1, {std::uint32_t(previewSize.height())}},
            {258, 3, 3, {8, 8, 8}},
            {259, 3, 1, {7}},
            {262, 3, 1, {6}},
            {271, 2, 4, {'T' | 'a' << 8 | 'r' << 16}},
            {272, 2, 4, {'O' | 'n' << 8 | 'e' << 16}},
            {273, 4, 1, {kLists}},
            {274, 3, 1, {std::uint32_t(orientation)}},
            {277, 3, 1, {3}},
            {278, 4, 1, {std::uint32_t(previewSize.height())}},
            {279, 4, 1, {std::uint32_t(preview.size())}},
            {330, 4, 1, {512}},
            {50706, 1, 4, {0x00000401}},
            {50721, 10, 9, Ratios({32406, -15372, -4986, -9689, 18758, 415, 557, -2040, 10570})},
            {50728, 5, 3, Ratios({10000, 10000, 10000})},
            {50778, 3, 1, {21}}};
        const std::vector<Entry> second = {
            {254, 4, 1, {0}},
            {256, 4, 1, {std::uint32_t(scene.width())}},
            {257, 4, 1, {std::uint32_t(scene.height())}},
            {258, 3, 1, {16}},
            {259, 3, 1, {1}},
            {262, 3, 1, {32803}},
            {273, 4, 1, {pixels}},
            {277, 3, 1, {1}},
            {278, 4, 1, {std::uint32_t(scene.height())}},
            {279, 4, 1, {std::uint32_t(scene.width() * scene.height() * 2)}},
            {33421, 3, 2, {2 | 2 << 16}},
            {33422, 1, 4, {0x02010100}},
            {50714, 3, 1, {0}},
            {50717, 4, 1, {65535}}};
        List(first);
        bytes.resize(512, '\0');
        List(second);
        bytes.resize(kLists, '\0');
        bytes += preview;
        bytes.resize(pixels, '\0');
        for (int y = 0; y < scene.height(); ++y)
            for (int x = 0; x < scene.width(); ++x) {
                const QRgb color = scene.pixel(x, y);
                const int filter = x % 2 + y % 2;
                const int level = filter == 0   ? qRed(color)
                                  : filter == 1 ? qGreen(color)
                                                : qBlue(color);
                Number(level > 127 ? 60000 : 0, 2);
            }
    }

    std::string bytes;

private:
    struct Entry {
        std::uint32_t tag, kind, count;
        std::vector<std::uint32_t> values; // short ones each in its own, where they are several
    };

    static std::vector<std::uint32_t> Ratios(const std::vector<int>& tenThousandths) {
        std::vector<std::uint32_t> words;
        for (const int part : tenThousandths) {
            words.push_back(std::uint32_t(part));
            words.push_back(10000);
        }
        return words;
    }

    void Number(std::uint32_t number, int size) {
        for (int i = 0; i < size; ++i) bytes.push_back(char(number >> (8 * i)));
    }

    // What does not fit into its entry comes behind the list.
    void List(const std::vector<Entry>& entries) {
        std::size_t behind = bytes.size() + 2 + 12 * entries.size() + 4;
        std::vector<const Entry*> later;
        Number(std::uint32_t(entries.size()), 2);
        for (const Entry& entry : entries) {
            Number(entry.tag, 2);
            Number(entry.kind, 2);
            Number(entry.count, 4);
            if (entry.values.size() == 1) {
                Number(entry.values[0], 4);
                continue;
            }
            Number(std::uint32_t(behind), 4);
            behind += entry.values.size() * (entry.kind == 3 ? 2 : 4);
            later.push_back(&entry);
        }
        Number(0, 4);
        for (const Entry* entry : later)
            for (const std::uint32_t value : entry->values) Number(value, entry->kind == 3 ? 2 : 4);
    }
};

} // namespace tarn::testing
