// Modal message boxes with the program's fixed texts, titles and icons.
#pragma once

#include <QMessageBox>
#include <QString>

class QWidget;

namespace pemlo {

// The program's own title: the title of message boxes that name no title of their own.
QString AppTitle();

// Shows a modal message box with an OK button and waits until it is closed.
void ShowMessage(QWidget* parent, const QString& text, QMessageBox::Icon icon, const QString& title);

}  // namespace pemlo
