// SPDX-License-Identifier: MIT

#include "support/faulty_line.h"

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <random>
#include <span>
#include <system_error>

namespace test {

namespace {

constexpr int pollTime = 10;        // ms
constexpr int longestSilence = 150; // ms
constexpr std::chrono::milliseconds delay(40);

using Kind = LineFault::Kind;

/// A socket that `use` (bind or connect) ties to the port of databases on an address.
template <typename Use>
int socketAt(const char* address, Use use) {
    const int descriptor = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int on = 1;
    ::setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    ::setsockopt(descriptor, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_port = htons(3050);
    ::inet_pton(AF_INET, address, &place.sin_addr);
    if (use(descriptor, reinterpret_cast<const sockaddr*>(&place), sizeof place) != 0) {
        const int reason = errno;
        ::close(descriptor);
        throw std::system_error(reason, std::generic_category(), address);
    }
    return descriptor;
}

/// What is lost because the receiver is gone, the next reading tells.
void sendAll(int descriptor, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(descriptor, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0) {
            return;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(sent));
    }
}

} // namespace

FaultyLine::FaultyLine(const char* address, const char* server)
    : listener_(socketAt(address, ::bind)), serverAddress_(server) {
    ::listen(listener_, 4);
    if (server) {
        thread_ = std::jthread([this](const std::stop_token& stop) { serve(stop); });
    }
}

FaultyLine::~FaultyLine() {
    thread_ = {};
    hangUp();
    ::close(listener_);
}

void FaultyLine::arm(const LineFault& fault) {
    const std::lock_guard lock(mutex_);
    fault_ = fault;
    answered_ = 0;
    hasStruck_ = false;
}

void FaultyLine::serve(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        std::array<pollfd, 3> waiting{{{listener_, POLLIN, 0}, {client_, POLLIN, 0}, {server_, POLLIN, 0}}};
        const int ready = ::poll(waiting.data(), waiting.size(), pollTime);
        const std::lock_guard lock(mutex_);
        silence_ = ready > 0 || fault_.kind != Kind::Garble || !hasStruck_ ? 0 : silence_ + pollTime;
        if (waiting[0].revents != 0) {
            connect();
        } else if (waiting[1].revents != 0) {
            forwardRequest();
        } else if (waiting[2].revents != 0) {
            forwardAnswer();
        } else if (silence_ > longestSilence) {
            hangUp();
        }
    }
}

void FaultyLine::connect() {
    hangUp();
    if (hasStruck_) {
        fault_ = {};
    }
    client_ = ::accept(listener_, nullptr, nullptr);
    server_ = socketAt(serverAddress_, ::connect);
}

void FaultyLine::forwardRequest() {
    std::array<std::uint8_t, 65536> bytes{};
    const ssize_t count = ::recv(client_, bytes.data(), bytes.size(), 0);
    if (count <= 0) {
        hangUp();
        return;
    }
    sendAll(server_, std::span(bytes).first(static_cast<std::size_t>(count)));
}

void FaultyLine::forwardAnswer() {
    std::array<std::uint8_t, 65536> bytes{};
    const ssize_t count = ::recv(server_, bytes.data(), bytes.size(), 0);
    if (count <= 0) {
        hangUp();
        return;
    }
    const std::span answer = std::span(bytes).first(static_cast<std::size_t>(count));
    const std::size_t before = answered_;
    answered_ += answer.size();
    if (fault_.kind == Kind::None || hasStruck_ || answered_ <= fault_.place) {
        sendAll(client_, answer);
        return;
    }
    hasStruck_ = true;
    const std::span rest = answer.subspan(fault_.place - before);
    sendAll(client_, answer.first(fault_.place - before));
    switch (fault_.kind) {
    case Kind::Reset: {
        const linger atOnce{1, 0};
        ::setsockopt(client_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
        [[fallthrough]];
    }
    case Kind::End:
        hangUp();
        return;
    case Kind::Garble: {
        std::mt19937 random(fault_.seed);
        // By another value each, so that no byte stays what it was.
        std::ranges::for_each(rest.first(std::min(rest.size(), fault_.length)), [&](std::uint8_t& byte) {
            byte = static_cast<std::uint8_t>(byte ^ (1 + random() % 255));
        });
        break;
    }
    case Kind::Delay:
        std::this_thread::sleep_for(delay);
        break;
    case Kind::None:
        break;
    }
    sendAll(client_, rest);
}

void FaultyLine::hangUp() {
    for (int* const descriptor : {&client_, &server_}) {
        if (*descriptor >= 0) {
            ::close(*descriptor);
            *descriptor = -1;
        }
    }
}

} // namespace test
