// The open-file screen, where a run begins: the user states the units of the data
// file, the number of title lines and the graph units, may preview a file, loads it
// into the record's readings, and then starts the plotting with "Plot Cone Data".
#pragma once

#include <QString>

#include "input/ui/OpenFileLayout.h"
#include "runtime/ui/FormScaling.h"

class QToolBar;

namespace pemlo {

struct Declarations;
class FileChannels;

class Frm_OpenFile : public ScaledForm {
    Q_OBJECT
public:
    // The load step: 10 title lines and English data units, sized to the screen.
    explicit Frm_OpenFile(QWidget* parent = nullptr);
    ~Frm_OpenFile() override;

    // The toolbar's commands by key; "File" runs the file choice although no button
    // carries it. Other keys do nothing.
    void Toolbar1_ButtonClick(const QString& key);

    // 1 = view, 2 = load, 0 before either file button was pressed. It is the
    // screen's private value: the close box keeps it for the next load.
    int ChosenAction() const;

    // A file whose first data line has fewer than three values was loaded: the
    // reader waits for an end of file that never comes (hourglass, no message).
    bool IsWaitingForever() const { return waitingForever_; }

private:
    void ConnectEvents();
    void StartWhereUsersStart();
    void Opt_Units_Click();
    void Opt_GraphUnits_Click();
    void CombTitleLines_Click(int index);
    void CmdViewFile_Click();
    void CmdOpenFile_Click();
    void CmdPlot_Click();
    void SetChosenAction(int action);

    // The file choice and the dispatch to preview or load; any run-time error in it
    // ends it silently.
    void OpenFileMenu();
    void ShowPreview();
    void LoadFile();
    void WaitForever();

    Declarations& d_;
    FileChannels& files_;
    OpenFileControls c_;
    QToolBar* toolbar_ = nullptr;
    bool waitingForever_ = false;
};

void RegisterFrm_OpenFile();

}  // namespace pemlo
