// SPDX-License-Identifier: MIT

#include "app/style.h"

#include "base/error.h"
#include "ui/application.h"

#include <QMetaEnum>
#include <QPalette>
#include <QProxyStyle>
#include <QSettings>
#include <QStyleOptionMenuItem>

#include <array>

namespace app {

namespace {

/// Standard buttons without icons, and a start without image files.
class PlainButtonStyle final : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override {
        // The window is never narrower than its menu and tool bar, so the button that would lead to the rest
        // of them is never seen; but its image file would load the image plug-ins at every start.
        return icon == SP_ToolBarHorizontalExtensionButton ? QIcon()
                                                           : QProxyStyle::standardIcon(icon, option, widget);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (element == CE_MenuBarItem && item && item->state.testFlag(State_Selected)) {
            // Marked under the pointer and the keyboard too: an item without a menu is never seen pressed.
            QStyleOptionMenuItem marked(*item);
            marked.state |= State_Sunken;
            QProxyStyle::drawControl(element, &marked, painter, widget);
            return;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, returned);
    }
};

/// What a style must colour.
constexpr std::array styledRoles{
    QPalette::Window,
    QPalette::WindowText,
    QPalette::Base,
    QPalette::AlternateBase,
    QPalette::ToolTipBase,
    QPalette::ToolTipText,
    QPalette::PlaceholderText,
    QPalette::Text,
    QPalette::Button,
    QPalette::ButtonText,
    QPalette::Light,
    QPalette::Midlight,
    QPalette::Mid,
    QPalette::Dark,
    QPalette::Highlight,
    QPalette::HighlightedText,
};

QColor requiredColor(const QSettings& file, const QString& key) {
    const QColor color(file.value(key).toString());
    if (!color.isValid()) {
        throw base::ResourceError(file.fileName(), QStringLiteral("нет цвета «%1» или он неверен").arg(key));
    }
    return color;
}

QPalette loadPalette(const QString& resource) {
    const QSettings file(resource, QSettings::IniFormat);
    QPalette palette;
    const auto names = QMetaEnum::fromType<QPalette::ColorRole>();
    for (const QPalette::ColorRole role : styledRoles) {
        const QLatin1StringView name(names.valueToKey(role));
        palette.setColor(role, requiredColor(file, QStringLiteral("colors/") + name));
    }
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role,
                         requiredColor(file, QStringLiteral("colors/DisabledText")));
    }
    return palette;
}

} // namespace

bool trySetStyle(const QString& name) {
    try {
        const QPalette palette = loadPalette(QStringLiteral(":/style/") + name);
        QApplication::setStyle(new PlainButtonStyle(QStringLiteral("Fusion")));
        QApplication::setPalette(palette);
        return true;
    } catch (const base::ResourceError& error) {
        ui::Application::showException(error);
        return false;
    }
}

Skin loadSkin(const QString& name) {
    const QSettings file(QStringLiteral(":/skin/") + name, QSettings::IniFormat);
    const QString skinName = file.value(QStringLiteral("skin/name")).toString();
    bool hasInset = false;
    const int inset = file.value(QStringLiteral("statusBar/separatorInset")).toInt(&hasInset);
    if (skinName.isEmpty() || !hasInset) {
        throw base::ResourceError(file.fileName(), QStringLiteral("нет имени или отступа разделителей"));
    }
    return {skinName, requiredColor(file, QStringLiteral("statusBar/separator")), inset,
            requiredColor(file, QStringLiteral("statusBar/inactiveText"))};
}

} // namespace app
