#include "imaging/PicturesAhead.h"

#include "common/stop_flag.h"
#include "common/worker.h"
#include "imaging/Pixels.h"
#include "platform/DecodeBudget.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <utility>

#include <unistd.h>

namespace tarn {

namespace {

constexpr std::int64_t kLargestBudget = 2LL * 1024 * 1024 * 1024;
constexpr std::int64_t kBytesPerPixel = 4;
constexpr int kReducedSteps = 8; // reduced reading goes by eighths

unsigned WorkerCount() {
    return std::clamp(std::thread::hardware_concurrency(), 2U, 4U);
}

// Whether a reading for one box serves another.
bool Covers(QSize decoded, QSize wanted) {
    if (decoded.isEmpty()) return true;
    return !wanted.isEmpty() && decoded.width() >= wanted.width() &&
           decoded.height() >= wanted.height();
}

std::int64_t BytesOf(QSize size) {
    return kBytesPerPixel * size.width() * size.height();
}

// The reading that gives at least so many pixels.
QSize DecodedSize(QSize picture, QSize least) {
    for (int step = 1; !least.isEmpty() && step < kReducedSteps; ++step) {
        const QSize size((picture.width() * step + kReducedSteps - 1) / kReducedSteps,
                         (picture.height() * step + kReducedSteps - 1) / kReducedSteps);
        if (size.width() >= least.width() && size.height() >= least.height()) return size;
    }
    return picture;
}

std::vector<QSize> ShownSizes(const PictureWish& wish, QSize picture) {
    return wish.shown ? wish.shown(picture) : std::vector<QSize>();
}

std::int64_t BytesNeeded(const PictureSource& source, const PictureWish& wish) {
    const QSize picture = source.Size();
    const QSize least = source.Reduces() ? LeastFor(picture, wish.wanted) : QSize();
    std::int64_t bytes = BytesOf(DecodedSize(picture, least));
    for (const QSize& size : ShownSizes(wish, picture)) bytes += BytesOf(size);
    return bytes;
}

// What its own reader refuses, the toolkit's may know; `error` is the first one's.
std::shared_ptr<PictureSource> Opened(const std::string& path, std::string& error) {
    auto source = PictureLoader::Open(path, error);
    std::string second;
    return source || IsStopped() ? source : PictureLoader::OpenWithToolkit(path, second);
}

// Null when no reader can read it.
std::shared_ptr<PictureSource> Decoded(std::shared_ptr<PictureSource> source,
                                       const PictureWish& wish, std::string& error) {
    std::string fault;
    QImage picture = source->Decode(LeastFor(source->Size(), wish.wanted), fault);
    if (picture.isNull() && error.empty()) error = fault;
    if (picture.isNull() && !source->IsToolkits() && !IsStopped()) {
        source = PictureLoader::OpenWithToolkit(wish.path, fault);
        if (source) picture = source->Decode({}, fault);
    }
    if (picture.isNull()) return nullptr;
    const QSize size = source->Size().isEmpty() ? picture.size() : source->Size();
    for (const QSize& shown : ShownSizes(wish, size)) source->PrepareScaled(shown);
    return source;
}

} // namespace

struct PicturesAhead::Picture {
    enum class State { Waiting, Decoding, Ready, Failed };

    PictureWish wish;
    State state = State::Waiting;
    bool wished = true;
    bool taken = false;
    std::atomic<bool> stop = false;  // its decode is wanted no more
    std::atomic<bool> hurry = false; // somebody waits for it
    std::int64_t bytes = 0;          // held, or needed as far as known
    bool unseen = false;             // wished once more since a worker has looked at the file
    FileLook look;
    std::shared_ptr<PictureSource> source;
    std::string refusal;         // why there is none
    bool awaited = false;        // by who does not stand still, until it is taken
    std::function<void()> ready; // tells him

    bool IsDone() const { return state == State::Ready || state == State::Failed; }
    bool IsRefused(const FileLook& now) const {
        return state == State::Failed && !stop && look == now && !refusal.empty();
    }
    bool IsStale(const FileLook& now) const {
        return state == State::Ready && (now != look || source->IsOutOfDate());
    }
    // Nobody else shows it.
    bool IsFree() const { return state == State::Ready && source.use_count() == 1; }
};

std::int64_t PicturesAhead::DefaultBudget() {
    const std::int64_t memory =
        static_cast<std::int64_t>(::sysconf(_SC_PHYS_PAGES)) * ::sysconf(_SC_PAGESIZE);
    return std::min(memory / 4, kLargestBudget);
}

PicturesAhead::PicturesAhead(std::int64_t budget) : m_budget(budget) {
    for (unsigned i = 0; i < WorkerCount(); ++i)
        m_workers.emplace_back([this] { Work(Serves::All); });
    m_workers.emplace_back([this] { Work(Serves::Awaited); }); // whatever the others are at
}

PicturesAhead::~PicturesAhead() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_changed.notify_all();
    for (Worker& worker : m_workers) worker.Join();
}

bool PicturesAhead::IsIn(const Pictures& pictures, const std::shared_ptr<Picture>& picture) {
    return std::find(pictures.begin(), pictures.end(), picture) != pictures.end();
}

void PicturesAhead::Expect(const std::vector<PictureWish>& wishes) {
    {
        const std::lock_guard lock(m_mutex);
        for (const auto& picture : m_pictures) {
            picture->wished = picture->awaited;
            // Who shows it may have fetched more pixels since.
            if (picture->taken && picture->source) picture->bytes = picture->source->BytesHeld();
        }
        Pictures next;
        for (const PictureWish& wish : wishes) {
            auto picture = Wished(wish);
            picture->wished = true;
            picture->unseen = picture->state == Picture::State::Ready;
            if (!IsIn(next, picture)) next.push_back(picture);
        }
        for (const auto& picture : m_pictures) {
            const bool decodes = picture->state == Picture::State::Decoding;
            if (decodes && !picture->wished) picture->stop = true;
            const bool stays = picture->taken || decodes || picture->awaited;
            if (!picture->wished || (picture->awaited && !IsIn(next, picture)))
                (stays ? next : m_dropped).push_back(picture);
        }
        for (const auto& picture : next) picture->taken = false;
        m_pictures = std::move(next);
    }
    m_changed.notify_all();
}

// What is at hand for the wish, or a new one.
std::shared_ptr<PicturesAhead::Picture> PicturesAhead::Wished(const PictureWish& wish) const {
    auto found = Find(wish.path, wish.wanted);
    if (found && found->state != Picture::State::Failed && !found->stop &&
        !found->IsStale(found->look))
        return found;
    auto made = std::make_shared<Picture>();
    made->wish = wish;
    return made;
}

std::shared_ptr<PicturesAhead::Picture> PicturesAhead::Find(const std::string& path,
                                                            QSize wanted) const {
    const auto found = std::find_if(m_pictures.begin(), m_pictures.end(), [&](const auto& each) {
        return each->wish.path == path && Covers(each->wish.wanted, wanted);
    });
    return found == m_pictures.end() ? nullptr : *found;
}

void PicturesAhead::Drop(const Picture* picture) {
    const auto place = std::find_if(m_pictures.begin(), m_pictures.end(),
                                    [&](const auto& each) { return each.get() == picture; });
    if (place == m_pictures.end()) return;
    m_dropped.push_back(std::move(*place));
    m_pictures.erase(place);
    m_changed.notify_all();
}

std::shared_ptr<PictureSource> PicturesAhead::Take(const std::string& path, QSize wanted) {
    return Take(path, wanted, PictureLoader::LookAt(path));
}

std::shared_ptr<PictureSource> PicturesAhead::Take(const std::string& path, QSize wanted,
                                                   const FileLook& now) {
    std::unique_lock lock(m_mutex);
    const auto picture = Find(path, wanted);
    if (!picture) return nullptr;
    picture->wished = true; // so that it stays once it is ready
    picture->hurry = true;
    m_changed.wait(lock, [&] { return picture->state != Picture::State::Decoding; });
    if (picture->IsRefused(now)) return nullptr; // which is asked for next
    if (picture->state != Picture::State::Ready || picture->IsStale(now)) {
        Drop(picture.get());
        return nullptr;
    }
    picture->taken = true;
    picture->hurry = picture->awaited = false;
    return picture->source;
}

std::optional<std::string> PicturesAhead::TakeRefusal(const std::string& path,
                                                      const FileLook& now) {
    const std::lock_guard lock(m_mutex);
    const auto found = std::find_if(m_pictures.begin(), m_pictures.end(), [&](const auto& each) {
        return each->wish.path == path && each->IsRefused(now);
    });
    if (found == m_pictures.end()) return std::nullopt;
    std::string refusal = (*found)->refusal;
    Drop(found->get());
    return refusal;
}

bool PicturesAhead::Await(const std::string& path, QSize wanted, const FileLook& now,
                          std::chrono::milliseconds patience, std::function<void()> ready) {
    std::unique_lock lock(m_mutex);
    const auto picture = Awaited({path, wanted, {}}, now);
    for (const auto& other : m_pictures) {
        if (other == picture) continue;
        other->awaited = false;
        other->ready = {};
        if (other->hurry && !other->IsDone()) other->stop = true;
    }
    picture->wished = picture->awaited = true;
    picture->hurry = true;
    m_changed.notify_all();
    const auto done = [&] { return picture->IsDone(); };
    if (patience.count() > 0 ? m_changed.wait_for(lock, patience, done) : done()) return true;
    picture->ready = std::move(ready);
    return false;
}

// What is at hand or in the making, or a new one before all others.
std::shared_ptr<PicturesAhead::Picture> PicturesAhead::Awaited(const PictureWish& wish,
                                                               const FileLook& now) {
    if (auto known = Find(wish.path, wish.wanted)) {
        const bool failed = known->state == Picture::State::Failed;
        if (!known->stop && !known->IsStale(now) && (!failed || known->IsRefused(now)))
            return known;
        Drop(known.get());
    }
    auto made = std::make_shared<Picture>();
    made->wish = wish;
    m_pictures.insert(m_pictures.begin(), made);
    return made;
}

void PicturesAhead::Keep(const std::string& path, QSize wanted,
                         std::shared_ptr<PictureSource> source) {
    const std::lock_guard lock(m_mutex);
    while (const auto known = Find(path, wanted)) Drop(known.get());
    auto picture = std::make_shared<Picture>();
    picture->wish = {path, wanted, {}};
    picture->state = Picture::State::Ready;
    picture->wished = false;
    picture->taken = true;
    picture->bytes = source->BytesHeld();
    picture->look = source->Facts()->look;
    picture->source = std::move(source);
    if (MakeRoom(0, picture->bytes)) m_pictures.push_back(std::move(picture));
}

void PicturesAhead::TimesWereSet(const std::string& path) {
    const FileLook now = PictureLoader::LookAt(path);
    const std::lock_guard lock(m_mutex);
    for (const auto& picture : m_pictures) {
        if (picture->wish.path != path || !picture->look.IsSameFile(now)) continue;
        picture->look = now;
        if (picture->source) picture->source->TimesWereSet(now);
    }
}

std::int64_t PicturesAhead::Used() const {
    std::int64_t bytes = 0;
    for (const auto& picture : m_pictures)
        if (picture->state == Picture::State::Ready || picture->state == Picture::State::Decoding)
            bytes += picture->bytes;
    return bytes;
}

std::int64_t PicturesAhead::BytesHeld() const {
    const std::lock_guard lock(m_mutex);
    return Used();
}

void PicturesAhead::WaitUntilDone() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [&] {
        return m_working == 0 && !NextToLookAt() && !NextToDecode(Serves::All) && m_dropped.empty();
    });
}

// Room for so many bytes more, if need be by what is wished after the picture at that place.
bool PicturesAhead::MakeRoom(std::size_t before, std::int64_t bytes) {
    std::int64_t missing = Used() + bytes - m_budget;
    Pictures givenUp;
    for (std::size_t i = m_pictures.size(); missing > 0 && i > before + 1; --i) {
        const auto& picture = m_pictures[i - 1];
        if (!picture->IsFree()) continue;
        givenUp.push_back(picture);
        missing -= picture->bytes;
    }
    if (missing > 0) return false;
    for (const auto& picture : givenUp) Drop(picture.get());
    return true;
}

// The nearest that is not begun and for which there is room.
std::shared_ptr<PicturesAhead::Picture> PicturesAhead::NextToDecode(Serves serves) {
    for (std::size_t i = 0; i < m_pictures.size(); ++i) {
        auto picture = m_pictures[i];
        const bool waits = picture->wished && picture->state == Picture::State::Waiting;
        if (!waits || picture->stop || (serves == Serves::Awaited && !picture->hurry)) continue;
        if (picture->hurry || MakeRoom(i, picture->bytes)) return picture;
    }
    return nullptr;
}

std::shared_ptr<PicturesAhead::Picture> PicturesAhead::NextToLookAt() const {
    const auto found = std::find_if(m_pictures.begin(), m_pictures.end(),
                                    [](const auto& each) { return each->wished && each->unseen; });
    return found == m_pictures.end() ? nullptr : *found;
}

void PicturesAhead::Work(Serves serves) {
    std::unique_lock lock(m_mutex);
    while (!m_ends) {
        if (!m_dropped.empty()) {
            Pictures dropped = std::move(m_dropped);
            m_dropped.clear();
            lock.unlock();
            dropped.clear();
            lock.lock();
            m_changed.notify_all();
        } else if (const auto picture = NextToDecode(serves)) {
            ++m_working;
            try {
                Decode(*picture, lock);
            } catch (...) {
                if (!lock.owns_lock()) lock.lock();
                picture->state = Picture::State::Failed;
                picture->refusal = ThrownText();
                picture->bytes = 0;
            }
            m_changed.notify_all();
            TellReady(*picture, lock);
            --m_working;
            m_changed.notify_all();
        } else if (const auto known = serves == Serves::All ? NextToLookAt() : nullptr) {
            ++m_working;
            LookAgain(known, lock);
            --m_working;
            m_changed.notify_all();
        } else {
            m_changed.wait(lock);
        }
    }
}

void PicturesAhead::TellReady(Picture& picture, std::unique_lock<std::mutex>& lock) {
    if (!picture.IsDone() || !picture.ready) return;
    const std::function<void()> ready = std::exchange(picture.ready, {});
    lock.unlock();
    ready();
    lock.lock();
}

// A wished picture whose file is another one by now waits to be decoded anew.
void PicturesAhead::LookAgain(const std::shared_ptr<Picture>& picture,
                              std::unique_lock<std::mutex>& lock) {
    picture->unseen = false;
    const FileLook before = picture->look;
    lock.unlock();
    const FileLook now = PictureLoader::LookAt(picture->wish.path);
    lock.lock();
    // Not where the program has set the times meanwhile, or the picture has been given away.
    const auto place = std::find(m_pictures.begin(), m_pictures.end(), picture);
    if (now == before || picture->look != before || place == m_pictures.end()) return;
    if (picture->taken || !picture->wished) return;
    auto anew = std::make_shared<Picture>();
    anew->wish = picture->wish;
    m_dropped.push_back(std::exchange(*place, std::move(anew)));
}

// The header tells what memory it takes; without room the picture goes back among those waiting,
// unless somebody waits for it.
void PicturesAhead::Decode(Picture& picture, std::unique_lock<std::mutex>& lock) {
    picture.state = Picture::State::Decoding;
    const PictureWish wish = picture.wish;
    const HeedsStop heeds(picture.stop);
    const MayHurry hurries(picture.hurry);
    lock.unlock();
    const FileLook look = PictureLoader::LookAt(wish.path);
    std::string error;
    auto source = Opened(wish.path, error);
    const std::int64_t needed = source ? BytesNeeded(*source, wish) : 0;
    lock.lock();
    picture.look = look;
    picture.bytes = 0;
    const auto place = std::find_if(m_pictures.begin(), m_pictures.end(),
                                    [&](const auto& each) { return each.get() == &picture; });
    const auto before = static_cast<std::size_t>(place - m_pictures.begin());
    const bool room = MakeRoom(before, needed) || picture.hurry;
    picture.bytes = needed;
    if (!picture.wished || !room || !source || m_ends) {
        picture.state = source ? Picture::State::Waiting : Picture::State::Failed;
        picture.refusal = std::move(error);
        if (!picture.wished) Drop(&picture);
        return;
    }
    lock.unlock();
    source = Decoded(std::move(source), wish, error);
    lock.lock();
    picture.refusal = std::move(error);
    Finish(picture, std::move(source));
}

void PicturesAhead::Finish(Picture& picture, std::shared_ptr<PictureSource> source) {
    picture.state = source ? Picture::State::Ready : Picture::State::Failed;
    picture.bytes = source ? source->BytesHeld() : 0;
    if (source) picture.look = source->Facts()->look;
    picture.source = std::move(source);
    // Some formats tell their size only when they are decoded.
    if (!picture.wished || (Used() > m_budget && !picture.hurry)) Drop(&picture);
}

} // namespace tarn
