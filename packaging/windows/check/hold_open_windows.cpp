// SPDX-License-Identifier: MIT

// Holds a file open, as a spreadsheet does with its document: others may read it, not write and not rename
// it. Usage: hold_open FILE   until its input ends
#include <cstdio>

#include <windows.h>

int wmain(int argc, wchar_t** argv) {
    if (argc != 2) {
        return 2;
    }
    const HANDLE file = CreateFileW(argv[1], GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        std::fprintf(stderr, "cannot be opened: error %lu\n", GetLastError());
        return 1;
    }
    std::puts("open");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    CloseHandle(file);
    return 0;
}
