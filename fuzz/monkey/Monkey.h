// Clicks, types, drags, opens, closes and saves at random in whatever windows the program shows.
#pragma once

#include "fuzz/monkey/Chaos.h"

#include <QObject>
#include <QWidget>

#include <random>
#include <string>

class QFileDialog;

namespace blockhouse {

class Watchdog;

class Monkey : public QObject {
public:
    // All must outlive the monkey. Acts as soon as events are served; after stop() it only ends dialogs.
    Monkey(std::mt19937& random, Chaos& chaos, Watchdog& watchdog);

    void stop() { stopped_ = true; }

    [[nodiscard]] int actions() const { return actions_; }

private:
    using Act = std::string (Monkey::*)();

    void actSoon();
    void act();
    void endDialogs();
    void letGo();
    std::string actOnDialog(QWidget& dialog);
    std::string actOnFileDialog(QFileDialog& dialog);

    std::string click();
    std::string drag();
    std::string turnWheel();
    std::string type();
    std::string pressKey();
    std::string chooseMenuItem();
    std::string openFromTree();
    std::string openListed();
    std::string changeWindow();
    std::string choosePlace();
    std::string walkFolders();

    std::string strike() { return chaos_.strike(); }

    [[nodiscard]] std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

    template <typename List>
    auto oneOf(const List& list) {
        return list.at(static_cast<qsizetype>(below(static_cast<std::size_t>(list.size()))));
    }

    int someRow(int rows) { return static_cast<int>(below(static_cast<std::size_t>(rows))); }

    [[nodiscard]] QWidget* someWindow();
    [[nodiscard]] QWidget* someWidget();
    [[nodiscard]] QPoint somePointIn(const QWidget& widget);
    [[nodiscard]] bool mayLeaveTheWorkspace(const QWidget* widget) const;

    std::mt19937& random_;
    Chaos& chaos_;
    Watchdog& watchdog_;
    bool stopped_ = false;
    int actions_ = 0;
    int depth_ = 0; // actions under way, one inside the other's event loop
};

} // namespace blockhouse
