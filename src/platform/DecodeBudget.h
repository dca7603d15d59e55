// The memory that decoding may take, in bytes, for all threads of the program together: pictures
// asked for by the window, those ahead, thumbnails, the list as pictures, clips, the console. What
// a decode takes is said by its format (imaging/DecodeCost) from the header, before anything is
// read; it is an estimate of the peak, pixels included. What is kept afterwards is counted by who
// keeps it.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace tarn {

// A quarter is for small decodes (a 32nd of all at most), which so never wait behind large ones;
// the rest goes to the large ones in the order in which they came. One that is larger than its part
// gets it alone. Threads that are no Worker never wait: the window may not stand still, and what it
// waits for may itself wait here.
class DecodeBudget {
public:
    explicit DecodeBudget(long long bytes) : m_mostSmall(bytes / 32), m_bytes(bytes) {}

    // False when the thread's work was stopped (common/stop_flag.h) while it waited; nothing is
    // taken then.
    bool Take(long long bytes);
    void GiveBack(long long bytes);

    long long Bytes() const;
    void SetBytes(long long bytes);
    long long Taken() const;

private:
    struct Part {
        long long taken = 0;
        std::deque<const void*> waiting; // in the order of coming
    };
    Part& PartFor(long long bytes) { return bytes <= m_mostSmall ? m_small : m_large; }
    bool HasRoom(const Part& part, long long bytes) const;

    const long long m_mostSmall;
    mutable std::mutex m_mutex; // guards the rest
    std::condition_variable m_changed;
    long long m_bytes;
    Part m_small;
    Part m_large;
};

// Of the program. Half of the machine's memory, unless SetDecodeMemory says otherwise.
DecodeBudget& TheDecodeBudget();

// Percent of the machine's memory, 5 to 90. Before anything is decoded.
void SetDecodeMemory(int percent);

// So many bytes of it as long as this lives.
class DecodeShare {
public:
    explicit DecodeShare(long long bytes) : m_bytes(bytes), m_held(TheDecodeBudget().Take(bytes)) {}
    ~DecodeShare() {
        if (m_held) TheDecodeBudget().GiveBack(m_bytes);
    }
    DecodeShare(const DecodeShare&) = delete;
    DecodeShare& operator=(const DecodeShare&) = delete;

    explicit operator bool() const { return m_held; }

private:
    long long m_bytes;
    bool m_held;
};

// While one lives, its thread passes all others once the flag is set: somebody waits for it.
class MayHurry {
public:
    explicit MayHurry(const std::atomic<bool>& flag);
    ~MayHurry();
    MayHurry(const MayHurry&) = delete;
    MayHurry& operator=(const MayHurry&) = delete;
};

} // namespace tarn
