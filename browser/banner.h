// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

namespace browser {

/// A label whose letters look raised from its background.
class Banner final : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace browser
