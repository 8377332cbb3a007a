// SPDX-License-Identifier: MIT

#pragma once

class QWidget;

namespace browser {

/// What the catalog browser needs of the window that it is shown in.
class BrowserHost {
public:
    virtual ~BrowserHost() = default;

    /// The panel that the browser fills.
    [[nodiscard]] virtual QWidget& clientPanel() = 0;

    /// Tells that no browser window is open any more.
    virtual void clearOpenBrowserMarker() = 0;
};

} // namespace browser
