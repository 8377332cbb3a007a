// SPDX-License-Identifier: MIT

#pragma once

#include "app/style.h"

#include <QLabel>
#include <QWidget>

#include <span>
#include <vector>

namespace app {

/// A text panel of a status bar.
struct TextPanelSpec {
    const char* name = "";
    int width = 0; ///< in pixels; 0 takes what the others leave
    QColor fontColor;
};

/// A status bar of text panels followed by one that shows the state of the keyboard.
class StatusBar final : public QWidget {
    Q_OBJECT

public:
    StatusBar(const QString& name, int height, std::span<const TextPanelSpec> panels, const QFont& font,
              const QColor& fontColor, const Skin& skin, QWidget* parent);

    /// Text panel by position, from 0.
    void setText(int panel, const QString& text);
    void setFontColor(int panel, const QColor& color);

    /// The skin that the bar is drawn with, by its name.
    [[nodiscard]] const QString& skinName() const { return skin_.name; }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel* addLabel(const QString& name, const QColor& color);
    void updateKeyboardState();

    Skin skin_;
    std::vector<QLabel*> textPanels_;
    std::vector<QLabel*> keyIndicators_; // one for each key
    bool overwriting_ = false;
};

} // namespace app
