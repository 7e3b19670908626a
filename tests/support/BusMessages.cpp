#include "support/BusMessages.h"

#include <array>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace orvantile::test {
namespace {

using platform::a11y::MessageHandle;

void put32(std::vector<std::uint8_t>& bytes, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) {
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

void align(std::vector<std::uint8_t>& bytes, std::size_t to) {
    bytes.resize((bytes.size() + to - 1) / to * to);
}

/// A method return in D-Bus's own format, numbered as the answer to the first call.
std::vector<std::uint8_t> messageBytes(const std::string& signature, std::span<const std::uint8_t> body) {
    std::vector<std::uint8_t> bytes{'l', 2, 1, 1};
    put32(bytes, static_cast<std::uint32_t>(body.size()));
    put32(bytes, 1);
    std::vector<std::uint8_t> fields{5, 1, 'u', 0};
    put32(fields, 1);
    fields.insert(fields.end(), {8, 1, 'g', 0, static_cast<std::uint8_t>(signature.size())});
    fields.insert(fields.end(), signature.begin(), signature.end());
    fields.push_back(0);
    put32(bytes, static_cast<std::uint32_t>(fields.size()));
    bytes.insert(bytes.end(), fields.begin(), fields.end());
    align(bytes, 8);
    bytes.insert(bytes.end(), body.begin(), body.end());
    return bytes;
}

} // namespace

BusMessages::BusMessages() {
    std::array<int, 2> ends{};
    sd_bus* created = nullptr;
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) < 0 ||
        sd_bus_new(&created) < 0) {
        throw std::runtime_error("no socket for bus messages");
    }
    bus.reset(created);
    peer = ends[1];
    sd_bus_set_fd(created, ends[0], ends[0]);
    sd_bus_start(created);
    // The bus side of the handshake.
    constexpr std::string_view greeting = "DATA\r\nOK 0123456789abcdef0123456789abcdef\r\nAGREE_UNIX_FD\r\n";
    if (write(peer, greeting.data(), greeting.size()) != std::ssize(greeting)) {
        throw std::runtime_error("no handshake for bus messages");
    }
    while (sd_bus_process(created, nullptr) > 0) {
    }
}

BusMessages::~BusMessages() {
    close(peer);
}

MessageHandle BusMessages::answer(const std::string& signature, std::span<const std::uint8_t> body) {
    const auto bytes = messageBytes(signature, body);
    if (write(peer, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        throw std::runtime_error("message too large for the socket");
    }
    sd_bus_message* message = nullptr;
    while (message == nullptr && sd_bus_process(bus.get(), &message) > 0) {
    }
    return MessageHandle(message);
}

MessageHandle BusMessages::blank() const {
    sd_bus_message* message = nullptr;
    sd_bus_message_new(bus.get(), &message, SD_BUS_MESSAGE_METHOD_CALL);
    return MessageHandle(message);
}

MessageHandle BusMessages::sealed(MessageHandle message) {
    sd_bus_message_seal(message.get(), 1, 0);
    sd_bus_message_rewind(message.get(), 1);
    return message;
}

} // namespace orvantile::test
