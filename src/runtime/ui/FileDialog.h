// The file-open dialog: Qt's own dialog (so tests can drive it) with a filter given
// in the "Description|pattern|Description|pattern" form, the file must exist, and
// cancelling raises error 32755 "Cancel was selected." for the caller to trap.
#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace pemlo {

// The dialog's name filters for a "Description|pattern|..." filter, one per pair.
QStringList NameFiltersOf(const QString& filter);

// Returns the chosen file's full path. The dialog's objectName is "ComDialogOpen".
QString ShowOpenFileDialog(QWidget* parent, const QString& filter);

}  // namespace pemlo
