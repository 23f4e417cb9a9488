#include "input/ui/Frm_OpenFile.h"

#include <QToolBar>
#include <QToolButton>

#include "core/Declarations.h"
#include "core/ui/Screens.h"
#include "input/ui/Frm_ViewFile.h"
#include "input/Module_FileData.h"
#include "runtime/ui/AfterPress.h"
#include "runtime/FileChannels.h"
#include "runtime/ui/FileDialog.h"
#include "runtime/ui/MessageBox.h"
#include "runtime/ui/MousePointer.h"
#include "runtime/ui/RunTimeErrorReport.h"
#include "runtime/ui/Toolbar.h"

namespace pemlo {

namespace {

const QString ConeFileFilter =
    QStringLiteral("ASCII Files (*.txt)|*.txt|ASCII Files (*.dat)| *.dat|ASCII Files (*.prn)| *.prn");
const QString ChosenActionKey = QStringLiteral("chosenAction");
constexpr int ActionView = 1;

std::vector<ToolButtonSpec> ToolbarButtons()
{
    return {
        {"Exit", "Exit", "Exit the Program", {}},
        {"  About", "About", "About the Program", {}},
        {"Help", "Help", "", {}},
    };
}

}  // namespace

Frm_OpenFile::Frm_OpenFile(QWidget* parent)
    : ScaledForm(QStringLiteral("Frm_OpenFile"), OpenFileWidthTwips, OpenFileHeightTwips, parent),
      d_(TheRecord()),
      files_(ProgramChannels())
{
    setWindowTitle(QStringLiteral("Open Cone Data File"));
    toolbar_ = BuildToolbar(this, ToolbarButtons(), [this](const QString& key) { Toolbar1_ButtonClick(key); });
    SetTopBar(toolbar_);
    c_ = BuildOpenFileLayout(*this);
    SetResizeMinimum(7600, 6000);
    SizeToScreen(0.75, 0.75);

    c_.Opt_Units[DataEnglish]->setChecked(true);
    c_.Opt_GraphUnits[GraphEnglish]->setChecked(true);
    for (int i = 0; i <= 15; ++i) {
        c_.CombTitleLines->addItem(QString::number(i));
    }
    c_.CombTitleLines->setCurrentIndex(10);
    c_.CmdPlot->setEnabled(false);
    d_.NumTitleLines = 10;
    d_.DataUnits = DataEnglish;
    ConnectEvents();
    StartWhereUsersStart();
}

// The keyboard starts at the units of the file, not on the toolbar's Exit: a second
// key press after the splash must not end the program. The toolbar comes last in
// tab order, after the controls a user works through.
void Frm_OpenFile::StartWhereUsersStart()
{
    QWidget* previous = c_.CmdPlot;
    for (QToolButton* button : toolbar_->findChildren<QToolButton*>()) {
        if (button->objectName().isEmpty() || button->objectName().startsWith(QLatin1String("qt_"))) continue;
        setTabOrder(previous, button);
        previous = button;
    }
    c_.Opt_Units[DataEnglish]->setFocus();
}

Frm_OpenFile::~Frm_OpenFile()
{
    // The endless read goes with the screen that ran it; the pointer comes back.
    if (waitingForever_) {
        Screens::Instance().SetWaitingForLoad(false);
        SetMousePointer(MousePointer::Default);
    }
}

void Frm_OpenFile::ConnectEvents()
{
    // An option's click steps run whenever it becomes selected, however that happens
    // (mouse, keyboard, a screen reader's "Toggle"), so that the record always agrees
    // with what the screen shows; clicking the option already selected changes nothing.
    for (QRadioButton* option : c_.Opt_Units) {
        connect(option, &QRadioButton::toggled, this, [this](bool selected) {
            if (selected) Untrapped([this] { Opt_Units_Click(); });
        });
    }
    for (QRadioButton* option : c_.Opt_GraphUnits) {
        connect(option, &QRadioButton::toggled, this, [this](bool selected) {
            if (selected) Untrapped([this] { Opt_GraphUnits_Click(); });
        });
    }
    connect(c_.CombTitleLines, &QComboBox::activated, this,
            [this](int index) { Untrapped([this, index] { CombTitleLines_Click(index); }); });
    // Both open the file dialog, a modal window: they run once the press is answered.
    connect(c_.CmdViewFile, &QPushButton::clicked, this, [this] { AfterPress(this, [this] { CmdViewFile_Click(); }); });
    connect(c_.CmdOpenFile, &QPushButton::clicked, this, [this] { AfterPress(this, [this] { CmdOpenFile_Click(); }); });
    connect(c_.CmdPlot, &QPushButton::clicked, this, [this] { Untrapped([this] { CmdPlot_Click(); }); });
}

void Frm_OpenFile::Toolbar1_ButtonClick(const QString& key)
{
    Screens& screens = Screens::Instance();
    if (key == QLatin1String("Exit")) {
        screens.Close(ScreenId::Frm_OpenFile);
        screens.EndProgram();
    } else if (key == QLatin1String("About")) {
        // Modal windows open once the press is answered (see AfterPress).
        AfterPress(this, [] { Screens::Instance().ShowModal(ScreenId::Frm_About); });
    } else if (key == QLatin1String("Help")) {
        AfterPress(this, [] { Screens::Instance().ShowModal(ScreenId::Frm_HelpInfo); });
    } else if (key == QLatin1String("File") && !waitingForever_) {
        OpenFileMenu();
    }
}

int Frm_OpenFile::ChosenAction() const
{
    return Screens::Instance().PrivateValues(ScreenId::Frm_OpenFile).value(ChosenActionKey, 0).toInt();
}

void Frm_OpenFile::SetChosenAction(int action)
{
    Screens::Instance().PrivateValues(ScreenId::Frm_OpenFile).insert(ChosenActionKey, action);
}

// English and SI data bring the graph units along; millivolt data leaves them as
// they are. The user may change the graph units afterwards in every case.
void Frm_OpenFile::Opt_Units_Click()
{
    if (c_.Opt_Units[DataMilliVolts]->isChecked()) {
        d_.DataUnits = DataMilliVolts;
    } else if (c_.Opt_Units[DataEnglish]->isChecked()) {
        d_.DataUnits = DataEnglish;
        // Selecting the graph option runs its own step; the call after it covers the
        // option that was selected already, whose step then does not run by itself.
        c_.Opt_GraphUnits[GraphEnglish]->setChecked(true);
        Opt_GraphUnits_Click();
    } else if (c_.Opt_Units[DataSI]->isChecked()) {
        d_.DataUnits = DataSI;
        c_.Opt_GraphUnits[GraphSI]->setChecked(true);
        Opt_GraphUnits_Click();
    }
}

void Frm_OpenFile::Opt_GraphUnits_Click()
{
    if (c_.Opt_GraphUnits[GraphEnglish]->isChecked()) {
        d_.GraphUnits = GraphEnglish;
    } else if (c_.Opt_GraphUnits[GraphSI]->isChecked()) {
        d_.GraphUnits = GraphSI;
    }
}

void Frm_OpenFile::CombTitleLines_Click(int index)
{
    d_.NumTitleLines = static_cast<Integer>(c_.CombTitleLines->itemText(index).toInt());
}

void Frm_OpenFile::CmdViewFile_Click()
{
    SetChosenAction(ActionView);
    OpenFileMenu();
}

void Frm_OpenFile::CmdOpenFile_Click()
{
    SetChosenAction(2);
    OpenFileMenu();
}

void Frm_OpenFile::CmdPlot_Click()
{
    // The screen is still inside its endless read: the click would never be seen.
    if (waitingForever_) {
        return;
    }
    Screens::Instance().Show(ScreenId::Frm_Titles);
}

void Frm_OpenFile::OpenFileMenu()
{
    try {
        const QString chosen = ShowOpenFileDialog(this, ConeFileFilter);
        d_.DataFileName = chosen.toStdString();
        d_.FileNum = files_.FreeFile();
        if (ChosenAction() == ActionView) {
            ShowPreview();
        } else {
            LoadFile();
        }
    } catch (const RunTimeError&) {
        // The file choice ends silently at its first error, the dialog's cancel included.
    }
}

void Frm_OpenFile::ShowPreview()
{
    Screens& screens = Screens::Instance();
    screens.Close(ScreenId::Frm_ViewFile);
    // The preview builds its text in its load step; one that failed there has already
    // told the user and is not shown.
    if (!screens.GetAs<Frm_ViewFile>(ScreenId::Frm_ViewFile)->LoadSucceeded()) {
        screens.Close(ScreenId::Frm_ViewFile);
        return;
    }
    screens.Show(ScreenId::Frm_ViewFile);
}

void Frm_OpenFile::LoadFile()
{
    d_.NumColumns = CountColumns(d_, files_);
    SetMousePointer(MousePointer::Hourglass);
    const ReadReport report = ReadConeData(d_, files_);
    switch (report.outcome) {
    case ReadOutcome::Loaded: {
        SetMousePointer(MousePointer::Default);
        const QString text = QStringLiteral("Cone Data File: ") + QString::fromStdString(d_.DataFileName) +
                             QStringLiteral("\r\n") + QStringLiteral(" was successfully opened. ") +
                             QStringLiteral("\r\n") + QStringLiteral(" Total Number of Lines = ") +
                             QString::number(d_.NumLines);
        ShowMessage(this, text, QMessageBox::Information, QStringLiteral(" Data Import from Text File"));
        d_.FileReadError = VbFalse;
        // Once enabled, never disabled again, not even by a later failed load.
        c_.CmdPlot->setEnabled(true);
        c_.CmdPlot->setFocus();
        break;
    }
    case ReadOutcome::Failed:
        ShowMessage(this, QStringLiteral("Could not read data from file"), QMessageBox::Critical,
                    QStringLiteral("Open File Error"));
        d_.FileReadError = VbTrue;
        SetMousePointer(MousePointer::Default);
        break;
    case ReadOutcome::NeverEnds: WaitForever(); break;
    }
}

// A first data line of fewer than three values reads nothing and never reaches the
// end of the file: the load does not complete, shows no message and keeps the
// hourglass. The wait costs no processor time, and the toolbar's Exit and the
// window's close box still answer. "Plot Cone Data" keeps its state: once enabled
// it is never disabled, but a click on it waits behind the read like every input.
void Frm_OpenFile::WaitForever()
{
    waitingForever_ = true;
    Screens::Instance().SetWaitingForLoad(true);
    for (QWidget* input : c_.inputs) {
        input->setEnabled(false);
    }
}

void RegisterFrm_OpenFile()
{
    Screens::Instance().Register(ScreenId::Frm_OpenFile, [] { return new Frm_OpenFile(); });
}

}  // namespace pemlo
