// The results of a fit.
#include "reporting/Results.h"
#include "chart/CHART.h"
#include "commands/export/ReportPreview.h"
#include "fit/forms/WaitForm.h"
#include "forms/Pieces.h"
#include "forms/shell/ChartBox.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"
#include "graphs/kinds/FitGraphs.h"
#include "graphs/kinds/ResidualGraphs.h"
#include "models/forms/ShowConstraintForm.h"
#include "workspace/records/Workspace.h"

#include <QPlainTextEdit>
#include <QScreen>

namespace Quillon {

namespace {

QPlainTextEdit* Lines(Binder& bind, ControlRef control, int rows) {
    auto* text = new QPlainTextEdit;
    text->setFont(FixedPitchFont());
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    // A parameter with its value and its error is read without scrolling.
    constexpr int letters = 50;
    text->setMinimumSize(text->fontMetrics().horizontalAdvance(QString(letters, '0')) + 24,
                         text->fontMetrics().lineSpacing() * rows + 12);
    text->setTabChangesFocus(true);
    bind.Text(text, std::move(control));
    return text;
}

// The name of a statistic; with large letters on a small screen a long one goes on in a second line, so that
// the values of parameters beside it have room for their errors.
QLabel* StatisticName(Binder& bind, const ControlRef& control) {
    const bool narrow = ForFont(1080, 0).width() > QApplication::primaryScreen()->availableSize().width();
    auto* name = new QLabel;
    bind.Visible(name, control);
    bind.Also([name, control, letters = narrow ? 16 : 80] {
        const QString text = InLines(WithoutAccessKey(control().Text), letters, 2);
        if (name->text() != text) name->setText(text);
    });
    return name;
}

QWidget* StatisticsFrame(Binder& bind) {
    QGroupBox* frame = MakeFrame(bind, []() -> Control& { return Results.Frame2; });
    auto* grid = new QGridLayout(frame);
    using Member = Control ResultsForm::*;
    const std::pair<Member, Member> rows[] = {{&ResultsForm::SumSqLabel, &ResultsForm::SumSqValue},
                                              {&ResultsForm::DegFreedomLabel, &ResultsForm::DegFreedom},
                                              {&ResultsForm::RmsLabel, &ResultsForm::RmsValue},
                                              {&ResultsForm::ZScoreLabel, &ResultsForm::ZScore}};
    int line = 0;
    for (const auto& [label, value] : rows) {
        grid->addWidget(StatisticName(bind, [m = label]() -> Control& { return Results.*m; }), line, 0);
        QLabel* number = MakeLabel(bind, [m = value]() -> Control& { return Results.*m; });
        number->setAlignment(Qt::AlignRight);
        grid->addWidget(number, line++, 1);
    }
    return frame;
}

// The small graph: drawn once, when the window opens, into a chart of its own.
QWidget* SmallGraph() {
    auto* box = new ChartPicture;
    box->setMinimumSize(320, 240);
    box->DrawOnce([] {
        if (Work.OverlayPlot)
            MakeFitGraph(FitGraph::Overlay, AllSets, {});
        else
            MakeResidualGraph(ResidualAxis::X, AllSets);
    });
    return box;
}

class ResultsWindow : public QDialog {
public:
    explicit ResultsWindow(QWidget* parent) : QDialog(parent), Bind(this) {
        auto* left = new QVBoxLayout;
        left->addWidget(StatisticsFrame(Bind));
        left->addWidget(MakeLabel(
            Bind, []() -> Control& { return Results.Warning; }, true));
        left->addWidget(MakeLabel(
            Bind, []() -> Control& { return Results.Message; }, true));
        left->addWidget(MakeLabel(Bind, []() -> Control& { return Results.ConstraintText; }));
        left->addWidget(SmallGraph(), 1);
        auto* right = new QVBoxLayout;
        auto* heads = new QHBoxLayout;
        heads->addWidget(MakeLabel(Bind, []() -> Control& { return Results.Label1; }));
        heads->addStretch(1);
        heads->addWidget(MakeLabel(Bind, []() -> Control& { return Results.Label2; }));
        right->addLayout(heads);
        right->addWidget(Lines(
                             Bind, []() -> Control& { return Results.ParmsFit; }, 12),
                         3);
        right->addWidget(MakeLabel(Bind, []() -> Control& { return Results.Label3; }));
        right->addWidget(Lines(
                             Bind, []() -> Control& { return Results.ParmsConst; }, 4),
                         1);
        auto* both = new QHBoxLayout;
        both->addLayout(left, 1);
        both->addLayout(right, 1);
        QGroupBox* frame = MakeFrame(Bind, []() -> Control& { return Results.Frame1; });
        frame->setLayout(both);
        auto* all = new QVBoxLayout(this);
        all->addWidget(frame, 1);
        all->addLayout(Buttons());
        Bind.Also([this] { setWindowTitle(ShownText(Results.Caption)); });
        resize(ForFont(1080, 620));
    }

private:
    QLayout* Buttons() {
        const auto button = [this](Control ResultsForm::*which, std::function<void()> clicked,
                                   bool standard = false) {
            return MakeButton(
                Bind, [which]() -> Control& { return Results.*which; }, std::move(clicked), standard);
        };
        return ButtonRow({button(&ResultsForm::ComputeConfidence, [] { ResultsComputeConfidence(); }),
                          button(&ResultsForm::ViewCorr, ResultsViewCorr),
                          button(&ResultsForm::ShowConstraintButton, ShowConstraintMatch),
                          button(&ResultsForm::Command1, [] { PreviewReport(false); }),
                          button(&ResultsForm::Command2, [] { PreviewReport(true); })},
                         {button(&ResultsForm::OkButton, ResultsOkButton, true)});
    }
    Binder Bind;
};

QWidget* MakeResults(QWidget* parent) {
    return new ResultsWindow(parent);
}

const FormWindow Registered(ResultsName, MakeResults);

} // namespace

} // namespace Quillon
