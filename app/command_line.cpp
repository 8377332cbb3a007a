// SPDX-License-Identifier: MIT

#include "app/command_line.h"

#include <string_view>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <cstdio>
#endif

namespace app {

namespace {

QString versionText() {
    return QStringLiteral("Tarvelo " TARVELO_VERSION "\n");
}

QString helpText() {
    return QStringLiteral("Просмотр сметных каталогов цен в базе данных Firebird.\n"
                          "\n"
                          "Запуск: Tarvelo [--help | --version]\n"
                          "\n"
                          "  -h, --help   показать эту справку\n"
                          "  --version    показать версию программы\n"
                          "\n"
                          "Без параметров открывается главное окно. Журнал ошибок и книги XLSX программа\n"
                          "пишет в свою папку.\n");
}

} // namespace

std::optional<QString> commandLineAnswer(int argc, const char* const* argv) {
    // All else is left to the framework, which has options of its own.
    for (int position = 1; position < argc; ++position) {
        const std::string_view argument = argv[position];
        if (argument == "--help" || argument == "-h") {
            return helpText();
        }
        if (argument == "--version") {
            return versionText();
        }
    }
    return std::nullopt;
}

#ifdef Q_OS_WIN

bool printText(const QString& text) {
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    if (GetFileType(output) == FILE_TYPE_UNKNOWN && AttachConsole(ATTACH_PARENT_PROCESS) != 0) {
        output = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                             nullptr, OPEN_EXISTING, 0, nullptr);
    }
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(output, &mode) != 0) {
        return WriteConsoleW(output, text.utf16(), static_cast<DWORD>(text.size()), &written, nullptr) != 0;
    }
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<DWORD>(bytes.size());
    return WriteFile(output, bytes.constData(), size, &written, nullptr) != 0 && written == size;
}

#else

bool printText(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return std::fputs(bytes.constData(), stdout) >= 0 && std::fflush(stdout) == 0;
}

#endif

} // namespace app
