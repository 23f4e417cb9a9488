#include "info/InfoWindow.h"

#include <QFont>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTextBrowser>
#include <QTextCursor>
#include <QVBoxLayout>

#include "info/InfoPictures.h"
#include "runtime/ui/MessageBox.h"
#include "runtime/ui/RunTimeErrorReport.h"

namespace pemlo {

namespace {

constexpr int PictureSize = 88;

// The labels beside the picture: the program, what it does, who made it.
struct LabelLayout {
    const char* name;
    const char* caption;
    int pointSize;
    bool bold;
};
constexpr LabelLayout AffiliationLabels[] = {
    {"Label1", "Pemlo CPT", 16, true},
    {"Label2", "Soil classification from cone penetration tests", 10, false},
    {"Label4", "Geotechnical Engineering Laboratory, Department of Civil Engineering", 9, false},
    {"Label3", "\xC2\xA9 The Pemlo CPT authors. All rights reserved.", 8, false},
};

QFrame* SeparatingLine(const QString& name, QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setObjectName(name);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

QLabel* PictureLabel(const QString& name, const QPixmap& picture, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setPixmap(picture);
    label->setFixedSize(picture.size());
    return label;
}

}  // namespace

InfoWindow::InfoWindow(ScreenId id, const QString& title, std::span<const RichParagraph> text, QWidget* parent)
    : QWidget(parent), id_(id)
{
    setObjectName(ScreenName(id));
    setWindowTitle(title);
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose, false);

    auto* layout = new QVBoxLayout(this);
    topRow_ = new QHBoxLayout;
    topRow_->setSpacing(14);
    topRow_->addWidget(PictureLabel(QStringLiteral("Image1"), DrawConePicture(PictureSize), this));
    auto* labels = new QVBoxLayout;
    labels->setSpacing(2);
    for (const LabelLayout& item : AffiliationLabels) {
        auto* label = new QLabel(QString::fromUtf8(item.caption), this);
        label->setObjectName(QString::fromLatin1(item.name));
        label->setWordWrap(true);
        QFont font = label->font();
        font.setPointSize(item.pointSize);
        font.setBold(item.bold);
        label->setFont(font);
        if (item.bold) label->setStyleSheet(QStringLiteral("color: #004080;"));
        labels->addWidget(label);
    }
    labels->addStretch(1);
    topRow_->addLayout(labels, 1);
    layout->addLayout(topRow_);
    layout->addWidget(SeparatingLine(QStringLiteral("Line1"), this));

    richText_ = new QTextBrowser(this);
    richText_->setObjectName(QStringLiteral("RichTextBox1"));
    richText_->setOpenLinks(false);
    TypesetRichText(*richText_->document(), text);
    richText_->document()->setDocumentMargin(10);
    richText_->moveCursor(QTextCursor::Start);  // open at the top, not where typesetting ended
    layout->addWidget(richText_, 1);

    layout->addWidget(SeparatingLine(QStringLiteral("Line2"), this));
    auto* buttons = new QHBoxLayout;
    cmdOK_ = new QPushButton(QStringLiteral("OK"), this);
    cmdOK_->setObjectName(QStringLiteral("CmdOK"));
    cmdOK_->setMinimumWidth(96);
    cmdOK_->setAutoDefault(true);
    buttons->addStretch(1);
    buttons->addWidget(cmdOK_);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    connect(cmdOK_, &QPushButton::clicked, this, [this] { Untrapped([this] { CmdOK_Click(); }); });
    cmdOK_->setFocus();

    SizeToScreen();
}

void InfoWindow::AddRightPicture(const QString& name, const QPixmap& picture)
{
    topRow_->addWidget(PictureLabel(name, picture, this), 0, Qt::AlignTop);
}

void InfoWindow::SizeToScreen()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) return;
    const QRect area = screen->geometry();
    const QSize size(static_cast<int>(InfoWidthFraction * area.width()),
                     static_cast<int>(InfoHeightFraction * area.height()));
    resize(size);
    move(area.center() - QPoint(size.width() / 2, size.height() / 2));
}

void InfoWindow::CmdOK_Click()
{
    Screens::Instance().Close(id_);
}

}  // namespace pemlo
