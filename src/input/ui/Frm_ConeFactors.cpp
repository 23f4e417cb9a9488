#include "input/ui/Frm_ConeFactors.h"

#include <QFont>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QRegularExpression>
#include <locale.h>
#include <stdlib.h>
#include <string>

#include "core/Declarations.h"
#include "road/ProgramRoad.h"
#include "core/ui/Screens.h"
#include "runtime/ui/AfterPress.h"
#include "runtime/Arith.h"
#include "runtime/ui/MessageBox.h"
#include "runtime/RunTimeError.h"
#include "runtime/ui/RunTimeErrorReport.h"
#include "runtime/ui/WindowTitle.h"

namespace pemlo {

namespace {

constexpr int ClientWidth = 5895;
constexpr int ClientHeight = 2565;
constexpr int MaxFactorLength = 5;

// Controls in tab order: Continue first, so it has the focus when the screen opens.
struct ButtonLayout {
    const char* name;
    const char* caption;
    TwipsRect rect;
};
constexpr ButtonLayout NextButton{"CmdNext", "Continue", {3420, 1800, 1335, 495}};
constexpr ButtonLayout CancelButton{"CmdCancel", "Cancel", {1140, 1800, 1335, 495}};

struct FactorBox {
    const char* defaultText;
    TwipsRect rect;
};
constexpr FactorBox FactorBoxes[] = {
    {"50", {3960, 675, 732, 330}},
    {"0.5", {3960, 1155, 732, 330}},
};

// Each line reads as a sentence: the label, the box with its number, then "MPa )".
// The runs of blanks inside the labels line the two boxes up; keep them.
struct LabelLayout {
    const char* name;
    const char* caption;
    TwipsRect rect;
    bool title;
};
constexpr LabelLayout Labels[] = {
    {"LblTitle", "Cone Conversion Factors:", {360, 120, 3120, 300}, true},
    {"LblTip", "Cone Tip Resistance Factor  ( 1 mVolt = ", {360, 720, 3456, 240}, false},
    {"LblSleeve", "Cone Sleeve Factor               ( 1 mVolt = ", {360, 1200, 3336, 216}, false},
    {"LblUnit", "MPa )", {4800, 720, 525, 240}, false},
    {"Label1", "MPa )", {4800, 1200, 525, 240}, false},
};

const QString MissingEntryText = QStringLiteral(" Missing Data Entry .. Please Enter ");

QFont ScreenFont(double pointSize, bool bold)
{
    QFont font(QStringLiteral("Arial"), 1);
    font.setPointSizeF(pointSize);
    font.setBold(bold);
    return font;
}

// The text of a box that passed the numeric test, stored as single precision; a value
// beyond single range raises error 6 "Overflow".
float TextToSingle(const QString& text)
{
    std::string number = text.trimmed().toStdString();
    for (char& c : number) {
        if (c == 'd' || c == 'D') c = 'E';
    }
    // The decimal point is always ".", whatever the user's locale says.
    static const locale_t cLocale = newlocale(LC_NUMERIC_MASK, "C", locale_t{});
    return ToSingle(strtod_l(number.c_str(), nullptr, cLocale));
}

}  // namespace

bool IsNumericText(const QString& text)
{
    static const QRegularExpression number(
        QStringLiteral(R"(^\s*[-+]?([0-9]+\.?[0-9]*|\.[0-9]+)([eEdD][-+]?[0-9]+)?\s*$)"));
    return number.match(text).hasMatch();
}

Frm_ConeFactors::Frm_ConeFactors(QWidget* parent)
    : ScaledForm(QStringLiteral("Frm_ConeFactors"), ClientWidth, ClientHeight, parent)
{
    ShowNoTitle(this);
    setFont(ScreenFont(8.25, false));

    cmdNext_ = new QPushButton(QString::fromLatin1(NextButton.caption), this);
    cmdNext_->setObjectName(QString::fromLatin1(NextButton.name));
    Place(cmdNext_, NextButton.rect);
    cmdCancel_ = new QPushButton(QString::fromLatin1(CancelButton.caption), this);
    cmdCancel_->setObjectName(QString::fromLatin1(CancelButton.name));
    Place(cmdCancel_, CancelButton.rect);
    // Enter on a focused button presses it: Enter at once accepts the defaults.
    cmdNext_->setAutoDefault(true);
    cmdCancel_->setAutoDefault(true);
    setTabOrder(cmdNext_, cmdCancel_);

    QWidget* previous = cmdCancel_;
    for (std::size_t index = 0; index < txtFactor_.size(); ++index) {
        auto* box = new QLineEdit(this);
        box->setObjectName(QStringLiteral("TxtFactor_%1").arg(index));
        box->setMaxLength(MaxFactorLength);
        Place(box, FactorBoxes[index].rect);
        setTabOrder(previous, box);
        previous = box;
        txtFactor_[index] = box;
    }
    for (const LabelLayout& item : Labels) {
        auto* label = new QLabel(QString::fromLatin1(item.caption), this);
        label->setObjectName(QString::fromLatin1(item.name));
        if (item.title) label->setFont(ScreenFont(10, true));
        Place(label, item.rect);
    }
    setFixedSize(size());
    if (const QScreen* where = QGuiApplication::primaryScreen()) {
        move(where->availableGeometry().center() - rect().center());
    }

    // Continue may show a message, a modal window: it runs once the press is answered.
    connect(cmdNext_, &QPushButton::clicked, this, [this] { AfterPress(this, [this] { CmdNext_Click(); }); });
    connect(cmdCancel_, &QPushButton::clicked, this, [this] { Untrapped([this] { CmdCancel_Click(); }); });
    for (QLineEdit* box : txtFactor_) {
        connect(box, &QLineEdit::textChanged, this, [this] { TxtFactor_Change(); });
    }

    // Every display starts again from the cone's usual factors.
    for (std::size_t index = 0; index < txtFactor_.size(); ++index) {
        txtFactor_[index]->setText(QString::fromLatin1(FactorBoxes[index].defaultText));
    }
    cmdNext_->setFocus();
}

void Frm_ConeFactors::TxtFactor_Change()
{
    // Runs after every keystroke, so a value cannot be started with "." or "-": that
    // first character is removed at once. A minus sign stays only when put in front
    // of digits already there.
    for (QLineEdit* box : txtFactor_) {
        if (!box->text().isEmpty() && !IsNumericText(box->text())) box->clear();
    }
}

void Frm_ConeFactors::CmdNext_Click()
{
    for (QLineEdit* box : txtFactor_) {
        if (box->text().isEmpty()) {
            ShowMessage(this, MissingEntryText, QMessageBox::Critical, AppTitle());
            box->setFocus();
            return;
        }
    }
    // Both are converted before anything else changes: a factor beyond single range
    // ends here with nothing converted.
    TipFactor_ = TextToSingle(txtFactor_[0]->text());
    SleeveFactor_ = TextToSingle(txtFactor_[1]->text());
    ConvertMilliVolts(TheRecord(), TipFactor_, SleeveFactor_);

    Screens& screens = Screens::Instance();
    screens.Close(ScreenId::Frm_ConeFactors);
    screens.Hide(ScreenId::Frm_Titles);
    screens.Close(ScreenId::Frm_OpenFile);
    screens.Show(ScreenId::Frm_CPTData);
}

void Frm_ConeFactors::CmdCancel_Click() { Screens::Instance().Close(ScreenId::Frm_ConeFactors); }

void RegisterFrm_ConeFactors()
{
    Screens::Instance().Register(ScreenId::Frm_ConeFactors, [] { return new Frm_ConeFactors; });
}

}  // namespace pemlo
