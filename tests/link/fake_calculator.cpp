// A TI-83 at the far end of one of libticables' virtual VTi links, for
// sending without hardware: it takes one variable the way the calculator's
// silent link does, acknowledging each packet, and keeps what it got.
//   fake_calculator PORT DATA
// opens VTi port PORT, prints "ready", waits for one variable, writes its
// data to the file DATA and prints "NAME TYPE SIZE"; or prints what broke
// the protocol and exits 1. It runs as a process of its own, as a
// calculator would: libticables' VTi ends cannot share a process, since
// closing one unmaps the other's buffers.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include <glib.h>

#define restrict __restrict__
#include <tilp2/ticables.h>
#undef restrict

namespace {
// Machine IDs and commands of the TI-83's link protocol.
constexpr std::uint8_t kFromComputer = 0x03, kFromTi83 = 0x83;
constexpr std::uint8_t kVar = 0x06, kCts = 0x09, kData = 0x15, kAck = 0x56, kEot = 0x92, kRts = 0xC9;

CableHandle* wire = nullptr;

struct Packet {
    std::uint8_t machine = 0, command = 0;
    std::string data;
};

// A packet with its data when its command carries some; false on a timeout or a bad checksum.
bool Receive(Packet& packet) {
    std::uint8_t head[4];
    if (ticables_cable_recv(wire, head, 4)) return false;
    packet = {head[0], head[1], {}};
    if (packet.command == kAck || packet.command == kCts || packet.command == kEot) return true;
    std::vector<std::uint8_t> body(static_cast<std::size_t>(head[2] | head[3] << 8) + 2);
    if (ticables_cable_recv(wire, body.data(), static_cast<std::uint32_t>(body.size()))) return false;
    unsigned sum = 0;
    for (std::size_t i = 0; i + 2 < body.size(); ++i) sum += body[i];
    packet.data.assign(body.begin(), body.end() - 2);
    return (sum & 0xFFFF) == static_cast<unsigned>(body[body.size() - 2] | body[body.size() - 1] << 8);
}

void Reply(std::uint8_t command) {
    std::uint8_t packet[4] = {kFromTi83, command, 0, 0};
    ticables_cable_send(wire, packet, 4);
}

int Fault(const char* what) {
    std::printf("fault: %s\n", what);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    // The library's warnings on closing a wire whose far end has gone already.
    g_log_set_handler("ticables", G_LOG_LEVEL_MASK, [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {}, nullptr);
    ticables_library_init();
    wire = ticables_handle_new(CABLE_VTI, CablePort(std::atoi(argv[1])));
    ticables_options_set_timeout(wire, 30);
    if (ticables_cable_open(wire)) return Fault("the link would not open");
    std::puts("ready");
    std::fflush(stdout);
    int type = -1;
    std::string name, data;
    for (Packet packet;;) {
        if (!Receive(packet)) return Fault("no packet, or a bad checksum");
        if (packet.machine != kFromComputer) return Fault("a packet not for a TI-83");
        if (packet.command == kRts || packet.command == kVar) {  // size, type, name
            if (packet.data.size() != 11) return Fault("a variable header of the wrong size");
            type = static_cast<std::uint8_t>(packet.data[2]);
            name = packet.data.substr(3, packet.data.find('\0', 3) - 3);
            Reply(kAck);
            Reply(kCts);
        } else if (packet.command == kData) {
            data += packet.data;
            Reply(kAck);
        } else if (packet.command == kEot) {
            Reply(kAck);
            break;
        } else if (packet.command != kAck) {
            return Fault("an unexpected command");
        }
    }
    ticables_cable_close(wire);
    std::ofstream(argv[2], std::ios::binary) << data;
    std::printf("%s %d %zu\n", name.c_str(), type, data.size());
    return 0;
}
