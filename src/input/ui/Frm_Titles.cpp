#include "input/ui/Frm_Titles.h"

#include <QEvent>
#include <QFont>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <string>

#include "core/Declarations.h"
#include "road/ProgramRoad.h"
#include "core/ui/Screens.h"
#include "runtime/ui/AfterPress.h"
#include "runtime/ui/KeySending.h"
#include "runtime/ui/MessageBox.h"
#include "runtime/RunTimeError.h"
#include "runtime/ui/RunTimeErrorReport.h"
#include "runtime/ui/WindowTitle.h"

namespace pemlo {

namespace {

constexpr int ClientWidth = 6405;
constexpr int ClientHeight = 4380;
constexpr int LabelLeft = 240;
constexpr int LabelWidth = 1500;
// The cone number box: its keys are filtered to what a cone number is made of.
constexpr int ConeNumberIndex = 5;

// The text boxes in tab order, each with its label and the record field it fills.
struct InfoBox {
    int index;
    const char* labelName;
    const char* caption;
    TwipsRect rect;
    int maxLength;
};
constexpr InfoBox InfoBoxes[] = {
    {8, "LblDate", "Date/Time: ", {1800, 945, 1212, 300}, 12},
    {0, "LblProjNum", "Project Number:", {1800, 1320, 1215, 300}, 15},
    {2, "LblTitle", "Project Title:", {1800, 1740, 4212, 300}, 40},
    {3, "Label3", "Location/No:", {1800, 2160, 2235, 300}, 15},
    {4, "LblOffset", "GWT (ft):", {1800, 2580, 1332, 300}, 9},
    {ConeNumberIndex, "LblElev", "Cone No:", {1800, 3015, 1332, 300}, 12},
};

// Where each text is kept, in the order OK stores them.
struct StoredText {
    int index;
    std::string Declarations::*field;
};
constexpr StoredText StoredTexts[] = {
    {0, &Declarations::ProjectNumber}, {2, &Declarations::ProjectTitle}, {3, &Declarations::ProjectLocation},
    {4, &Declarations::GWT},           {5, &Declarations::ConeNo},       {8, &Declarations::ProjectDate},
};

struct Caption {
    const char* name;
    const char* text;
    TwipsRect rect;
};
constexpr Caption Heading{"LblMain", "Enter Project Information", {240, 240, 5925, 420}};
// The note beside the ground water table box; it says feet whatever the graph units.
constexpr Caption GwtNote{"Label1", "(Ground Water Table)", {3240, 2625, 2400, 255}};
constexpr Caption OkButton{"CmdOK", "OK", {1860, 3720, 1092, 420}};
constexpr Caption CancelButton{"CmdCancel", "Cancel", {3360, 3720, 1092, 420}};

const std::vector<TwipsLine> Lines = {
    {"Line1", 240, 780, 6165, 780},
    {"Line2", 240, 3525, 6165, 3525},
};

const QString DataEntryErrorText = QStringLiteral(" Data Entry Error in Please ReEnter ");
const QString DataEntryErrorTitle = QStringLiteral(" Data Entry Message");

// A label sits level with its box; its text is nudged down to the box's text line.
TwipsRect LabelBeside(const TwipsRect& box) { return {LabelLeft, box.top + 45, LabelWidth, box.height - 45}; }

QFont ScreenFont(double pointSize, bool bold)
{
    QFont font(QStringLiteral("Arial"), 1);
    font.setPointSizeF(pointSize);
    font.setBold(bold);
    return font;
}

// A key press of a box is a key that types a character, or Backspace. Keys that only
// edit or move (Delete, the arrows, Home, End, Tab, shortcuts with Ctrl) pass to the
// box untouched, as in any other box: the cone number filter must not swallow them.
bool TypesCharacter(const QKeyEvent& key)
{
    if (key.text().isEmpty() || key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) return false;
    const QChar first = key.text().front();
    return first == QChar(8) || (first.isPrint() && !key.modifiers().testFlag(Qt::ControlModifier));
}

}  // namespace

Frm_Titles::Frm_Titles(QWidget* parent) : ScaledForm(QStringLiteral("Frm_Titles"), ClientWidth, ClientHeight, parent)
{
    ShowNoTitle(this);
    setFont(ScreenFont(8.25, false));

    auto* heading = new QLabel(QString::fromLatin1(Heading.text), this);
    heading->setObjectName(QString::fromLatin1(Heading.name));
    heading->setFont(ScreenFont(12, true));
    Place(heading, Heading.rect);

    QWidget* previous = nullptr;
    for (const InfoBox& item : InfoBoxes) {
        auto* label = new QLabel(QString::fromLatin1(item.caption), this);
        label->setObjectName(QString::fromLatin1(item.labelName));
        Place(label, LabelBeside(item.rect));

        auto* box = new QLineEdit(this);
        box->setObjectName(QStringLiteral("TxtInfo_%1").arg(item.index));
        box->setMaxLength(item.maxLength);
        box->installEventFilter(this);
        Place(box, item.rect);
        txtInfo_.at(static_cast<std::size_t>(item.index)) = box;
        if (previous != nullptr) setTabOrder(previous, box);
        previous = box;
    }
    auto* note = new QLabel(QString::fromLatin1(GwtNote.text), this);
    note->setObjectName(QString::fromLatin1(GwtNote.name));
    Place(note, GwtNote.rect);

    cmdOK_ = new QPushButton(QString::fromLatin1(OkButton.text), this);
    cmdOK_->setObjectName(QString::fromLatin1(OkButton.name));
    Place(cmdOK_, OkButton.rect);
    cmdCancel_ = new QPushButton(QString::fromLatin1(CancelButton.text), this);
    cmdCancel_->setObjectName(QString::fromLatin1(CancelButton.name));
    Place(cmdCancel_, CancelButton.rect);
    // Enter on a focused button presses it, as on any form of the program.
    cmdOK_->setAutoDefault(true);
    cmdCancel_->setAutoDefault(true);
    setTabOrder(previous, cmdOK_);
    setTabOrder(cmdOK_, cmdCancel_);
    AddLines(Lines);

    // Not resizable: the screen has no form-resizing control.
    setFixedSize(size());
    if (const QScreen* where = QGuiApplication::primaryScreen()) {
        move(where->availableGeometry().center() - rect().center());
    }

    // Behind a load that never ends, OK and Cancel wait with the rest of the program:
    // OK would otherwise plot the previous readings under the new file's name. OK may
    // open the cone factors or a message, both modal: it runs once the press is answered.
    connect(cmdOK_, &QPushButton::clicked, this, [this] {
        AfterPress(this, [this] {
            if (!Screens::Instance().IsWaitingForLoad()) CmdOK_Click();
        });
    });
    connect(cmdCancel_, &QPushButton::clicked, this, [this] {
        if (!Screens::Instance().IsWaitingForLoad()) Untrapped([this] { CmdCancel_Click(); });
    });
}

QLineEdit* Frm_Titles::TxtInfo(int index) const { return txtInfo_.at(static_cast<std::size_t>(index)); }

bool Frm_Titles::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        for (std::size_t index = 0; index < txtInfo_.size(); ++index) {
            if (txtInfo_[index] != nullptr && watched == txtInfo_[index]) {
                const auto* key = static_cast<QKeyEvent*>(event);
                const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
                const bool typing = TypesCharacter(*key);
                if (enter) return TxtInfo_KeyPress(static_cast<int>(index), QStringLiteral("\r"));
                if (typing) return TxtInfo_KeyPress(static_cast<int>(index), key->text());
            }
        }
    }
    return ScaledForm::eventFilter(watched, event);
}

bool Frm_Titles::TxtInfo_KeyPress(int index, const QString& key)
{
    if (key == QStringLiteral("\r")) {
        SendTab();
        return true;
    }
    // Only the cone number box (index 5, "Cone No:") filters its keys; the ground
    // water table box takes any text. Users' habits rely on exactly this, keep it.
    if (index == ConeNumberIndex) {
        for (const QChar c : key) {
            const bool allowed = c == QLatin1Char('.') || c == QLatin1Char('-') ||
                                 (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QChar(8);
            if (!allowed) return true;
        }
    }
    return false;
}

void Frm_Titles::CmdOK_Click()
{
    QPointer<Frm_Titles> self(this);
    Screens& screens = Screens::Instance();
    Declarations& d = TheRecord();
    try {
        for (const StoredText& stored : StoredTexts) {
            d.*stored.field = TxtInfo(stored.index)->text().toStdString();
        }
        if (d.DataUnits == DataMilliVolts) {
            // The cone factors convert the readings and move on to the plots; Cancel
            // there leaves the user here with the readings untouched.
            screens.ShowModal(ScreenId::Frm_ConeFactors);
        } else {
            ConvertToGraphUnits(d);
            screens.Show(ScreenId::Frm_CPTData);
        }
        screens.Close(ScreenId::Frm_OpenFile);
    } catch (const RunTimeError&) {
        // Whatever failed (a conversion overflowing, the plots failing to load), the
        // open-file screen stays so the user can load the data again.
        ShowMessage(self, DataEntryErrorText, QMessageBox::Critical, DataEntryErrorTitle);
        if (self != nullptr) self->TxtInfo(ConeNumberIndex)->setFocus();
    }
}

void Frm_Titles::CmdCancel_Click()
{
    Screens& screens = Screens::Instance();
    screens.Close(ScreenId::Frm_Titles);
    screens.Show(ScreenId::Frm_OpenFile);
}

void RegisterFrm_Titles()
{
    Screens::Instance().Register(ScreenId::Frm_Titles, [] { return new Frm_Titles; });
}

}  // namespace pemlo
