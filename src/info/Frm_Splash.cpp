#include "info/Frm_Splash.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

#include "core/ui/Screens.h"
#include "info/ConePicture.h"
#include "info/ProgramBanner.h"
#include "runtime/ui/MousePointer.h"
#include "runtime/ui/RunTimeErrorReport.h"

namespace pemlo {

namespace {

constexpr int SplashWidthTwips = 7200;
constexpr int SplashHeightTwips = 4800;

struct LabelDesign {
    const char* name;
    QString text;
    TwipsRect rect;
    double pointSize;
    bool bold;
    bool italic;
    Qt::Alignment align;
};

std::vector<LabelDesign> SplashLabels()
{
    const Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
    return {
        {"LblTitle", banner::Title(), {2400, 420, 4500, 760}, 26, true, false, left},
        {"LblSubtitle", banner::Subtitle(), {2400, 1200, 4500, 600}, 11, false, false, left | Qt::AlignTop},
        {"LblCitation", banner::Citation(), {2400, 1900, 4500, 560}, 9, false, true, left | Qt::AlignTop},
        {"LblAffiliation1", banner::Affiliation(), {2400, 2760, 4500, 300}, 10, true, false, left},
        {"LblAffiliation2", banner::AffiliationLine2(), {2400, 3060, 4500, 300}, 10, false, false, left},
        {"LblRights", banner::Rights(), {300, 4230, 4800, 300}, 8, false, false, left},
        {"lblVersion", banner::Version(), {5100, 4230, 1800, 300}, 9, true, false, Qt::AlignRight | Qt::AlignVCenter},
    };
}

}  // namespace

Frm_Splash::Frm_Splash(QWidget* parent)
    : ScaledForm(QStringLiteral("Frm_Splash"), SplashWidthTwips, SplashHeightTwips, parent)
{
    setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(true);

    auto* cone = new ConePicture(this);
    cone->setObjectName(QStringLiteral("ConeImage"));
    Place(cone, {300, 300, 1800, 3600});
    for (const LabelDesign& design : SplashLabels()) {
        auto* label = new QLabel(design.text, this);
        label->setObjectName(design.name);
        label->setAlignment(design.align);
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        QFont font = label->font();
        font.setPointSizeF(design.pointSize);
        font.setBold(design.bold);
        font.setItalic(design.italic);
        label->setFont(font);
        Place(label, design.rect);
    }
    AddLines({{"Line1", 2400, 2580, 6900, 2580},
              {"Line2", 300, 4080, 6900, 4080},
              // A frameless window needs its own edge.
              {"Edge1", 15, 15, 7185, 15},
              {"Edge2", 7185, 15, 7185, 4785},
              {"Edge3", 7185, 4785, 15, 4785},
              {"Edge4", 15, 4785, 15, 15}});
    // Without a frame there is no close box, and Alt+F4 must not end the splash
    // without showing the open-file screen.
    setProperty("ignoresCloseBox", true);
    SizeToScreen(0.65, 0.6);

    SetMousePointer(MousePointer::Hourglass);
    Screens::Instance().Get(ScreenId::Frm_OpenFile);

    timer1_ = new QTimer(this);
    timer1_->setObjectName(QStringLiteral("Timer1"));
    timer1_->setInterval(TimerInterval);
    connect(timer1_, &QTimer::timeout, this, [this] { Untrapped([this] { Dismiss(); }); });
    timer1_->start();
}

void Frm_Splash::keyPressEvent(QKeyEvent*)
{
    Untrapped([this] { Dismiss(); });
}

void Frm_Splash::mousePressEvent(QMouseEvent* event)
{
    // Clicks on the labels and the picture reach here too; only the background counts.
    if (childAt(event->position().toPoint()) != nullptr) {
        return;
    }
    Untrapped([this] { Dismiss(); });
}

void Frm_Splash::Dismiss()
{
    Screens& screens = Screens::Instance();
    if (!screens.IsLoaded(ScreenId::Frm_Splash) || screens.Get(ScreenId::Frm_Splash) != this) {
        return;  // already gone: the first trigger won
    }
    timer1_->stop();
    screens.Close(ScreenId::Frm_Splash);
    screens.Show(ScreenId::Frm_OpenFile);
    SetMousePointer(MousePointer::Default);
}

void RegisterFrm_Splash()
{
    Screens::Instance().Register(ScreenId::Frm_Splash, [] { return new Frm_Splash(); });
}

}  // namespace pemlo
