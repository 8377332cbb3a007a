// SPDX-License-Identifier: MIT

#pragma once

#include "support/catalog_window.h"
#include "support/firebird_server.h"
#include "support/random.h"

#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <cstdint>
#include <span>

class QWidget;
class TTERForm;

namespace grid {
class RowView;
} // namespace grid

namespace test {

/// A user who does whatever comes to mind, over a server of his own.
class User final {
public:
    /// Whether his server dies now and then.
    enum class Server : std::uint8_t { Reliable, Dying };

    /// `lifetime`: seconds that he works at most.
    User(std::uint32_t seed, const QString& catalog, Server reliability, int lifetime);

    [[nodiscard]] const QString& address() const { return server_.address(); }

    /// Does one thing, with all that follows from it, and expects everything to be in order afterwards.
    void act();
    /// Returns to where he began: the edition ТЕР with the first region and period, nothing filtered or
    /// sorted.
    void startOver();

    /// What he did of late, the last thing last.
    [[nodiscard]] QString lastActions() const;
    /// Changes of region, period, tab and edition up to now.
    [[nodiscard]] int changes() const { return changes_; }
    /// Errors that he was told of up to now.
    [[nodiscard]] int errors() const { return errors_; }

private:
    struct Action {
        int weight = 0;
        const char* name = nullptr;
        void (User::*take)() = nullptr;
        bool needsBrowser = true;
        bool isChange = false;
    };
    static const std::span<const Action> actions;

    [[nodiscard]] const Action& randomAction();
    void take(const Action& action);
    void answerDialog();
    template <typename Detail>
    const Detail& noted(const Detail& detail);
    [[nodiscard]] grid::RowView& view();
    [[nodiscard]] int randomColumn();
    [[nodiscard]] QString randomText();
    void press(QWidget& widget, QKeyCombination key);
    void chooseIn(QComboBox& selector, const QStringList& others);

    void chooseRegion();
    void choosePeriod();
    void turnPage();
    void pressKey();
    void clickHeader();
    void arrangeColumns();
    void chooseFromMenu();
    void filter();
    void clearFilter();
    void find();
    void readAgain();
    void chooseEdition();
    void exportTable();
    void resize();
    void close();
    void connect();
    void makeTrouble();
    void recover();

    void expectOrder();
    void expectNoOtherMessages();
    void expectShownIsCurrent();
    void expectServerAgrees();

    Random random_;
    Server reliability_;
    FirebirdServer server_;
    CatalogWindow window_;
    QTimer dialogs_;
    QStringList actions_, messages_;
    int taken_ = 0;
    int changes_ = 0;
    int errors_ = 0;
    bool refused_ = false;    // the last workbook's name is one that no file can have
    bool isReliable_ = true;  // the connection is not lost
    bool wasReliable_ = true; // nor has it been since the last look
    bool isDead_ = false;
    QPointer<TTERForm> bereaved_; // the browser whose connection was lost
    int trouble_ = 0;             // actions until the server is back
};

} // namespace test
