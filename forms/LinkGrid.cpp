#include "forms/LinkGrid.h"

namespace Quillon {

namespace {

void AddHead(Binder& bind, QGridLayout* grid, ControlRef control, int column, int columns) {
    QLabel* label = MakeHead(bind, std::move(control));
    label->setAlignment(Qt::AlignLeft);
    grid->addWidget(label, 0, column, 1, columns);
}

FieldHandlers HandlersOf(const LinkHandlers& h, SetNo set) {
    return {[h, set] { h.GotFocus(set); },
            [h, set](int key) { return h.KeyPress(set, key); },
            [h, set] {
                if (h.IsShown()) h.LostFocus(set);
            },
            {}};
}

void AddSet(Binder& bind, QGridLayout* grid, const LinkHandlers& h, std::size_t i) {
    constexpr int digits = 6;
    const int line = static_cast<int>(i) + 1;
    const auto boxes = h.Boxes;
    grid->addWidget(RightLabel(bind, [boxes, i]() -> Control& { return boxes().SetNumber[i]; }), line, 0);
    grid->addWidget(MakeLabel(bind, [boxes, i]() -> Control& { return boxes().SetName[i]; }), line, 1);
    FieldEdit* link = MakeField(
        bind, [boxes, i]() -> Control& { return boxes().LinkNum[i]; }, HandlersOf(h, SetNo(line)), digits);
    link->setFixedWidth(link->minimumWidth());
    grid->addWidget(link, line, 2);
}

} // namespace

QGridLayout* LinkGrid(Binder& bind, ControlRef xHead, ControlRef yHead, const LinkHandlers& handlers) {
    auto* grid = new QGridLayout;
    AddHead(bind, grid, std::move(xHead), 0, 2);
    AddHead(bind, grid, std::move(yHead), 2, 1);
    for (std::size_t i = 0; i < handlers.Boxes().SetNumber.size(); ++i)
        AddSet(bind, grid, handlers, i);
    grid->setHorizontalSpacing(12);
    grid->setColumnStretch(3, 1); // the links stay beside the names of their sets
    grid->setRowStretch(grid->rowCount(), 1);
    return grid;
}

} // namespace Quillon
