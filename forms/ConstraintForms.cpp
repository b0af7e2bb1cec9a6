// Concentration and zero offset constraints.
#include "forms/Pieces.h"
#include "forms/Windows.h"
#include "models/BaseForm.h"
#include "models/ConcForm.h"
#include "models/ShowConstraintForm.h"

#include <QApplication>
#include <QScrollArea>

#include <algorithm>

namespace Quillon {

namespace {

// Rows that a window opens with; a few more than there are look better than a strip.
int ShownRows(std::size_t rows) {
    return static_cast<int>(std::max<std::size_t>(rows, 6));
}

// Up to 18 rows: what does not fit the screen scrolls.
QScrollArea* Scrolled(QLayout* layout) {
    auto* inside = new QWidget;
    inside->setLayout(layout);
    auto* area = new QScrollArea;
    area->setWidget(inside);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    QObject::connect(qApp, &QApplication::focusChanged, area, [area](QWidget*, QWidget* now) {
        if (now && area->isAncestorOf(now)) area->ensureWidgetVisible(now);
    });
    return area;
}

FieldEdit* ConcField(Binder& bind, ConcInput input, long set) {
    return MakeField(
        bind, [input, set]() -> Control& { return ConcFormBox(input, set); },
        {[input, set] { ConcFormGotFocus(input, set); },
         [input, set](int key) { return ConcFormKeyPress(input, set, key); },
         [input, set] {
             if (ConcForm.State.Shown) ConcFormLostFocus(input, set);
         },
         {}},
        11);
}

QLabel* RightLabel(Binder& bind, ControlRef control) {
    QLabel* label = MakeLabel(bind, std::move(control));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

QLabel* CenteredLabel(Binder& bind, ControlRef control) {
    QLabel* label = MakeLabel(bind, std::move(control));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

QWidget* MakeConcForm(QWidget* parent) {
    auto* form = new FormDialog(ConcForm.State, ConcFormOkButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    using Member = Control ConcFormRecord::*;
    int column = 1;
    for (const Member head :
         {&ConcFormRecord::ALabel, &ConcFormRecord::VarALabel, &ConcFormRecord::BLabel,
          &ConcFormRecord::VarBLabel, &ConcFormRecord::AvgLabel, &ConcFormRecord::TotalLabel})
        grid->addWidget(MakeHead(
                            bind, [head]() -> Control& { return ConcForm.*head; }, 16, 4),
                        0, column++);
    for (std::size_t i = 0; i < ConcForm.SetLabel.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        grid->addWidget(MakeLabel(bind, [i]() -> Control& { return ConcForm.SetLabel[i]; }), line, 0);
        grid->addWidget(ConcField(bind, ConcInput::ConcA, line), line, 1);
        grid->addWidget(ConcField(bind, ConcInput::VarA, line), line, 2);
        grid->addWidget(ConcField(bind, ConcInput::ConcB, line), line, 3);
        grid->addWidget(ConcField(bind, ConcInput::VarB, line), line, 4);
        grid->addWidget(CenteredLabel(bind, [i]() -> Control& { return ConcForm.AvgC[i]; }), line, 5);
        grid->addWidget(CenteredLabel(bind, [i]() -> Control& { return ConcForm.Text1[i]; }), line, 6);
    }
    grid->setRowStretch(grid->rowCount(), 1);
    auto* all = new QVBoxLayout(form);
    all->addWidget(Scrolled(grid), 1);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return ConcForm.Note; }, true));
    all->addLayout(
        ButtonRow({MakeButton(
                      bind, []() -> Control& { return ConcForm.ClearAllButton; }, ConcFormClearAllButton)},
                  {MakeButton(
                       bind, []() -> Control& { return ConcForm.OkButton; }, ConcFormOkButton, true),
                   MakeCancel(
                       bind, []() -> Control& { return ConcForm.CancelButton; }, ConcFormCancelButton)}));
    form->resize(ConcForm.BLabel.Visible ? 900 : 660, 170 + 28 * ShownRows(ConcForm.SetLabel.size()));
    return form;
}

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
    all->addWidget(Scrolled(grid), 1);
    all->addWidget(MakeLabel(bind, []() -> Control& { return ShowConstraintForm.Label7; }));
    all->addLayout(ButtonRow({}, {MakeButton(
                                     bind, []() -> Control& { return ShowConstraintForm.OkButton; },
                                     ShowConstraintFormOkButton, true)}));
    form->resize(ShowConstraintForm.BLabel.Visible ? 1100 : 660,
                 200 + 20 * ShownRows(ShowConstraintForm.SetLabel.size()));
    return form;
}

QWidget* MakeBaseForm(QWidget* parent) {
    auto* form = new FormDialog(BaseForm.State, BaseFormOkButton, parent);
    Binder& bind = form->Bind;
    auto* grid = new QGridLayout;
    const auto head = [&](Control BaseFormRecord::*which, int column, int columns) {
        QLabel* label = MakeHead(bind, [which]() -> Control& { return BaseForm.*which; });
        label->setAlignment(Qt::AlignLeft);
        grid->addWidget(label, 0, column, 1, columns);
    };
    head(&BaseFormRecord::XLabel, 0, 2);
    head(&BaseFormRecord::YLabel, 2, 1);
    for (std::size_t i = 0; i < BaseForm.SetNumber.size(); ++i) {
        const int line = static_cast<int>(i) + 1;
        const long set = line;
        grid->addWidget(RightLabel(bind, [i]() -> Control& { return BaseForm.SetNumber[i]; }), line, 0);
        grid->addWidget(MakeLabel(bind, [i]() -> Control& { return BaseForm.SetName[i]; }), line, 1);
        FieldEdit* link = MakeField(
            bind, [i]() -> Control& { return BaseForm.LinkNum[i]; },
            {[set] { BaseFormGotFocus(set); },
             [set](int key) { return BaseFormKeyPress(set, key); },
             [set] {
                 if (BaseForm.State.Shown) BaseFormLostFocus(set);
             },
             {}},
            6);
        link->setFixedWidth(link->minimumWidth());
        grid->addWidget(link, line, 2);
    }
    grid->setHorizontalSpacing(12);
    grid->setColumnStretch(3, 1); // the links stay beside the names of their sets
    grid->setRowStretch(grid->rowCount(), 1);
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return BaseForm.Head; }, true));
    all->addWidget(Scrolled(grid), 1);
    all->addLayout(
        ButtonRow({MakeButton(
                       bind, []() -> Control& { return BaseForm.ResetButton; }, BaseFormResetButton),
                   MakeCancel(
                       bind, []() -> Control& { return BaseForm.CancelButton; }, BaseFormCancelButton)},
                  {MakeButton(
                      bind, []() -> Control& { return BaseForm.OkButton; }, BaseFormOkButton, true)}));
    form->resize(460, 150 + 28 * ShownRows(BaseForm.SetName.size()));
    return form;
}

} // namespace Quillon
