#include "thumbnails/ThumbRun.h"

#include "common/codepage.h"
#include "common/paths.h"
#include "common/stop_flag.h"
#include "common/text.h"
#include "thumbnails/ScalePicture.h"
#include "thumbnails/ThumbNames.h"

#include <algorithm>
#include <filesystem>
#include <thread>
#include <unordered_set>

namespace tarn {

namespace {

constexpr unsigned kMostWorkers = 8;
constexpr std::size_t kAhead = 64; // finished thumbnails that wait to be written

std::string TextOf(const FileFault& fault) {
    return "'" + LastPart(fault.path) + "' - " + fault.why;
}

bool IsPictureName(const std::string& name, const ListTypes& types) {
    const std::string type = FileTypeOf(name);
    return type != ".TXT" && !IsListedType(types.videos, type) && !IsListedType(types.web, type);
}

// The thumbnails that stand in the folder, in any case; but a name that is another picture's own
// counts for that one alone.
class Standing {
public:
    Standing(const Files& files, const ThumbRequest& request,
             const std::vector<std::string>& pictures) {
        const auto names = files.FileNames(JoinPath(request.pictures, request.subFolder));
        if (!names) return;
        std::unordered_set<std::string> own;
        for (const std::string& picture : pictures)
            own.insert(ThumbnailName(request.width, picture));
        for (const std::string& name : *names) {
            m_exact.insert(name);
            if (!own.contains(name)) m_folded.insert(FoldCase(name));
        }
    }
    bool Has(const std::string& name) const {
        return m_exact.contains(name) || m_folded.contains(FoldCase(name));
    }

private:
    std::unordered_set<std::string> m_exact;
    std::unordered_set<std::string> m_folded;
};

} // namespace

std::vector<ThumbJob> PlanThumbnails(const std::vector<std::string>& names, const ListTypes& types,
                                     const ThumbRequest& request, bool updateOnly,
                                     const Files& files) {
    std::vector<ThumbJob> jobs;
    for (std::size_t row = 0; row < names.size(); ++row)
        if (IsPictureName(names[row], types)) jobs.push_back({static_cast<int>(row), names[row]});
    if (!updateOnly) return jobs;
    const Standing standing(files, request, names);
    std::erase_if(jobs, [&](const ThumbJob& job) {
        return standing.Has(ThumbnailName(request.width, job.name));
    });
    return jobs;
}

ThumbRun::ThumbRun(std::vector<ThumbJob> jobs, ThumbRequest request, Files& files)
    : m_jobs(std::move(jobs)), m_request(std::move(request)), m_files(files),
      m_folder(JoinPath(m_request.pictures, m_request.subFolder)), m_made(m_jobs.size()) {
    const std::size_t cores = std::clamp(std::thread::hardware_concurrency(), 1U, kMostWorkers);
    for (std::size_t i = 0; i < std::min(cores, m_jobs.size()); ++i)
        m_workers.emplace_back([this] { Work(); });
}

ThumbRun::~ThumbRun() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    for (Worker& worker : m_workers) worker.Join();
}

void ThumbRun::Work() {
    const HeedsStop heeds(m_ends);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_changed.wait(lock, [this] {
            return m_ends || m_toBegin == m_jobs.size() || m_toBegin < m_next + kAhead;
        });
        if (m_ends || m_toBegin == m_jobs.size()) return;
        const std::size_t mine = m_toBegin++;
        lock.unlock();
        Made made{true, {}, {}};
        made.jpeg = Guarded(made.error, [&] {
            return ThumbnailJpeg(JoinPath(m_request.pictures, m_jobs[mine].name), m_request.width,
                                 m_request.quality, made.error);
        });
        lock.lock();
        m_made[mine] = std::move(made);
        m_changed.notify_all();
    }
}

bool ThumbRun::WaitForNext(std::chrono::milliseconds most) {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, most, [this] { return m_made[m_next].ready; });
}

ThumbRun::Made ThumbRun::TakeNext() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_made[m_next].ready; });
    Made made = std::move(m_made[m_next++]);
    m_changed.notify_all();
    return made;
}

// A link of that name leads to something that is no thumbnail: it goes, what it leads to stays.
bool ThumbRun::WriteOwn(const std::string& path, const std::string& bytes, std::string* error) {
    std::error_code code;
    if (std::filesystem::is_symlink(path, code) && !m_files.Remove(path, error)) return false;
    return m_files.Write(path, bytes, error);
}

bool ThumbRun::Step() {
    Made made = TakeNext();
    const std::string& name = m_jobs[m_next - 1].name;
    const std::string thumbnail = ThumbnailName(m_request.width, name);
    const std::string damage = made.jpeg.empty() ? std::string() : made.error;
    m_fault = damage;
    if (!made.jpeg.empty() && WriteOwn(JoinPath(m_folder, thumbnail), made.jpeg, &made.error)) {
        ++m_counts.made;
        if (!damage.empty())
            m_counts.damages.push_back({JoinPath(m_request.pictures, name), damage});
        m_progress = "Generating thumbnail " + std::to_string(m_counts.made) + " " +
                     ShownSubFolder(m_request.subFolder) + "\\" + thumbnail;
        WriteNote(name);
        return true;
    }
    m_fault = made.error;
    ++m_counts.failed;
    m_counts.faults.push_back({JoinPath(m_request.pictures, name), m_fault});
    return false;
}

// Its text between double quotes, as it is. A note that cannot be written is done without, and
// told.
void ThumbRun::WriteNote(const std::string& name) {
    if (m_request.notes.empty() || !m_request.noteOf) return;
    const std::string text = m_request.noteOf(JoinPath(m_request.pictures, name));
    const auto bytes = ToCodePage(text);
    if (text.empty() || !bytes) return;
    std::string error;
    const std::string note = ThumbnailNoteName(m_request.width, name);
    if (WriteOwn(JoinPath(m_request.notes, note), "\"" + *bytes + "\"\r\n", &error)) return;
    ++m_counts.failedNotes;
    m_counts.noteFaults.push_back({JoinPath(m_request.notes, note), error});
}

std::vector<FileFault> ThumbRun::Faults() const {
    std::vector<FileFault> all = m_counts.faults;
    all.insert(all.end(), m_counts.damages.begin(), m_counts.damages.end());
    all.insert(all.end(), m_counts.noteFaults.begin(), m_counts.noteFaults.end());
    return all;
}

std::string ThumbRun::Report(bool cancelled) const {
    std::string text = cancelled ? "CANCELLED - " : "";
    text += std::to_string(m_counts.made) + " thumbnails, sized " +
            std::to_string(m_request.width) + " pixels created in " +
            ShownSubFolder(m_request.subFolder) + " sub folder";
    if (m_counts.failed > 0)
        text +=
            ", " + std::to_string(m_counts.failed) + " failed: " + TextOf(m_counts.faults.front());
    if (!m_counts.damages.empty())
        text += ", " + std::to_string(m_counts.damages.size()) +
                " of damaged files: " + TextOf(m_counts.damages.front());
    if (m_counts.failedNotes > 0)
        text += ", " + std::to_string(m_counts.failedNotes) +
                " notes not written: " + TextOf(m_counts.noteFaults.front());
    return text;
}

} // namespace tarn
