// SPDX-License-Identifier: MIT

#include "bench/keystrokes.h"

#include "bench/screen.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <algorithm>

namespace bench {

namespace {

struct Keystroke {
    int key;
    QString character;
};

std::vector<Keystroke> keystrokes(const QString& text) {
    std::vector<Keystroke> strokes;
    for (const QChar character : text) {
        strokes.push_back({0, character});
    }
    strokes.insert(strokes.end(), static_cast<std::size_t>(text.size()), {Qt::Key_Backspace, QString()});
    return strokes;
}

void type(QWidget& target, const Keystroke& stroke) {
    for (const QEvent::Type kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(kind, stroke.key, Qt::NoModifier, stroke.character);
        QCoreApplication::sendEvent(&target, &event);
    }
}

} // namespace

Medians worstKeystroke(int rounds, QLineEdit& field, QWidget& painted, const QString& text,
                       const std::function<void(const QString& typed)>& bare) {
    const std::vector<Keystroke> strokes = keystrokes(text);
    std::vector<std::vector<double>> oursTaken(strokes.size());
    std::vector<std::vector<double>> bareTaken(strokes.size());
    for (int round = 0; round <= rounds; ++round) {
        for (std::size_t index = 0; index < strokes.size(); ++index) {
            const double taken = timeUntilPainted(painted, [&] { type(field, strokes[index]); });
            const double byBare = timeOf([&] { bare(field.text()); });
            if (round > 0) {
                oursTaken[index].push_back(taken);
                bareTaken[index].push_back(byBare);
            }
        }
        requireSame("characters left", field.text().size(), 0);
    }
    std::vector<Medians> each;
    for (std::size_t index = 0; index < strokes.size(); ++index) {
        each.push_back({median(oursTaken[index]), median(bareTaken[index])});
    }
    return *std::ranges::max_element(each, {}, &Medians::ours);
}

} // namespace bench
