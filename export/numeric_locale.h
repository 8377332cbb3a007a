#pragma once

#include <clocale>
#include <string>

namespace exporter {

/// While it exists, the C library prints numbers with a point. The workbook library relies on that, and the
/// program runs in the user's locale.
class NumericLocale final {
public:
    NumericLocale() : saved_(std::setlocale(LC_NUMERIC, nullptr)) { std::setlocale(LC_NUMERIC, "C"); }
    ~NumericLocale() { std::setlocale(LC_NUMERIC, saved_.c_str()); }
    NumericLocale(const NumericLocale&) = delete;
    NumericLocale& operator=(const NumericLocale&) = delete;

private:
    std::string saved_;
};

} // namespace exporter
