// A table of fits, run by the batch program beside this one.
#include "commands/studies/TableForm.h"
#include "forms/Pieces.h"
#include "forms/shell/FormHost.h"
#include "forms/shell/WindowSizes.h"

#include <QGridLayout>
#include <QPlainTextEdit>
#include <QProcess>
#include <QProgressBar>

#include <csignal>

namespace Quillon {

namespace {

void AddFile(Binder& bind, QGridLayout* grid, int row, TableFile file) {
    grid->addWidget(MakeLabel(bind, [file]() -> Control& { return TableFormFile(file).Label; }), row, 0);
    QLabel* path = MakeLabel(
        bind, [file]() -> Control& { return TableFormFile(file).Path; }, true);
    path->setTextInteractionFlags(Qt::TextSelectableByMouse);
    grid->addWidget(path, row, 1);
    grid->addWidget(MakeButton(
                        bind, [file]() -> Control& { return TableFormFile(file).Button; },
                        [file] { TableFormFileButton(file); }),
                    row, 2);
}

QPlainTextEdit* MakeLines(Binder& bind) {
    auto* lines = new QPlainTextEdit;
    lines->setObjectName("Lines");
    lines->setReadOnly(true);
    lines->setTabChangesFocus(true);
    lines->setMinimumHeight(120);
    bind.Also([lines, shown = std::vector<std::string>{}]() mutable {
        if (shown == TableForm.Lines) return;
        shown = TableForm.Lines;
        QStringList all;
        for (const std::string& line : shown)
            all << ShownText(line);
        lines->setPlainText(all.join('\n'));
        lines->moveCursor(QTextCursor::End);
    });
    return lines;
}

QProgressBar* MakeTableBar(Binder& bind) {
    auto* bar = new QProgressBar;
    bar->setRange(0, 1000);
    bar->setTextVisible(false);
    bind.Also([bar] { bar->setValue(static_cast<int>(TableForm.Fraction * 1000.0)); });
    return bar;
}

void TellLines(QProcess& process) {
    while (process.canReadLine()) {
        const std::string line = process.readLine().trimmed().toStdString();
        if (!line.empty()) RunHandler([&] { TableFormTold(line); });
    }
}

// The process is the form's: it ends with it.
void ProvideRunner(FormDialog* form) {
    auto* process = new QProcess(form);
    process->setReadChannel(QProcess::StandardError);
    QObject::connect(process, &QProcess::readyReadStandardError, form, [process] { TellLines(*process); });
    QObject::connect(process, &QProcess::finished, form, [process](int status, QProcess::ExitStatus how) {
        TellLines(*process);
        RunHandler([&] { TableFormEnded(how == QProcess::NormalExit ? status : -1); });
    });
    TableRunner.Start = [process](const std::string& program, const std::vector<std::string>& arguments) {
        QStringList list;
        for (const std::string& argument : arguments)
            list << QString::fromLocal8Bit(argument.c_str());
        process->start(QString::fromLocal8Bit(program.c_str()), list);
        return process->waitForStarted();
    };
    // Ctrl-C, on which the batch program ends in order and leaves nothing half written.
    TableRunner.Stop = [process] {
        if (process->processId() > 0) ::kill(static_cast<pid_t>(process->processId()), SIGINT);
    };
    QObject::connect(form, &QObject::destroyed, [] { TableRunner = TableProgram{}; });
}

QWidget* MakeTableForm(QWidget* parent) {
    auto* form = new FormDialog(TableForm.State, TableFormCloseButton, parent);
    Binder& bind = form->Bind;
    ProvideRunner(form);
    auto* files = new QGridLayout;
    files->setColumnStretch(1, 1);
    AddFile(bind, files, 0, TableFile::Job);
    AddFile(bind, files, 1, TableFile::Table);
    AddFile(bind, files, 2, TableFile::Summary);
    auto* all = new QVBoxLayout(form);
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return TableForm.Head; }, true));
    all->addLayout(files);
    all->addWidget(MakeTableBar(bind));
    all->addWidget(MakeLabel(
        bind, []() -> Control& { return TableForm.Progress; }, true));
    all->addWidget(MakeLines(bind), 1);
    all->addLayout(
        ButtonRow({MakeButton(
                       bind, []() -> Control& { return TableForm.RunButton; }, TableFormRunButton, true),
                   MakeButton(
                       bind, []() -> Control& { return TableForm.StopButton; }, TableFormStopButton)},
                  {MakeCancel(
                      bind, []() -> Control& { return TableForm.CloseButton; }, TableFormCloseButton)}));
    form->resize(ForFont(640, 420));
    return form;
}

const FormWindow Registered(TableFormName, MakeTableForm);

} // namespace

} // namespace Quillon
