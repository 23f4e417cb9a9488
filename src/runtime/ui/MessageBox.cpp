#include "runtime/ui/MessageBox.h"

namespace pemlo {

QString AppTitle() { return QStringLiteral("Pemlo CPT"); }

void ShowMessage(QWidget* parent, const QString& text, QMessageBox::Icon icon, const QString& title)
{
    QMessageBox box(icon, title, text, QMessageBox::Ok, parent);
    box.setWindowModality(Qt::ApplicationModal);
    box.exec();
}

}  // namespace pemlo
