// SPDX-License-Identifier: MIT

#include "db/client_library.h"

#include "base/win1251.h"

#include <QStringDecoder>

#include <array>

#ifndef Q_OS_WIN
#include <csignal>
#endif

namespace db {

namespace {

/// Keeps what the process does at SIGINT and SIGTERM over the client's first attachment. The client would
/// answer them by shutting itself down under the program, which would live on without it.
class SignalKeeper final {
public:
#ifdef Q_OS_WIN
    SignalKeeper() noexcept = default;
#else
    SignalKeeper() noexcept {
        sigaction(SIGINT, nullptr, &interrupt_);
        sigaction(SIGTERM, nullptr, &terminate_);
    }
    ~SignalKeeper() {
        sigaction(SIGINT, &interrupt_, nullptr);
        sigaction(SIGTERM, &terminate_, nullptr);
    }

private:
    struct sigaction interrupt_ = {};
    struct sigaction terminate_ = {};
#endif
    Q_DISABLE_COPY_MOVE(SignalKeeper)
};

/// The server names its own objects in the connection's character set, the client its files in the system's.
QString decodeStatusText(const char* text) {
    const QByteArrayView bytes(text);
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString decoded = utf8.decode(bytes);
    return utf8.hasError() ? base::win1251::decode({bytes.data(), static_cast<std::size_t>(bytes.size())})
                           : decoded;
}

std::vector<int> errorCodes(const intptr_t* vector) {
    std::vector<int> codes;
    while (*vector != isc_arg_end) {
        if (*vector == isc_arg_gds && vector[1] != 0) {
            codes.push_back(static_cast<int>(vector[1]));
        }
        vector += *vector == isc_arg_cstring ? 3 : 2;
    }
    return codes;
}

} // namespace

ClientLibrary::ClientLibrary(QStringList names) : names_(std::move(names)) {}

QStringList ClientLibrary::defaultNames() {
#ifdef Q_OS_WIN64
    return {QStringLiteral("gds64.dll"), QStringLiteral("fbclient.dll")};
#elif defined(Q_OS_WIN)
    return {QStringLiteral("gds32.dll"), QStringLiteral("fbclient.dll")};
#else
    return {QStringLiteral("libfbclient.so.2"), QStringLiteral("libfbclient.so")};
#endif
}

void ClientLibrary::load() {
    if (provider_) {
        return;
    }
    using MasterFunction = Firebird::IMaster*(ISC_EXPORT*)();
    for (const QString& name : names_) {
        library_.setFileName(name);
        if (!library_.load()) {
            continue;
        }
        const auto master = reinterpret_cast<MasterFunction>(library_.resolve("fb_get_master_interface"));
        if (!master) {
            throw DatabaseError(
                QStringLiteral("Клиентская библиотека «%1» слишком старая: нужен Firebird 3.0")
                    .arg(library_.fileName()));
        }
        master_ = master();
        provider_.reset(master_->getDispatcher());
        keepSignals();
        return;
    }
    throw DatabaseError(QStringLiteral("Клиенская библиотека InterBase gds32.dll не обнаружена. "
                                       "Пожалуйста, установите клиента InterBase!"));
}

void ClientLibrary::keepSignals() const {
    [[maybe_unused]] const SignalKeeper signalsStay;
    // Whatever the client attaches to first makes it take the signals over. A parameter block without a
    // version that it knows is refused before any address is looked at, so that no signal is lost while a
    // server is slow to answer.
    constexpr unsigned char unknownBlock[] = {0};
    try {
        run([&](auto* status) {
            Handle<Firebird::IAttachment>(
                provider().attachDatabase(status, "", sizeof unknownBlock, unknownBlock));
        });
    } catch (const DatabaseError&) {
        // As expected: there is no such block.
    }
}

DatabaseError ClientLibrary::databaseError(Firebird::IStatus& status) const {
    std::array<char, 4096> text{};
    master_->getUtilInterface()->formatStatus(text.data(), static_cast<unsigned>(text.size() - 1), &status);
    const QString message = decodeStatusText(text.data());
    // A garbled answer may report an error that has no words.
    return DatabaseError(message.isEmpty() ? QStringLiteral("Ошибка базы данных без описания") : message,
                         errorCodes(status.getErrors()));
}

} // namespace db
