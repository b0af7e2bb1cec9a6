#include "forms/shell/DesktopPlatform.h"

#include "chart/dialogs/PrintEsc.h"
#include "chart/records/ChartState.h"
#include "files/FillFiles.h"
#include "files/RunPieces.h"
#include "files/WriteWhole.h"
#include "forms/shell/Binding.h"
#include "forms/shell/DesktopPrinter.h"
#include "forms/shell/FormHost.h"
#include "platform/Platform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QColorDialog>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QInputDialog>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QRandomGenerator>
#include <QStandardPaths>

#include <algorithm>

namespace Quillon {

namespace {

// A generator of our own: the toolkit's shared one ends the program when it is seeded.
QRandomGenerator& UniformSource() {
    static QRandomGenerator source = QRandomGenerator::securelySeeded();
    return source;
}

// Paths are bytes of the file system, texts of messages and clipboards are Latin-1.
QString PathText(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}
std::string PathBytes(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

QMessageBox::Icon IconOf(BoxIcon icon) {
    switch (icon) {
    case BoxIcon::Stop:
        return QMessageBox::Critical;
    case BoxIcon::Question:
        return QMessageBox::Question;
    case BoxIcon::Warning:
        return QMessageBox::Warning;
    case BoxIcon::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

QMessageBox::StandardButtons ButtonsOf(BoxButtons buttons) {
    switch (buttons) {
    case BoxButtons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case BoxButtons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case BoxButtons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    default:
        return QMessageBox::Ok;
    }
}

QMessageBox::StandardButton ButtonOf(BoxAnswer answer) {
    switch (answer) {
    case BoxAnswer::Cancel:
        return QMessageBox::Cancel;
    case BoxAnswer::Yes:
        return QMessageBox::Yes;
    case BoxAnswer::No:
        return QMessageBox::No;
    default:
        return QMessageBox::Ok;
    }
}

BoxAnswer AnswerOf(int button, BoxButtons buttons) {
    switch (button) {
    case QMessageBox::Yes:
        return BoxAnswer::Yes;
    case QMessageBox::No:
        return BoxAnswer::No;
    case QMessageBox::Ok:
        return BoxAnswer::Ok;
    default:
        break; // closed without a button
    }
    if (buttons == BoxButtons::YesNo) return BoxAnswer::No;
    return buttons == BoxButtons::Ok ? BoxAnswer::Ok : BoxAnswer::Cancel;
}

// After a message the button that was held down when it came is up: its release went to the message.
void LetGoOfButtons() {
    for (QWidget* window : QApplication::topLevelWidgets())
        for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
            if (button->isDown()) button->setDown(false);
}

// The button out of a chain of questions, which Esc and closing the box press; nullptr where there is none.
const QAbstractButton* AddWayOut(QMessageBox& box, const std::string& caption) {
    if (caption.empty()) return nullptr;
    QPushButton* const button = box.addButton(ShownText(caption), QMessageBox::ActionRole);
    box.setEscapeButton(button);
    return button;
}

// A message, with a check box below it where one is given; checked then holds what it was left at.
BoxAnswer ShowBox(const BoxRequest& request, QCheckBox* check, bool* checked) {
    RefreshForms();
    QMessageBox box(IconOf(request.Icon), ShownText(request.Title), ShownText(request.Text),
                    ButtonsOf(request.Buttons), FrontWindow());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (!request.YesCaption.empty()) box.button(QMessageBox::Yes)->setText(ShownText(request.YesCaption));
    if (!request.NoCaption.empty()) box.button(QMessageBox::No)->setText(ShownText(request.NoCaption));
    if (box.button(ButtonOf(request.Default))) box.setDefaultButton(ButtonOf(request.Default));
    if (request.Buttons == BoxButtons::YesNo) box.setEscapeButton(QMessageBox::No);
    const QAbstractButton* const wayOut = AddWayOut(box, request.WayOut);
    if (check) box.setCheckBox(check); // the box owns it
    const ModalWait wait(&box);
    const int answer = box.exec();
    LetGoOfButtons();
    if (check) *checked = check->isChecked();
    if (wayOut && box.clickedButton() == wayOut) return BoxAnswer::WayOut;
    return AnswerOf(answer, request.Buttons);
}

BoxAnswer ShowMessage(const BoxRequest& request) {
    return ShowBox(request, nullptr, nullptr);
}

BoxAnswer AskChecked(const BoxRequest& request, const std::string& caption, bool& checked) {
    auto* const check = new QCheckBox(ShownText(caption));
    check->setChecked(checked);
    return ShowBox(request, check, &checked);
}

// A prompt may be as long as a paragraph.
constexpr int PromptWidth = 480;

InputAnswer AskForText(const InputRequest& request) {
    RefreshForms();
    QInputDialog dialog(FrontWindow());
    dialog.setWindowTitle(ShownText(request.Title));
    dialog.setLabelText(ShownText(request.Prompt));
    dialog.setTextValue(ShownText(request.Default));
    if (auto* prompt = dialog.findChild<QLabel*>()) {
        prompt->setTextFormat(Qt::PlainText);
        prompt->setWordWrap(true);
        prompt->setMinimumWidth(PromptWidth);
    }
    const ModalWait wait(&dialog);
    if (dialog.exec() != QDialog::Accepted) return {};
    return {false, RecordText(dialog.textValue())};
}

// "scans (*.R*)|*.R*;*.IP*|all files (*.*)|*.*" in the form of the toolkit. "*.*" means every file here.
QStringList FiltersOf(const std::string& filter) {
    QStringList filters;
    const QStringList parts = ShownText(filter).split('|');
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString description = parts[i];
        const auto bracket = description.indexOf(" (");
        if (bracket > 0) description = description.left(bracket);
        QStringList patterns;
        for (const QString& p : parts[i + 1].split(';', Qt::SkipEmptyParts)) {
            if (p == "*.*")
                patterns << "*";
            else
                patterns << p << (p == p.toLower() ? p.toUpper() : p.toLower());
        }
        patterns.removeDuplicates();
        filters << description + " (" + patterns.join(' ') + ")";
    }
    return filters;
}

// "pictures (*.png *.PNG)": png
QString EndingOf(const QString& filter) {
    const auto at = filter.indexOf("(*.");
    return at < 0 ? QString() : filter.mid(at + 3).section(' ', 0, 0).section(')', 0, 0);
}

// A name to save under takes the ending of the kind that is chosen, where it has that of the former one.
void FollowKind(QFileDialog& dialog) {
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
        const QString ending = EndingOf(filter);
        if (ending.isEmpty()) return;
        const QFileInfo file(dialog.selectedFiles().value(0));
        const bool follows = file.suffix() == dialog.defaultSuffix();
        dialog.setDefaultSuffix(ending);
        if (follows) dialog.selectFile(file.completeBaseName() + "." + ending);
    });
}

// Patterns of which the dialog would show the begin alone; the kinds are then told in words.
bool AreTooWide(const QStringList& kinds) {
    constexpr qsizetype Widest = 60;
    return std::any_of(kinds.begin(), kinds.end(), [](const QString& kind) { return kind.size() > Widest; });
}

FileAnswer AskForFile(const FileRequest& request) {
    RefreshForms();
    QFileDialog dialog(FrontWindow(), ShownText(request.Title));
    dialog.setAcceptMode(request.Save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(request.Save      ? QFileDialog::AnyFile
                       : request.Several ? QFileDialog::ExistingFiles
                                         : QFileDialog::ExistingFile);
    const QStringList kinds = FiltersOf(request.Filter);
    dialog.setOption(QFileDialog::HideNameFilterDetails, AreTooWide(kinds));
    dialog.setNameFilters(kinds);
    dialog.setDefaultSuffix(ShownText(request.DefaultType));
    if (!request.Directory.empty()) dialog.setDirectory(PathText(request.Directory));
    if (!request.Name.empty() && request.Name.find('*') == std::string::npos)
        dialog.selectFile(PathText(request.Name));
    if (request.Save) FollowKind(dialog);
    const ModalWait wait(&dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    FileAnswer answer;
    answer.Cancelled = false;
    for (const QString& path : dialog.selectedFiles())
        answer.Paths.push_back(PathBytes(path));
    answer.Path = answer.Paths.front();
    answer.Title = PathBytes(QFileInfo(dialog.selectedFiles().front()).fileName());
    return answer;
}

ClockTime AsClock(const QDateTime& at) {
    return {at.date().year(), at.date().month(),  at.date().day(),
            at.time().hour(), at.time().minute(), at.time().second()};
}

ClockTime Now() {
    return AsClock(QDateTime::currentDateTime());
}

// The engine asks every few microseconds; a window that follows thirty times a second follows at once. A
// graph is drawn in one go: whatever a click, a key or a timer started meanwhile would take its data away.
// A print job asks a few times in all, between its steps, and each of them has to hear a cancel.
void ServeEventQueue() {
    static QElapsedTimer since;
    const bool pauses = !PrintEsc.State.Shown && since.isValid() && since.elapsed() < 25;
    if (Chart.Painting || pauses) return;
    RefreshForms();
    QApplication::processEvents();
    since.start();
}

std::string ConfigFolder() {
    const QString named = qEnvironmentVariable("QUILLON_CONFIG");
    if (!named.isEmpty()) {
        QDir().mkpath(named);
        return PathBytes(named);
    }
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/quillon";
    QDir().mkpath(folder);
    return PathBytes(folder);
}

// Beside the settings where these have a folder named for them, as tests do. The toolkit does not know this
// folder before version 6.7.
std::string StateFolder() {
    const QString named = qEnvironmentVariable("QUILLON_CONFIG"),
                  state = qEnvironmentVariable("XDG_STATE_HOME");
    QString folder = QDir::homePath() + "/.local/state/quillon";
    if (QDir::isAbsolutePath(state)) folder = state + "/quillon";
    if (!named.isEmpty()) folder = named + "/state";
    return QDir().mkpath(folder) ? PathBytes(folder) : "";
}

std::optional<ClockTime> TimeOfFile(const std::string& path) {
    const QDateTime at = QFileInfo(PathText(path)).lastModified();
    if (!at.isValid()) return std::nullopt;
    return AsClock(at.toLocalTime());
}

std::vector<std::string> NamesIn(const std::string& directory, const std::string& pattern) {
    std::vector<std::string> names;
    const QString filter = pattern == "*.*" ? "*" : PathText(pattern);
    for (const QString& name : QDir(PathText(directory)).entryList({filter}, QDir::Files, QDir::Name))
        names.push_back(PathBytes(name));
    return names;
}

std::vector<std::string> Roots() {
    std::vector<std::string> roots;
    for (const QFileInfo& root : QDir::drives())
        roots.push_back(PathBytes(root.filePath()));
    return roots;
}

QByteArray AsBytes(const std::string& bytes) {
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

// Programs look for a metafile under different names.
constexpr const char* MetafileKinds[] = {"image/x-emf", "image/emf", "application/x-emf",
                                         "application/x-openoffice-emf;windows_formatname=\"Image EMF\"",
                                         "application/x-qt-windows-mime;value=\"CF_ENHMETAFILE\""};

bool OfferOnClipboard(const ClipboardOffer& offer) {
    auto data = std::make_unique<QMimeData>();
    if (!offer.Svg.empty()) data->setData("image/svg+xml", AsBytes(offer.Svg));
    if (!offer.Emf.empty())
        for (const char* kind : MetafileKinds)
            data->setData(kind, AsBytes(offer.Emf));
    if (!offer.Png.empty()) {
        data->setData("image/png", AsBytes(offer.Png));
        data->setImageData(QImage::fromData(AsBytes(offer.Png), "PNG"));
    }
    if (!offer.Text.empty()) data->setText(ShownText(offer.Text));
    QApplication::clipboard()->setMimeData(data.release());
    return true;
}

// Records keep blue, green and red in this order from the highest byte down.
ColorAnswer AskForColor(const std::string& title, std::uint32_t color) {
    const QColor standing(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                          static_cast<int>(color >> 16 & 0xFF));
    QColorDialog dialog(standing, FrontWindow());
    dialog.setWindowTitle(ShownText(title));
    const ModalWait wait(&dialog);
    if (dialog.exec() != QDialog::Accepted) return {};
    const QColor chosen = dialog.currentColor();
    return {false, static_cast<std::uint32_t>(chosen.blue() << 16 | chosen.green() << 8 | chosen.red())};
}

void ShapePointer(Pointer shape) {
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    if (shape == Pointer::Hourglass) QApplication::setOverrideCursor(Qt::WaitCursor);
}

} // namespace

void InstallDesktopPlatform() {
    SurviveFileSizeLimit();
    Platform p;
    p.MessageBoxAnswer = ShowMessage;
    p.AskChecked = AskChecked;
    p.AskText = AskForText;
    p.AskFile = AskForFile;
    FillFiles(p);
    p.FileTime = TimeOfFile;
    p.StateDirectory = StateFolder;
    p.ListFiles = NamesIn;
    p.FileRoots = Roots;
    p.Clock = Now;
    p.Uniform = [] { return static_cast<float>(UniformSource().bounded(1 << 24)) / (1 << 24); };
    p.SeedUniform = [] { UniformSource().seed(static_cast<quint32>(QDateTime::currentMSecsSinceEpoch())); };
    p.RunPieces = [](long count, const auto& piece, const auto& watch) {
        RunPieces(CoresOfMachine(), count, piece, watch);
    };
    p.Beep = [] { QApplication::beep(); };
    p.SetPointer = ShapePointer;
    p.ServeEvents = ServeEventQueue;
    p.WaitEvent = [] {
        RefreshForms();
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    };
    p.ShowModal = ShowFormModally;
    p.ShowForm = ShowFormModeless;
    p.HideForm = HideFormByName;
    p.WorkingDirectory = [] { return PathBytes(QDir::currentPath()); };
    p.ConfigDirectory = ConfigFolder;
    p.ProgramDirectory = [] { return PathBytes(QApplication::applicationDirPath()); };
    p.SetClipboardText = [](const std::string& text) {
        QApplication::clipboard()->setText(ShownText(text));
        return true;
    };
    p.ClipboardText = [] { return RecordText(QApplication::clipboard()->text()); };
    p.SetClipboard = OfferOnClipboard;
    p.AskColor = AskForColor;
    p.StartProgram = [](const std::string& program, const std::string& argument) {
        return QProcess::startDetached(PathText(program), {PathText(argument)});
    };
    p.DecimalMark = [] {
        const QString mark = QLocale::system().decimalPoint();
        return mark == "," ? ',' : '.';
    };
    p.Printer = DesktopPrinter();
    InstallPlatform(p);
}

} // namespace Quillon
