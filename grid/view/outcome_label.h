// SPDX-License-Identifier: MIT

#pragma once

#include <QLabel>

namespace grid {

/// A line of plain text that tells what has become of the user's input; assistive technology hears of every
/// change.
class OutcomeLabel final : public QLabel {
    Q_OBJECT

public:
    explicit OutcomeLabel(QWidget* parent);

    void say(const QString& words);
    /// Keeps room for the outcome of a search, so that what stands beside does not move with it.
    void reserveWidth();
};

} // namespace grid
