// SPDX-License-Identifier: MIT

#include "app/status_bar.h"

#include "app/keyboard_state.h"
#include "ui/tight_layout.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>

#include <array>

namespace app {

namespace {

/// A key of the keyboard panel, with its captions.
struct KeySpec {
    const char* name = nullptr;
    QStringView active;
    QStringView inactive;
    bool shown = false;
};

constexpr std::array<KeySpec, 4> keys{{
    {"CapsLock", u"CAPS", u"CAPS", true},
    {"NumLock", u"NUM", u"NUM", true},
    {"ScrollLock", u"SCRL", u"SCRL", false},
    {"Insert", u"OVR", u"INS", true},
}};

constexpr int panelPadding = 4;

void setColor(QLabel& label, const QColor& color) {
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, color);
    label.setPalette(palette);
}

} // namespace

StatusBar::StatusBar(const QString& name, int height, std::span<const TextPanelSpec> panels,
                     const QFont& font, const QColor& fontColor, const Skin& skin, QWidget* parent)
    : QWidget(parent), skin_(skin) {
    setObjectName(name);
    setFixedHeight(height);
    setFont(font);
    QPalette colors = this->palette();
    colors.setColor(QPalette::WindowText, fontColor);
    setPalette(colors);
    auto* const layout = ui::makeTightLayout<QHBoxLayout>(this);
    for (const TextPanelSpec& panel : panels) {
        QLabel* const label = addLabel(QString::fromLatin1(panel.name), panel.fontColor);
        if (panel.width > 0) {
            label->setFixedWidth(panel.width);
        } else {
            label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        }
        layout->addWidget(label, panel.width > 0 ? 0 : 1);
        textPanels_.push_back(label);
    }
    for (const KeySpec& key : keys) {
        QLabel* const label = addLabel(name + QString::fromLatin1(key.name), skin_.inactiveText);
        label->setText(key.active.toString()); // the wider caption
        label->setFixedWidth(label->sizeHint().width());
        label->setHidden(!key.shown);
        layout->addWidget(label);
        keyIndicators_.push_back(label);
    }
    updateKeyboardState();
    QCoreApplication::instance()->installEventFilter(this);
}

QLabel* StatusBar::addLabel(const QString& name, const QColor& color) {
    auto* const label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(panelPadding, 0, panelPadding, 0);
    setColor(*label, color);
    return label;
}

void StatusBar::setText(int panel, const QString& text) {
    textPanels_.at(static_cast<std::size_t>(panel))->setText(text);
}

void StatusBar::setFontColor(int panel, const QColor& color) {
    setColor(*textPanels_.at(static_cast<std::size_t>(panel)), color);
}

void StatusBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::ToolTipBase));
    painter.setPen(QPen(skin_.separator, 0));
    painter.drawLine(rect().topLeft(), rect().topRight());
    for (const QLabel* label : findChildren<QLabel*>(Qt::FindDirectChildrenOnly)) {
        if (label->isHidden()) {
            continue;
        }
        const QRect panel = label->geometry();
        painter.drawLine(panel.topRight() + QPoint(0, skin_.separatorInset),
                         panel.bottomRight() - QPoint(0, skin_.separatorInset));
    }
}

bool StatusBar::eventFilter(QObject* watched, QEvent* event) {
    // A key reaches the window once, but every widget that it is offered to.
    if (watched->isWindowType()) {
        if (event->type() == QEvent::KeyPress) {
            const auto* const key = static_cast<QKeyEvent*>(event);
            overwriting_ ^= key->key() == Qt::Key_Insert &&
                            (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier &&
                            !key->isAutoRepeat();
        }
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease ||
            event->type() == QEvent::FocusIn) {
            updateKeyboardState();
        }
    }
    return QWidget::eventFilter(watched, event);
}

void StatusBar::updateKeyboardState() {
    const KeyboardState state = readKeyboardState();
    const std::array<bool, keys.size()> active{state.capsLock, state.numLock, state.scrollLock, overwriting_};
    for (std::size_t key = 0; key < keys.size(); ++key) {
        keyIndicators_[key]->setText((active[key] ? keys[key].active : keys[key].inactive).toString());
        setColor(*keyIndicators_[key],
                 active[key] ? palette().color(QPalette::WindowText) : skin_.inactiveText);
    }
}

} // namespace app
