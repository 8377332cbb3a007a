// SPDX-License-Identifier: MIT

#pragma once

#include <QLayout>

namespace ui {

/// A layout of `parent` without margins and gaps.
template <typename Layout>
Layout* makeTightLayout(QWidget* parent) {
    auto* const layout = new Layout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

} // namespace ui
