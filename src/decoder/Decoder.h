// One decoder process, from the program's side. For one thread at a time.
#pragma once

#include "decoder/Protocol.h"
#include "decoder/SharedMemory.h"

#include <memory>
#include <string>

#include <sys/types.h>

namespace tarn {

struct DecoderAnswer {
    std::string error; // valid UTF-8
    std::array<std::int64_t, 4> numbers{};
    std::string bytes;
    SharedMemory memory;
};

struct Packet;

// What a packet of the process says; false where it is no answer. Its descriptor stays open.
bool AnswerFrom(const Packet& packet, DecoderAnswer& answer);

// Whether this thread gives way to the program's first one.
bool IsLowThread();

class Decoder {
public:
    // Null where it cannot be started. It is not waited for.
    static std::unique_ptr<Decoder> Start(const std::string& program, DecoderKind kind);

    ~Decoder(); // ends it
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    // Died: or answered what cannot be. Stopped: this thread's work is not wanted any more. But for
    // Answered it is of no more use.
    enum class End { Answered, Died, TooLate, Stopped };
    End Ask(const DecoderRequest& request, int file, int seconds, DecoderAnswer& answer);

    // Takes its greeting if it has come; it is not waited for.
    bool LookForHello();
    bool IsAlive() const;
    bool HasGreeted() const { return m_greeted; }
    std::uint32_t Rights() const { return m_rights; }
    DecoderKind Kind() const { return m_kind; }
    // It has the priority of the thread that started it, for life.
    bool IsLow() const { return m_low; }

private:
    Decoder(DecoderKind kind, int socket, pid_t process)
        : m_kind(kind), m_socket(socket), m_process(process) {}
    End Wait(std::int64_t until) const;
    bool TakeHello();
    bool TakeAnswer(DecoderAnswer& answer);

    DecoderKind m_kind;
    int m_socket;
    pid_t m_process;
    bool m_low = IsLowThread();
    bool m_greeted = false;
    std::uint32_t m_rights = 0;
};

} // namespace tarn
