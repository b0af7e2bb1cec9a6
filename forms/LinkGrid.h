#pragma once
// The rows of a form that ties sets to others: number, name and box of each set.

#include "forms/Pieces.h"
#include "models/forms/LinkBoxes.h"

namespace Quillon {

// What a form does with the box of a set.
struct LinkHandlers {
    LinkBoxes& (*Boxes)();
    bool (*IsShown)(); // a box that is left with its window asks nothing
    void (*GotFocus)(SetNo set);
    int (*KeyPress)(SetNo set, int key);
    void (*LostFocus)(SetNo set);
};

// One line for each set, below line 0, in which the two heads stand.
inline QGridLayout* LinkGrid(Binder& bind, ControlRef xHead, ControlRef yHead, const LinkHandlers& handlers) {
    auto* grid = new QGridLayout;
    const auto head = [&](ControlRef control, int column, int columns) {
        QLabel* label = MakeHead(bind, std::move(control));
        label->setAlignment(Qt::AlignLeft);
        grid->addWidget(label, 0, column, 1, columns);
    };
    head(std::move(xHead), 0, 2);
    head(std::move(yHead), 2, 1);
    const LinkHandlers& h = handlers;
    for (std::size_t i = 0; i < h.Boxes().SetNumber.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        const SetNo set(line);
        const auto boxes = h.Boxes;
        grid->addWidget(RightLabel(bind, [boxes, i]() -> Control& { return boxes().SetNumber[i]; }), line, 0);
        grid->addWidget(MakeLabel(bind, [boxes, i]() -> Control& { return boxes().SetName[i]; }), line, 1);
        FieldEdit* link = MakeField(
            bind, [boxes, i]() -> Control& { return boxes().LinkNum[i]; },
            {[h, set] { h.GotFocus(set); },
             [h, set](int key) { return h.KeyPress(set, key); },
             [h, set] {
                 if (h.IsShown()) h.LostFocus(set);
             },
             {}},
            6);
        link->setFixedWidth(link->minimumWidth());
        grid->addWidget(link, line, 2);
    }
    grid->setHorizontalSpacing(12);
    grid->setColumnStretch(3, 1); // the links stay beside the names of their sets
    grid->setRowStretch(grid->rowCount(), 1);
    return grid;
}

} // namespace Quillon
