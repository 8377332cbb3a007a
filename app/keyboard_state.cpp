// SPDX-License-Identifier: MIT

#include "app/keyboard_state.h"

#include <QGuiApplication>

#if defined(TARVELO_X11)
#include <X11/XKBlib.h>
#elif defined(Q_OS_WIN)
#include <windows.h>
#endif

namespace app {

KeyboardState readKeyboardState() {
#if defined(TARVELO_X11)
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    Display* const display = x11 ? x11->display() : nullptr;
    if (display) {
        // Bits of the core keyboard's indicators, in the order that the X keyboard rules give them.
        unsigned indicators = 0;
        XkbGetIndicatorState(display, XkbUseCoreKbd, &indicators);
        return {(indicators & 1U) != 0, (indicators & 2U) != 0, (indicators & 4U) != 0};
    }
#elif defined(Q_OS_WIN)
    const auto isOn = [](int key) { return (GetKeyState(key) & 1) != 0; };
    return {isOn(VK_CAPITAL), isOn(VK_NUMLOCK), isOn(VK_SCROLL)};
#endif
    return {};
}

} // namespace app
