#include "Reading.h"

#include <random>

using namespace tarn;
using namespace tarn::testing;

namespace {

class Damage : public Reading {
protected:
    // What was damaged leaves nothing behind.
    void TearDown() override {
        Read(CanonPicture());
        const auto rows = m_info.PanelRows;
        m_reader = PictureInfoReader();
        Read(CanonPicture());
        EXPECT_EQ(rows, m_info.PanelRows);
    }
    void ReadBothWays(const std::string& bytes) {
        Read(bytes);
        EXPECT_EQ(m_info.PanelRows.size(), m_info.ExifFound ? 13U : 3U);
        EXPECT_EQ(m_info.NoExif, !m_info.ExifFound);
        ReadDate(bytes);
    }
};

} // namespace

TEST_F(Damage, PicturesCutOffAtEveryByte) {
    for (const std::string& whole : {CanonPicture(), NikonPicture()}) {
        m_reader = PictureInfoReader();
        for (std::size_t size = 0; size < whole.size(); ++size) {
            ReadBothWays(whole.substr(0, size));
            EXPECT_EQ(m_info.ExifFound, size >= 10);
        }
    }
}

TEST_F(Damage, EveryByteOfTheDirectoriesTurnedOver) {
    const std::string whole = NikonPicture();
    for (std::size_t i = 12; i < 400; ++i) {
        std::string bytes = whole;
        bytes[i] = static_cast<char>(~bytes[i]);
        ReadBothWays(bytes);
    }
}

TEST_F(Damage, NoiseBehindAGoodHead) {
    std::mt19937 random(20041); // the same noise each time
    for (std::size_t round = 0; round < 200; ++round) {
        std::string bytes = CanonPicture().substr(0, 20 + round * 3);
        while (bytes.size() < 21000) bytes += static_cast<char>(random());
        ReadBothWays(bytes);
    }
}
