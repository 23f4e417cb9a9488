#include "runtime/ui/FileDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>

#include "runtime/RunTimeError.h"

namespace pemlo {

namespace {

// The folder of the last choice: the next dialog opens there.
QString& LastFolder()
{
    static QString folder;
    return folder;
}

}  // namespace

QStringList NameFiltersOf(const QString& filter)
{
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList names;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString description = parts[i];
        // A blank before a pattern ("| *.dat") means nothing to the file system:
        // the pattern is matched trimmed.
        const QString pattern = parts[i + 1].trimmed();
        const QString shown = QStringLiteral("(") + pattern + QStringLiteral(")");
        names << (description.endsWith(shown) ? description : description + QStringLiteral(" ") + shown);
    }
    return names;
}

QString ShowOpenFileDialog(QWidget* parent, const QString& filter)
{
    QFileDialog dialog(parent, QStringLiteral("Open"));
    dialog.setObjectName(QStringLiteral("ComDialogOpen"));
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(NameFiltersOf(filter));
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setDirectory(LastFolder().isEmpty() ? QDir::currentPath() : LastFolder());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        Raise(ErrCancelSelected);
    }
    const QString chosen = QFileInfo(dialog.selectedFiles().constFirst()).absoluteFilePath();
    LastFolder() = QFileInfo(chosen).absolutePath();
    return chosen;
}

}  // namespace pemlo
