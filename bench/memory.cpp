// SPDX-License-Identifier: MIT

#include "bench/memory.h"

#include <fstream>
#include <stdexcept>
#include <string>

#include <malloc.h>

namespace bench {

namespace {

/// A figure in megabytes of /proc/self/status.
double statusMegabytes(const std::string& name) {
    constexpr double kilobytesPerMegabyte = 1024.0;
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name + ":")) {
            return std::stod(line.substr(name.size() + 1)) / kilobytesPerMegabyte;
        }
    }
    throw std::runtime_error("/proc/self/status does not tell " + name);
}

} // namespace

double residentMegabytes() {
    malloc_trim(0);
    return statusMegabytes("VmRSS");
}

void resetPeak() {
    std::ofstream file("/proc/self/clear_refs");
    // 5 stands for the peak, see proc(5).
    if (!(file << 5 << std::flush)) {
        throw std::runtime_error("the memory peak cannot be reset");
    }
}

double peakMegabytes() {
    return statusMegabytes("VmHWM");
}

} // namespace bench
