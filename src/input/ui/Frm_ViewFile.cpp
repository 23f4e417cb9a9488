#include "input/ui/Frm_ViewFile.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QVBoxLayout>

#include "core/Declarations.h"
#include "core/ui/Screens.h"
#include "runtime/FileChannels.h"
#include "runtime/ui/MessageBox.h"
#include "runtime/RunTimeError.h"

#include <algorithm>

namespace pemlo {

std::string ReadPreview(const Declarations& d, FileChannels& files)
{
    files.OpenForInput(d.FileNum, d.DataFileName);
    TextChannel& channel = files.Channel(d.FileNum);
    // The last byte of the file is never shown (its final line feed, as a rule).
    float n = static_cast<float>(channel.Length() - 1);
    if (n > static_cast<float>(PreviewLimit)) {
        n = static_cast<float>(PreviewLimit);
    }
    std::string text = channel.InputChars(RoundToLong(n));
    // A file of exactly 56001 bytes gets the marker too, with one byte left unread.
    if (n >= static_cast<float>(PreviewLimit)) {
        text += MoreDataMarker;
    }
    files.Close(d.FileNum);
    return text;
}

namespace {

// Beside the open-file screen, on the side with more room and narrowed to fit there;
// only where neither side leaves a usable width does it overlap, at the screen's edge.
void PlaceBesideOpenFile(QWidget& preview)
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return;
    }
    constexpr int Gap = 8;
    constexpr int NarrowestUsable = 200;
    const QRect available = screen->availableGeometry();
    int width = static_cast<int>(available.width() * 0.42);
    const int height = static_cast<int>(available.height() * 0.75);
    QPoint where = available.topLeft() + QPoint(available.width() / 20, available.height() / 20);
    Screens& screens = Screens::Instance();
    if (screens.IsLoaded(ScreenId::Frm_OpenFile)) {
        const QRect open = screens.Get(ScreenId::Frm_OpenFile)->frameGeometry();
        const int rightRoom = available.right() - open.right() - Gap;
        const int leftRoom = open.left() - available.left() - Gap;
        const bool right = rightRoom >= leftRoom;
        const int room = std::max(rightRoom, leftRoom);
        if (room >= NarrowestUsable) width = std::min(width, room);
        where = QPoint(right ? open.right() + 1 + Gap : open.left() - Gap - width, open.top());
    }
    preview.resize(width, height);
    where.setX(std::clamp(where.x(), available.left(), std::max(available.left(), available.right() + 1 - width)));
    where.setY(std::clamp(where.y(), available.top(), std::max(available.top(), available.bottom() + 1 - height)));
    preview.move(where);
}

}  // namespace

Frm_ViewFile::Frm_ViewFile(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("Frm_ViewFile"));
    Declarations& d = TheRecord();
    setWindowTitle(QString::fromStdString(d.DataFileName));

    text1_ = new QPlainTextEdit(this);
    text1_->setObjectName(QStringLiteral("Text1"));
    text1_->setReadOnly(true);
    text1_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text1_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    text1_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    QFont font(QStringLiteral("Arial"));
    font.setPointSize(10);
    text1_->setFont(font);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(text1_);
    PlaceBesideOpenFile(*this);

    text1_->clear();
    try {
        text_ = QString::fromStdString(Windows1252ToUtf8(ReadPreview(d, ProgramChannels())));
        text1_->setPlainText(text_);
        loaded_ = true;
    } catch (const RunTimeError&) {
        // The channel stays open on this path, as the file procedures leave it.
        ShowMessage(QApplication::activeWindow(), QStringLiteral("Could not read data from file"),
                    QMessageBox::Critical, QStringLiteral("Open File Error"));
    }
}

void RegisterFrm_ViewFile()
{
    Screens::Instance().Register(ScreenId::Frm_ViewFile, [] { return new Frm_ViewFile(); });
}

}  // namespace pemlo
