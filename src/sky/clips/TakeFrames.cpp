#include "sky/clips/TakeFrames.h"

#include "clips/SerWriter.h"
#include "common/paths.h"
#include "common/text.h"
#include "history/Changes.h"
#include "sky/clips/FrameFiles.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <optional>
#include <unordered_map>

namespace tarn {

namespace {

constexpr const char* kNotReached = "the clip ends before it";

std::string StemOf(const std::string& path) {
    const std::string name = LastPart(path);
    return name.substr(0, name.rfind('.'));
}

SerHeader HeaderOf(const ClipImage& image, std::size_t frames, const RatedClip& rated) {
    SerHeader header;
    header.width = image.width;
    header.height = image.height;
    header.bits = image.bits;
    header.color = image.samples != 3 ? SerHeader::Mono
                   : image.blueFirst  ? SerHeader::Bgr
                                      : SerHeader::Rgb;
    header.frames = int(frames);
    header.observer = rated.observer;
    header.instrument = rated.instrument;
    header.telescope = rated.telescope;
    return header;
}

class Taking {
public:
    Taking(const TakeOrder& order, Changes& changes, const TakeProgress& progress)
        : m(order), m_changes(changes), m_progress(progress) {
        changes.KeepNoNewBytes();
        const std::vector<std::string> targets = TargetsOf(order, changes);
        m_standing = StandingAt(targets, changes);
        for (const std::string& path : targets) m_taken.push_back({path, kNotReached});
        const std::vector<RatedFrame>& frames = order.rated->frames;
        std::vector<std::size_t> byRank(order.frames.size());
        std::iota(byRank.begin(), byRank.end(), 0);
        std::stable_sort(byRank.begin(), byRank.end(), [&](std::size_t a, std::size_t b) {
            return frames[order.frames[a]].sharpness > frames[order.frames[b]].sharpness;
        });
        m_ranks.resize(byRank.size());
        for (std::size_t rank = 0; rank < byRank.size(); ++rank) m_ranks[byRank[rank]] = rank;
        if (!byRank.empty()) m_sharpest = &frames[order.frames[byRank.front()]];
    }

    std::vector<TakenFrame> Run() {
        if (m.frames.empty()) return m_taken;
        if (m.asClip && m_standing.front()) {
            m_taken.front().error = "already exists";
            return m_taken;
        }
        const ClipWords words = WalkFrames(
            m.clip, m.frames,
            [this](std::size_t place, const ClipImage& image) {
                const bool goesOn = m.asClip ? AddFrame(place, image) : WriteFile(place, image);
                ++m_done;
                return goesOn && GoesOn();
            },
            [this] { return GoesOn(); });
        if (m.asClip) EndClip(words.fault);
        if (m_stopped) TakeBack();
        for (TakenFrame& file : m_taken)
            if (file.error == kNotReached && !words.fault.empty()) file.error = words.fault;
        return m_taken;
    }

private:
    bool GoesOn() {
        if (m_progress && !m_progress(m_done)) m_stopped = true;
        return !m_stopped;
    }

    FrameShift ShiftOf(std::size_t place, const ClipImage& image) const {
        if (!m.align) return {};
        return ShiftOnto(m.rated->frames[m.frames[place]], *m_sharpest, image.isMosaic);
    }

    // The others go on without one that cannot be written.
    bool WriteFile(std::size_t place, const ClipImage& image) {
        TakenFrame& file = m_taken[place];
        file.error.clear();
        if (m_standing[place] || m_changes.Exists(file.path)) {
            file.error = "already exists";
            return true;
        }
        FrameWords words;
        words.number = m.frames[place];
        words.rank = m_ranks[place];
        if (words.number < m.rated->utc.size()) words.utc = m.rated->utc[words.number];
        words.shift = ShiftOf(place, image);
        words.isAligned = m.align;
        m_changes.Write(file.path, FitsOfFrame(image, *m.rated, m.clip, words), &file.error);
        return true;
    }

    bool AddFrame(std::size_t place, const ClipImage& image) {
        TakenFrame& file = m_taken.front();
        if (!m_writer) {
            file.error.clear();
            const std::string header =
                m.rated->header.empty() ? SerHeaderBytes(HeaderOf(image, m.frames.size(), *m.rated))
                                        : m.rated->header;
            m_writer.emplace(header, image.bytes->size(), m.frames.size(),
                             [this](std::size_t at, std::string_view bytes) {
                                 std::string& error = m_taken.front().error;
                                 const std::string& path = m_taken.front().path;
                                 return at == 0 ? m_changes.Write(path, bytes, &error)
                                                : m_changes.Extend(path, at, bytes, &error);
                             });
        }
        return m_writer->Add(place, ShiftedBytes(image, ShiftOf(place, image)));
    }

    void EndClip(const std::string& fault) {
        TakenFrame& file = m_taken.front();
        if (m_writer && file.error.empty() && m_done < m.frames.size() && !m_stopped)
            file.error = fault.empty() ? kNotReached : fault;
        if (m_writer && file.error.empty() && !m_stopped) {
            std::vector<std::int64_t> stamps;
            for (const std::size_t frame : m.frames)
                if (frame < m.rated->stamps.size()) stamps.push_back(m.rated->stamps[frame]);
            m_writer->Close(stamps);
        }
        if (!file.error.empty() && !m_stopped) TakeBack();
    }

    // What cannot go away is told of the first.
    void TakeBack() {
        std::string stays;
        m_changes.TakeBack(&stays);
        std::string& error = m_taken.front().error;
        if (!stays.empty()) error = (error.empty() ? "" : error + "; ") + stays;
    }

    const TakeOrder& m;
    Changes& m_changes;
    const TakeProgress& m_progress;
    std::vector<std::optional<std::string>> m_standing; // beside them
    std::vector<TakenFrame> m_taken;
    std::vector<std::size_t> m_ranks; // by sharpness
    const RatedFrame* m_sharpest = nullptr;
    std::optional<SerWriter> m_writer;
    std::size_t m_done = 0;
    bool m_stopped = false;
};

} // namespace

std::vector<std::string> TargetsOf(const TakeOrder& order, const Files& files) {
    const std::string folder = files.Absolute(order.folder);
    const std::string stem = StemOf(order.clip);
    if (order.asClip) return {JoinPath(folder, stem + "_best.ser")};
    std::vector<std::string> targets;
    for (std::size_t place = 0; place < order.frames.size(); ++place) {
        std::array<char, 40> number{};
        std::snprintf(number.data(), number.size(), "_%04zu.fits", place + 1);
        targets.push_back(JoinPath(folder, stem + number.data()));
    }
    return targets;
}

std::vector<std::optional<std::string>> StandingAt(const std::vector<std::string>& targets,
                                                   const Files& files) {
    std::vector<std::optional<std::string>> standing(targets.size());
    if (targets.empty()) return standing;
    const std::string folder = FolderOf(targets.front());
    const auto names = files.FileNames(folder, nullptr);
    std::unordered_map<std::string, std::string> folded;
    for (const std::string& name : names.value_or(std::vector<std::string>()))
        folded.emplace(FoldCase(name), name);
    for (const std::string& name : files.FolderNames(folder)) folded.emplace(FoldCase(name), name);
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const auto found = folded.find(FoldCase(LastPart(targets[i])));
        if (!names || files.Exists(targets[i])) // what cannot be listed is asked for by itself
            standing[i] = files.FindAnyCase(targets[i]);
        else if (found != folded.end())
            standing[i] = JoinPath(folder, found->second);
    }
    return standing;
}

std::vector<TakenFrame> TakeFrames(const TakeOrder& order, Changes& changes,
                                   const TakeProgress& progress) {
    return Taking(order, changes, progress).Run();
}

} // namespace tarn
