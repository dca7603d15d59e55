// Steps through whole and broken pictures while their decoder processes are killed, stopped and
// starved: the window answers, and whatever it shows or says is of the file that it names.
// `--seed N --steps N --files N` replays a run; `--answer MS` holds each answer to so many
// milliseconds.
#include "Besieger.h"
#include "Dice.h"
#include "FitsFiles.h"
#include "app/AppDesk.h"

#include "decoder/DecoderPool.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <vector>

#include <sys/resource.h>

namespace tarn::testing {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 20ms; // as the program has it

int Option(const char* name, int otherwise) {
    const QStringList words = QCoreApplication::arguments();
    const auto at = words.indexOf(QString::fromLatin1(name));
    return at < 0 ? otherwise : words.value(at + 1).toInt();
}

// Each file's picture has a width that no other has.
int WidthOf(int number) {
    return 100 + number;
}

struct SiegeWorld : AppDesk {
    Dice dice;
    std::map<std::string, int> widths;

    void Fill(int files) {
        for (int i = 0; i < files; ++i) AddOne(i);
        c.PCheck->setChecked(true);
    }
    void AddOne(int number) {
        dice.Begin(17, std::uint64_t(number));
        const int width = WidthOf(number);
        const char* const kinds[] = {"PNG", "TIFF", "WEBP", "FITS", "JPEG", "BMP"};
        const std::string kind = dice.Of(kinds);
        const QImage picture = TellTale(width, 300);
        std::string bytes = kind == "JPEG"   ? JpegBytes(picture)
                            : kind == "FITS" ? NightSky(width, 300)
                                             : PictureBytes(picture, kind.c_str());
        if (number % 3 == 1) bytes.resize(std::size_t(dice.Below(int(bytes.size()))));
        for (int flips = number % 3 == 2 ? 1 + dice.Below(20) : 0; flips > 0; --flips)
            bytes[std::size_t(dice.Below(int(bytes.size())))] ^= char(1 << dice.Below(8));
        const std::string name =
            "s" + std::to_string(number) + ".jpg"; // whatever it is by its bytes
        folder.Write(name, bytes);
        if (number % 3 == 0) widths[name] = width; // whole
    }
    std::string Check() const {
        const std::string row = c.FileListBox->Text(std::max(0, c.FileListBox->CurrentRow()));
        std::string faults;
        if (s.FileNameOnly != row) faults += "current is " + s.FileNameOnly + "; ";
        if (!Status().starts_with(s.Filename)) faults += "status says " + Status() + "; ";
        for (const std::string& said : {Error(), Said()})
            if (said.find(".jpg") != std::string::npos && said.find(row) == std::string::npos)
                faults += "told of another: " + said + "; ";
        const auto known = widths.find(row);
        if (s.ImageLoaded && known != widths.end() && s.ImageWidth != known->second)
            faults += "shown is a picture of " + std::to_string(s.ImageWidth) + "; ";
        if (!s.ImageLoaded && s.ImageWidth == 0 && !c.Picture1->Picture().isNull())
            faults += "a picture stands where one is awaited; ";
        return faults.empty() ? faults : row + ": " + faults;
    }
};

class Answers {
public:
    template <typename Act> double Time(const Act& act) {
        QElapsedTimer clock;
        clock.start();
        act();
        m_times.push_back(double(clock.nsecsElapsed()) / 1e6);
        return m_times.back();
    }
    double Part(double part) {
        std::sort(m_times.begin(), m_times.end());
        return m_times[std::size_t(double(m_times.size() - 1) * part)];
    }
    long Over(double most) const {
        return std::count_if(m_times.begin(), m_times.end(),
                             [most](double each) { return each > most; });
    }

private:
    std::vector<double> m_times;
};

long PeakMegabytes() {
    rusage used{};
    ::getrusage(RUSAGE_SELF, &used);
    return used.ru_maxrss / 1024;
}

void RestFor(int milliseconds, Answers& answers) {
    QElapsedTimer clock;
    clock.start();
    do {
        answers.Time([] { QCoreApplication::processEvents(); });
        QTest::qSleep(1);
    } while (clock.elapsed() < milliseconds);
}

} // namespace

TEST(Siege, TheWindowAnswersAndNamesTheRightFileWhateverBecomesOfTheDecoders) {
    const int steps = Option("--steps", 300);
    const int most = Option("--answer", 0);
    const auto seed = std::uint64_t(Option("--seed", 1));
    SiegeWorld d;
    d.Fill(Option("--files", 48));
    d.Start();
    d.house.display.SetPatience(kPatience);
    UseDecoders({3, TARN_DECODER, 0});
    Answers answers;
    Dice dice;
    int awaited = 0;
    int shown = 0;
    int findings = 0;
    {
        const Besieger besieger(seed);
        const int keys[] = {Qt::Key_Down, Qt::Key_Down,   Qt::Key_Down,     Qt::Key_N,
                            Qt::Key_Up,   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_End};
        for (int step = 0; step < steps; ++step) {
            dice.Begin(seed, std::uint64_t(step));
            const double took = answers.Time([&] { d.Key(dice.Of(keys)); });
            if (most > 0 && took > most)
                std::printf("step %d to %s: %.0f ms\n", step, d.s.FileNameOnly.c_str(), took);
            std::string found = d.Check();
            awaited += !d.s.ImageLoaded && d.s.ImageWidth == 0 ? 1 : 0;
            RestFor(dice.OneIn(4) ? dice.Below(60) : 0, answers);
            shown += d.s.ImageLoaded ? 1 : 0;
            found += d.Check();
            if (found.empty()) continue;
            if (++findings < 10) ADD_FAILURE() << "step " << step << ": " << found;
        }
        std::printf("%d steps, seed %llu: %d awaited, %d shown after it; decoders killed %d, "
                    "stopped %d, starved %d\n",
                    steps, static_cast<unsigned long long>(seed), awaited, shown, besieger.Killed(),
                    besieger.Stopped(), besieger.Starved());
    }
    std::printf("most memory of the window's process: %ld MB\n", PeakMegabytes());
    std::printf(
        "answers in ms: half within %.2f, 99 %% %.1f, 99.9 %% %.1f, all %.1f; over 50: %ld\n",
        answers.Part(0.5), answers.Part(0.99), answers.Part(0.999), answers.Part(1),
        answers.Over(50));
    if (most > 0) {
        EXPECT_EQ(answers.Over(most), 0);
    }
    UseDecoders({});
}

} // namespace tarn::testing
