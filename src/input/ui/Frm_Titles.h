// The project information screen: the user describes the sounding (date, project
// number and title, location, ground water table, cone number); OK stores the texts
// in the record, brings the readings to the graph units (through the cone factors
// screen for millivolt readings) and opens the CPT data plots.
#pragma once

#include <QLineEdit>
#include <QPointer>
#include <array>

#include "runtime/ui/FormScaling.h"

class QPushButton;

namespace pemlo {

class Frm_Titles : public ScaledForm {
    Q_OBJECT
public:
    explicit Frm_Titles(QWidget* parent = nullptr);

    // The text box of the TxtInfo array with this index (0, 2, 3, 4, 5 or 8).
    QLineEdit* TxtInfo(int index) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void CmdOK_Click();
    void CmdCancel_Click();
    // Returns true when the key is to be discarded.
    bool TxtInfo_KeyPress(int index, const QString& key);

    std::array<QPointer<QLineEdit>, 9> txtInfo_{};
    QPushButton* cmdOK_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
};

// Tells the screen registry how to build the project information screen.
void RegisterFrm_Titles();

}  // namespace pemlo
