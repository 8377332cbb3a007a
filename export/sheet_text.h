#pragma once

#include <string_view>
#include <vector>

namespace exporter {

/// Turns texts from WIN1251 into what stands for them in a sheet: UTF-8 in which control characters, and what
/// looks like one escaped, are escaped as _xHHHH_. Keeps its buffer from text to text.
class SheetText final {
public:
    /// Ends in a null character; valid until the next call.
    [[nodiscard]] const char* encode(std::string_view win1251);

private:
    std::vector<char> buffer_;
};

} // namespace exporter
