// The cone factors screen: for readings in millivolts, the user says how many MPa one
// millivolt of the tip and of the sleeve channel stands for; Continue converts every
// reading into the graph units and opens the CPT data plots. Shown modally by the
// project information screen's OK.
#pragma once

#include <QLineEdit>
#include <array>

#include "runtime/ui/FormScaling.h"

class QPushButton;

namespace pemlo {

// The platform's numeric test: blanks around an optional sign, digits with at most
// one decimal point (at least one digit), an optional exponent (E or D) with digits.
// An empty text, a lone "-" or a lone "." are not numbers.
bool IsNumericText(const QString& text);

class Frm_ConeFactors : public ScaledForm {
    Q_OBJECT
public:
    explicit Frm_ConeFactors(QWidget* parent = nullptr);

    QLineEdit* TxtFactor(int index) const { return txtFactor_.at(static_cast<std::size_t>(index)); }
    float TipFactor() const { return TipFactor_; }
    float SleeveFactor() const { return SleeveFactor_; }

private:
    void TxtFactor_Change();
    void CmdNext_Click();
    void CmdCancel_Click();

    std::array<QLineEdit*, 2> txtFactor_{};
    QPushButton* cmdNext_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    // MPa per millivolt; they live as long as this screen.
    float TipFactor_ = 0.0f;
    float SleeveFactor_ = 0.0f;
};

// Tells the screen registry how to build the cone factors screen.
void RegisterFrm_ConeFactors();

}  // namespace pemlo
