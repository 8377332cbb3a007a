#pragma once

namespace ui {

enum class ScreenCursor { Default, Hourglass };

/// The cursor that is shown everywhere on the program's windows.
void setScreenCursor(ScreenCursor cursor);
[[nodiscard]] ScreenCursor screenCursor();

/// Shows the hourglass while at least one such object exists; then the cursor from before comes back.
class NestedHourglass final {
public:
    NestedHourglass();
    ~NestedHourglass();
    NestedHourglass(const NestedHourglass&) = delete;
    NestedHourglass& operator=(const NestedHourglass&) = delete;

private:
    static inline int count_ = 0;
    static inline ScreenCursor saved_ = ScreenCursor::Default;
};

/// Shows the hourglass and, when it goes, the default cursor, whatever was shown before.
class HourglassThenDefault final {
public:
    HourglassThenDefault() { setScreenCursor(ScreenCursor::Hourglass); }
    ~HourglassThenDefault() { setScreenCursor(ScreenCursor::Default); }
    HourglassThenDefault(const HourglassThenDefault&) = delete;
    HourglassThenDefault& operator=(const HourglassThenDefault&) = delete;
};

} // namespace ui
