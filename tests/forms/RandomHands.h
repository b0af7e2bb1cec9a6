#pragma once
// Mouse, wheel and keys at random on one window, and files that are dropped on it.

#include "tests/support/Simulate.h"

#include <string>
#include <vector>

class QMenu;
class QWidget;

namespace Quillon {

class RandomHands {
public:
    explicit RandomHands(NoiseSource& dice) : Dice(dice) {}

    // One of the following, the first two most often. What was done, for a log.
    std::string DoOne(QWidget& window);

    std::string Click(QWidget& window);
    std::string Key(QWidget& window);
    std::string Drag(QWidget& window);
    std::string Wheel(QWidget& window);
    std::string Resize(QWidget& window);

    // A click on one of its items, a key, or out of it.
    void InMenu(QMenu& menu);
    // The same in what a box of choices or another control has popped up.
    void InPopup(QWidget& popup);

    // As a file manager drops them: the window may refuse.
    static void Drop(QWidget& window, const std::vector<std::string>& paths);

private:
    std::size_t Below(std::size_t n) { return static_cast<std::size_t>(Dice.Bits() % n); }
    int Within(int n) { return static_cast<int>(Below(static_cast<std::size_t>(n < 1 ? 1 : n))); }
    bool Chance(std::size_t percent) { return Below(100) < percent; }
    template <class List> auto OneOf(const List& list) {
        return *(std::begin(list) + Within(static_cast<int>(std::size(list))));
    }
    QWidget* Child(QWidget& window);

    NoiseSource& Dice;
};

} // namespace Quillon
