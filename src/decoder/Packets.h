// Packets on the socket between the program and its decoder process, with a descriptor each.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace tarn {

struct Packet {
    bool ends = true; // the other side is gone, or what came is no packet of ours
    std::string bytes;
    int descriptor = -1; // the receiver's to close
};

// `descriptor` below 0 for none. False where the other side is gone.
bool SendPacket(int socket, std::initializer_list<std::string_view> parts, int descriptor);

// Waits for one.
Packet ReceivePacket(int socket, std::size_t most);

} // namespace tarn
