// How the fit meets the concentration constraints.
#include "models/forms/ShowConstraintForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <utility>

namespace Quillon {

namespace {

QWidget* MakeShowConstraintForm(QWidget* parent) {
    auto* form = new FormDialog(ShowConstraintForm.State, ShowConstraintFormOkButton, parent);
    Binder& bind = form->Bind;
    using Record = ShowConstraintFormRecord;
    using Head = Control Record::*;
    using Column = std::vector<Control> Record::*;
    const std::pair<Head, Column> columns[] = {
        {&Record::ALabel, &Record::ConcA},         {&Record::VarALabel, &Record::VarA},
        {&Record::FitALabel, &Record::FitA},       {&Record::FitErrALabel, &Record::FitErrA},
        {&Record::FracALabel, &Record::FracA},     {&Record::BLabel, &Record::ConcB},
        {&Record::VarBLabel, &Record::VarB},       {&Record::FitBLabel, &Record::FitB},
        {&Record::FitErrBLabel, &Record::FitErrB}, {&Record::FracBLabel, &Record::FracB}};
    auto* grid = new QGridLayout;
    for (std::size_t i = 0; i < ShowConstraintForm.SetLabel.size(); ++i)
        grid->addWidget(MakeLabel(bind, [i]() -> Control& { return ShowConstraintForm.SetLabel[i]; }),
                        static_cast<int>(i) + 1, 0);
    int column = 1;
    for (const auto& [head, values] : columns) {
        grid->addWidget(MakeHead(
                            bind, [h = head]() -> Control& { return ShowConstraintForm.*h; }, 11, 5),
                        0, column);
        for (std::size_t i = 0; i < (ShowConstraintForm.*values).size(); ++i)
            grid->addWidget(
                RightLabel(bind, [v = values, i]() -> Control& { return (ShowConstraintForm.*v)[i]; }),
                static_cast<int>(i) + 1, column);
        ++column;
    }
    grid->setHorizontalSpacing(12);
    grid->setRowStretch(grid->rowCount(), 1);
    auto* all = new QVBoxLayout(form);
    QScrollArea* table = Scrolled(grid);
    table->setFrameShape(QFrame::StyledPanel); // its keys scroll, and the focus is seen on the frame
    all->addWidget(table, 1);
    all->addWidget(MakeLabel(bind, []() -> Control& { return ShowConstraintForm.Label7; }));
    all->addLayout(ButtonRow({}, {MakeButton(
                                     bind, []() -> Control& { return ShowConstraintForm.OkButton; },
                                     ShowConstraintFormOkButton, true)}));
    form->resize(ForFont(ShowConstraintForm.BLabel.Visible ? 1100 : 660,
                         200 + 20 * ShownRows(ShowConstraintForm.SetLabel.size())));
    return form;
}

const FormWindow Registered(ShowConstraintFormName, MakeShowConstraintForm);

} // namespace

} // namespace Quillon
