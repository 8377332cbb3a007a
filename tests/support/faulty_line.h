// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <thread>

namespace test {

/// What a line does to the bytes that the server answers, counted from the moment it is told to.
struct LineFault {
    enum class Kind {
        None,
        End,    ///< closes in order
        Reset,  ///< breaks off at once
        Delay,  ///< comes later by some hundredths of a second
        Garble, ///< come as others
    };

    Kind kind = Kind::None;
    std::size_t place = 0;  ///< bytes before the fault, which come through as they are
    std::size_t length = 0; ///< garbled bytes
    std::uint32_t seed = 0; ///< of what they become
};

/// A line to a Firebird server, with an address of its own. It forwards what both sides send, one connection
/// at a time, and does harm when it is told to. Where a garbled answer leaves both sides waiting for each
/// other, which no time-out of the client ends, the line ends after a moment.
class FaultyLine final {
public:
    /// A line without a server never answers. Throws std::system_error when the address is taken.
    FaultyLine(const char* address, const char* server);
    ~FaultyLine();
    FaultyLine(const FaultyLine&) = delete;
    FaultyLine& operator=(const FaultyLine&) = delete;

    /// Strikes once, in the present connection or in the next one; sets answeredBytes() to 0.
    void arm(const LineFault& fault);
    /// Bytes that the server has answered since arm().
    [[nodiscard]] std::size_t answeredBytes() const { return answered_; }
    [[nodiscard]] bool hasStruck() const { return hasStruck_; }

private:
    void serve(const std::stop_token& stop);
    void connect();
    void forwardRequest();
    void forwardAnswer();
    void hangUp();

    int listener_;
    int client_ = -1;
    int server_ = -1;
    const char* serverAddress_;
    std::mutex mutex_; // of the fault
    LineFault fault_;
    std::atomic<std::size_t> answered_ = 0;
    std::atomic<bool> hasStruck_ = false;
    int silence_ = 0; // ms since a garbled byte or since anything after it
    std::jthread thread_;
};

} // namespace test
