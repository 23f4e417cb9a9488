// The frame the About and Help windows share: a picture and the program's labels
// across the top, separating lines, the rich-text box with the window's text and the
// OK button that closes it. Both are modal and take their size from the screen each
// time they open.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <span>

#include "core/ui/Screens.h"
#include "info/RichText.h"

class QHBoxLayout;
class QLabel;
class QPushButton;
class QTextBrowser;

namespace pemlo {

class InfoWindow : public QWidget {
    Q_OBJECT
public:
    // id names the window (objectName) and is what OK closes.
    InfoWindow(ScreenId id, const QString& title, std::span<const RichParagraph> text,
               QWidget* parent = nullptr);

    QTextBrowser* RichTextBox() const { return richText_; }

protected:
    // A second picture at the right end of the top row (the Help window's Image2).
    void AddRightPicture(const QString& name, const QPixmap& picture);

private:
    void SizeToScreen();
    void CmdOK_Click();

    ScreenId id_;
    QHBoxLayout* topRow_ = nullptr;
    QTextBrowser* richText_ = nullptr;
    QPushButton* cmdOK_ = nullptr;
};

// Fractions of the screen the About and Help windows take when they open.
constexpr double InfoWidthFraction = 0.72;
constexpr double InfoHeightFraction = 0.6;

}  // namespace pemlo
